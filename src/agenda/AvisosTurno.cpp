#include "agenda/AvisosTurno.h"

#include "agenda/Exportacion.h"
#include "agenda/GrillaDia.h"
#include "agenda/TelefonoMovil.h"
#include "agenda/Textos.h"
#include "base/Csv.h"
#include "base/Fechas.h"
#include "db/Connection.h"
#include "db/Entorno.h"
#include "db/ListaDoctores.h"

#include <QHash>
#include <QLocale>
#include <QRegularExpression>
#include <QUrl>

namespace agenda {

namespace {

/// A register kept in capitals would shout at its patients: "MARÍA DEL CARMEN" is "María del Carmen". Anything else
/// stays as it was written.
QString comoSeEscribe(const QString &nombre)
{
    if (nombre != nombre.toUpper())
        return nombre;
    static const QStringList menores = QStringLiteral("de del la las los y").split(u' ');
    QString salida = nombre.toLower();
    for (qsizetype i = 0; i < salida.size(); ++i) {
        if (!salida.at(i).isLetter() || (i > 0 && salida.at(i - 1).isLetter()))
            continue;
        qsizetype fin = i;
        while (fin < salida.size() && salida.at(fin).isLetter())
            ++fin;
        if (i == 0 || !menores.contains(salida.mid(i, fin - i)))
            salida[i] = salida.at(i).toUpper();
    }
    return salida;
}

} // namespace

QDate proximoDiaConTurnos(db::Connection &conexion, int doctor, QDate hoy)
{
    QString sql = QStringLiteral("SELECT MIN(Fecha) FROM [Agenda Turnos] WHERE Fecha > ")
        + conexion.dialect().dayEnd(hoy) + QStringLiteral(" And NroHC <> ?");
    db::Params datos{nroBloqueado};
    if (doctor != 0) {
        sql += QStringLiteral(" And Doctor = ?");
        datos << doctor;
    }
    const QDate fecha = conexion.query(sql, datos)->dateTime(0, 0).date();
    return fecha.isValid() ? fecha : hoy.addDays(1);
}

base::Resultado<std::vector<TurnoListado>> turnosAAvisar(db::Entorno &entorno, int doctor, QDate fecha)
{
    if (auto sinDerecho = db::controlarDerecho(entorno, derechoAgendas))
        return *sinDerecho;
    std::vector<TurnoListado> turnos = listarTurnos(entorno.conexion(), doctor, fecha, fecha);
    std::erase_if(turnos, [](const TurnoListado &t) { return t.bloqueado; });
    return turnos;
}

QString modeloDeAviso()
{
    return QStringLiteral("Hola <nombre>. Le recordamos su turno con <medico> el <fecha> a las <hora>."
                          " Si no puede venir, por favor avísenos. Gracias.");
}

QStringList marcadoresDeAviso()
{
    return {
        QStringLiteral("<paciente>"),
        QStringLiteral("<nombre>"),
        QStringLiteral("<fecha>"),
        QStringLiteral("<hora>"),
        QStringLiteral("<medico>")};
}

QString textoAviso(const QString &modelo, const TurnoListado &turno)
{
    if (turno.bloqueado || turno.pacienteEliminado)
        return {};
    static const QLocale castellano(QLocale::Spanish, QLocale::Argentina);
    const QString nombres = comoSeEscribe(turno.nombres), apellido = comoSeEscribe(turno.apellido);
    const QHash<QString, QString> valores{
        {QStringLiteral("paciente"), QString(nombres + u' ' + apellido).trimmed()},
        {QStringLiteral("nombre"), nombres.isEmpty() ? apellido : nombres},
        {QStringLiteral("fecha"), castellano.toString(turno.momento.date(), QStringLiteral("dddd d 'de' MMMM"))},
        {QStringLiteral("hora"), horaTexto(turno.momento.time())},
        {QStringLiteral("medico"), turno.medico}};
    static const QRegularExpression marcador(
        QStringLiteral("<(paciente|nombre|fecha|hora|medico)>"), QRegularExpression::CaseInsensitiveOption);
    QString texto;
    qsizetype desde = 0;
    for (auto it = marcador.globalMatch(modelo); it.hasNext();) {
        const QRegularExpressionMatch cual = it.next();
        texto += QStringView(modelo).mid(desde, cual.capturedStart() - desde);
        texto += valores.value(cual.captured(1).toLower());
        desde = cual.capturedEnd();
    }
    texto += QStringView(modelo).mid(desde);
    return texto;
}

QUrl enlaceDeMensaje(const QString &movil, const QString &mensaje)
{
    return QUrl::fromEncoded(
        "https://wa.me/" + QUrl::toPercentEncoding(movil) + "?text=" + QUrl::toPercentEncoding(mensaje));
}

QByteArray avisosCsv(const std::vector<TurnoListado> &turnos, const QString &modelo)
{
    // The mark makes spreadsheets read the accents right.
    QByteArray salida("\xEF\xBB\xBF");
    const auto agregar = [&salida](const QStringList &campos) {
        QStringList linea;
        for (const QString &campo : campos)
            linea << base::campoCsv(campo);
        salida += linea.join(u';').toUtf8() + "\r\n";
    };
    agregar(
        {QStringLiteral("Fecha"),
         QStringLiteral("Hora"),
         QStringLiteral("Profesional"),
         QStringLiteral("Paciente"),
         QStringLiteral("Teléfono"),
         QStringLiteral("Celular"),
         QStringLiteral("Celular internacional"),
         QStringLiteral("Mensaje")});
    for (const TurnoListado &t : turnos) {
        const auto movil = movilDe(t.celular, t.tel);
        agregar(
            {base::fechaTexto(t.momento.date()),
             horaTexto(t.momento.time()),
             t.medico,
             t.paciente(),
             t.tel,
             t.celular,
             // With its sign a spreadsheet does not make a rounded number of it.
             movil ? u'+' + *movil : QString(),
             textoAviso(modelo, t)});
    }
    return salida;
}

base::Control exportarAvisos(
    db::Entorno &entorno,
    const std::vector<TurnoListado> &turnos,
    QDate fecha,
    const QString &modelo,
    const QString &archivo)
{
    return exportarArchivo(
        entorno,
        archivo,
        avisosCsv(turnos, modelo),
        QStringLiteral("Exportación de la lista de turnos para avisar. (%1 del %2)")
            .arg(cantidadTurnos(int(turnos.size())), base::fechaTexto(fecha)));
}

} // namespace agenda
