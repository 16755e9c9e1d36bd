#include "base/Fechas.h"

#include "base/Mensajes.h"
#include "base/Rechazo.h"

#include <QRegularExpression>

namespace base {

namespace {

QDate armarFecha(int dia, int mes, int anio, int cifrasAnio)
{
    if (cifrasAnio <= 2)
        anio += anio < 30 ? 2000 : 1900;
    return QDate(anio, mes, dia);
}

} // namespace

std::optional<QDate> leerFecha(QStringView texto)
{
    static const QRegularExpression conSeparador(
        QStringLiteral("^([0-9]{1,2})([/.-])([0-9]{1,2})\\2([0-9]{2}|[0-9]{4})$"));
    static const QRegularExpression corrida(QStringLiteral("^([0-9]{2})([0-9]{2})([0-9]{4}|[0-9]{2})$"));

    const QStringView limpio = texto.trimmed();
    QDate fecha;
    if (const auto m = conSeparador.match(limpio); m.hasMatch())
        fecha = armarFecha(
            m.capturedView(1).toInt(), m.capturedView(3).toInt(), m.capturedView(4).toInt(), m.capturedLength(4));
    else if (const auto c = corrida.match(limpio); c.hasMatch())
        fecha = armarFecha(
            c.capturedView(1).toInt(), c.capturedView(2).toInt(), c.capturedView(3).toInt(), c.capturedLength(3));
    // The tables' dates begin in the year 100.
    if (!fecha.isValid() || fecha.year() < 100)
        return std::nullopt;
    return fecha;
}

std::optional<QDateTime> leerFechaHora(QStringView texto)
{
    const QStringView limpio = texto.trimmed();
    const qsizetype corte = limpio.indexOf(u' ');
    if (corte < 0)
        return std::nullopt;
    const auto fecha = leerFecha(limpio.left(corte));
    const QTime hora = QTime::fromString(limpio.mid(corte + 1).trimmed().toString(), QStringLiteral("h:mm"));
    if (!fecha || !hora.isValid())
        return std::nullopt;
    return QDateTime(*fecha, hora);
}

QString fechaTexto(QDate fecha) { return fecha.isValid() ? fecha.toString(QStringLiteral("dd/MM/yyyy")) : QString(); }

QString fechaHoraTexto(const QDateTime &momento)
{
    return momento.isValid() ? momento.toString(QStringLiteral("dd/MM/yyyy HH:mm")) : QString();
}

QDate fechaDesconocida() { return {9999, 12, 31}; }

Rechazo fechaInvalida(const QString &detalle)
{
    return {
        QStringLiteral("ERROR en la fecha..."), QStringLiteral("El Formato de Fecha debe ser dd/mm/aaaa\n") + detalle};
}

bool verificarFecha(Mensajes &mensajes, QStringView texto, const QString &detalle)
{
    if (leerFecha(texto))
        return true;
    const Rechazo rechazo = fechaInvalida(detalle);
    mensajes.mensaje(rechazo.titulo, rechazo.texto, rechazo.icono);
    return false;
}

QString textoEdad(QDate desde, QDate hasta)
{
    if (!desde.isValid() || !hasta.isValid())
        return {};
    const qint64 dias = desde.daysTo(hasta);
    if (dias < 0)
        return {};
    if (dias < 30)
        return QStringLiteral("%1d").arg(dias);
    if (dias < 365) {
        const qint64 semanas = dias / 7;
        return QStringLiteral("%1sem %2d").arg(semanas).arg(dias - 7 * semanas);
    }
    int anios = aniosCalendario(desde, hasta);
    const int meses = anios * 12 + hasta.month() - desde.month();
    if (meses - 12 * anios < 0)
        --anios;
    return QStringLiteral("%1a %2m").arg(anios).arg(meses - 12 * anios);
}

int aniosCalendario(QDate desde, QDate hasta) { return hasta.year() - desde.year(); }

QString nombreMes(int mes)
{
    static const char *const nombres[]
        = {"Enero",
           "Febrero",
           "Marzo",
           "Abril",
           "Mayo",
           "Junio",
           "Julio",
           "Agosto",
           "Septiembre",
           "Octubre",
           "Noviembre",
           "Diciembre"};
    Q_ASSERT(mes >= 1 && mes <= 12);
    return QString::fromLatin1(nombres[mes - 1]);
}

int diaSemana(QDate fecha) { return fecha.dayOfWeek() % 7 + 1; }

} // namespace base
