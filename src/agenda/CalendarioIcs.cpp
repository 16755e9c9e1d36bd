#include "agenda/CalendarioIcs.h"

#include "agenda/Exportacion.h"
#include "agenda/Plantilla.h"
#include "agenda/Textos.h"
#include "base/Clock.h"
#include "base/Fechas.h"
#include "db/Entorno.h"
#include "db/ListaDoctores.h"

#include <QCryptographicHash>
#include <QTimeZone>

#include <algorithm>
#include <map>

namespace agenda {

namespace {

constexpr qsizetype octetosPorLinea = 75;

/// A text value: RFC 5545, 3.3.11. Other control characters are not allowed in it.
QString escapado(QString texto)
{
    texto.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    QString salida;
    for (const QChar c : std::as_const(texto)) {
        if (c == u'\n' || c == u'\r')
            salida += QLatin1String("\\n");
        else if (c == u'\\' || c == u';' || c == u',')
            salida += QLatin1Char('\\'), salida += c;
        else if (c >= u' ' && c != QChar(0x7F))
            salida += c;
    }
    return salida;
}

/// A content line, folded: RFC 5545, 3.1. Never within a character.
void agregarLinea(QByteArray &salida, const QString &linea)
{
    const QByteArray utf8 = linea.toUtf8();
    const auto sigue = [&utf8](qsizetype i) { return (static_cast<unsigned char>(utf8.at(i)) & 0xC0) == 0x80; };
    qsizetype desde = 0, lugar = octetosPorLinea;
    while (utf8.size() - desde > lugar) {
        qsizetype corte = desde + lugar;
        while (sigue(corte))
            --corte;
        salida += utf8.mid(desde, corte - desde) + "\r\n ";
        desde = corte;
        lugar = octetosPorLinea - 1; // after the blank that continues a line
    }
    salida += utf8.mid(desde) + "\r\n";
}

/// Numbers of two practices may be the same, and both may end up in one calendar: what never changes in an appointment
/// tells them apart. A blocked slot has nothing but its time.
QString uidDe(const TurnoListado &t)
{
    const QDateTime propio = t.bloqueado ? t.momento : t.asignado;
    const QString datos
        = QStringLiteral("%1|%2|%3").arg(t.id).arg(t.nrohc).arg(propio.toString(QStringLiteral("yyyyMMddHHmmss")));
    const QByteArray huella = QCryptographicHash::hash(datos.toUtf8(), QCryptographicHash::Sha256).toHex().left(24);
    return QStringLiteral("turno-%1-%2@vastelo").arg(t.id).arg(QLatin1String(huella));
}

QString local(const QDateTime &momento) { return momento.toString(QStringLiteral("yyyyMMdd'T'HHmmss")); }

base::Control controlar(const PedidoIcs &pedido)
{
    if (!pedido.desde.isValid())
        return base::Rechazo{
            base::titulo::aviso, QStringLiteral("ERROR en la Fecha Inicial."), QStringLiteral("desde")};
    if (!pedido.hasta.isValid())
        return base::Rechazo{base::titulo::aviso, QStringLiteral("ERROR en la Fecha Final."), QStringLiteral("hasta")};
    if (pedido.hasta < pedido.desde)
        return base::Rechazo{
            base::titulo::aviso,
            QStringLiteral("La Fecha Final es anterior a la Fecha Inicial."),
            QStringLiteral("hasta")};
    return std::nullopt;
}

} // namespace

QByteArray escribirIcs(
    const std::vector<TurnoListado> &turnos,
    const std::function<int(QDate)> &duracion,
    bool conNombres,
    const QDateTime &ahora)
{
    QByteArray salida;
    const auto linea = [&salida](const QString &texto) { agregarLinea(salida, texto); };
    const QString zona = QStringLiteral(";TZID=America/Argentina/Buenos_Aires:");
    const QString sello = local(ahora.toUTC()) + u'Z';
    // Grows with every file: a calendar takes an event with a lower number for an old one.
    static const QDateTime principio(QDate(2000, 1, 1), QTime(0, 0), Qt::UTC);
    const QString version = QString::number(principio.secsTo(ahora) / 60);

    for (const char *fija :
         {"BEGIN:VCALENDAR",
          "VERSION:2.0",
          "PRODID:-//Vastelo//Agenda de Turnos//ES",
          "CALSCALE:GREGORIAN",
          "METHOD:PUBLISH",
          "BEGIN:VTIMEZONE",
          "TZID:America/Argentina/Buenos_Aires",
          "BEGIN:STANDARD",
          "DTSTART:19700101T000000",
          "TZOFFSETFROM:-0300",
          "TZOFFSETTO:-0300",
          "TZNAME:-03",
          "END:STANDARD",
          "END:VTIMEZONE"})
        linea(QLatin1String(fija));
    for (const TurnoListado &t : turnos) {
        linea(QStringLiteral("BEGIN:VEVENT"));
        linea(QStringLiteral("UID:") + uidDe(t));
        linea(QStringLiteral("DTSTAMP:") + sello);
        linea(QStringLiteral("SEQUENCE:") + version);
        linea(QStringLiteral("DTSTART") + zona + local(t.momento));
        linea(QStringLiteral("DTEND") + zona + local(t.momento.addSecs(qint64(60) * duracion(t.momento.date()))));
        linea(
            QStringLiteral("SUMMARY:") + escapado(t.bloqueado || conNombres ? t.paciente() : QStringLiteral("Turno")));
        linea(QStringLiteral("CLASS:PRIVATE"));
        linea(QStringLiteral("END:VEVENT"));
    }
    linea(QStringLiteral("END:VCALENDAR"));
    return salida;
}

base::Resultado<CalendarioIcs> prepararIcs(db::Entorno &entorno, const PedidoIcs &pedido)
{
    if (auto sinDerecho = db::controlarDerecho(entorno, derechoAgendas))
        return *sinDerecho;
    if (auto rechazo = controlar(pedido))
        return *rechazo;
    db::Connection &conexion = entorno.conexion();
    std::vector<TurnoListado> turnos = listarTurnos(conexion, pedido.doctor, pedido.desde, pedido.hasta);
    if (!pedido.conBloqueados)
        std::erase_if(turnos, [](const TurnoListado &t) { return t.bloqueado; });
    if (turnos.empty())
        return base::Rechazo{
            base::titulo::aviso,
            QStringLiteral("No hay turnos entre esas fechas."),
            QStringLiteral("desde"),
            base::Icono::Informacion};

    std::map<QDate, int> duraciones;
    const auto duracion = [&](QDate fecha) {
        const auto [lugar, nueva] = duraciones.try_emplace(fecha, duracionSupuesta);
        if (nueva)
            if (const auto plantilla = elegirPlantilla(conexion, pedido.doctor, fecha))
                lugar->second = plantilla->jornada(fecha).duracion;
        return lugar->second;
    };
    const auto cuenta = std::count_if(turnos.begin(), turnos.end(), [](const TurnoListado &t) { return !t.bloqueado; });
    return CalendarioIcs{escribirIcs(turnos, duracion, pedido.conNombres, entorno.clock().now()), int(cuenta), pedido};
}

base::Control guardarIcs(db::Entorno &entorno, const CalendarioIcs &calendario, const QString &archivo)
{
    const PedidoIcs &pedido = calendario.pedido;
    return exportarArchivo(
        entorno,
        archivo,
        calendario.bytes,
        QStringLiteral("Exportación de turnos a un archivo de calendario, %1 nombres de pacientes. (%2 de %3, del %4 "
                       "al %5)")
            .arg(
                pedido.conNombres ? QStringLiteral("con") : QStringLiteral("sin"),
                cantidadTurnos(calendario.turnos),
                nombreProfesional(entorno.conexion(), pedido.doctor),
                base::fechaTexto(pedido.desde),
                base::fechaTexto(pedido.hasta)));
}

} // namespace agenda
