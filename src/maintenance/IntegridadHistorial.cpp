#include "maintenance/IntegridadHistorial.h"

#include "base/Fechas.h"
#include "db/Entorno.h"
#include "db/Historial.h"

#include <QLocale>

namespace maintenance {

namespace {

using db::HallazgoHistorial;
using db::InformeHistorial;

QString cifra(qint64 cantidad) { return QLocale(QLocale::Spanish, QLocale::Argentina).toString(cantidad); }

QString contadas(qint64 cantidad, const QString &una, const QString &varias)
{
    return cifra(cantidad) + u' ' + (cantidad == 1 ? una : varias);
}

QString acciones(qint64 cantidad) { return contadas(cantidad, QStringLiteral("acción"), QStringLiteral("acciones")); }

QString diferencias(const InformeHistorial &informe)
{
    const bool mas = informe.otros > 0 || informe.hallazgos.size() >= 1000;
    QString texto = (mas ? QStringLiteral("más de ") : QString())
        + contadas(qint64(informe.hallazgos.size()), QStringLiteral("diferencia"), QStringLiteral("diferencias"));
    if (const QDateTime ultima = informe.ultimaDiferencia(); ultima.isValid())
        texto += (informe.hallazgos.size() == 1 ? QStringLiteral(", del %1") : QStringLiteral(", la última del %1"))
                     .arg(base::fechaHoraTexto(ultima));
    return texto;
}

QString integro(const InformeHistorial &informe)
{
    const QDate desde = informe.desde.isValid() ? informe.desde : informe.comienzo.date();
    QString texto
        = QStringLiteral("%1 desde %2 (%3)")
              .arg(
                  informe.completo ? QStringLiteral("Registro íntegro") : QStringLiteral("Lo reciente está íntegro,"),
                  base::fechaTexto(desde),
                  acciones(informe.acciones));
    if (informe.completo && informe.anteriores > 0)
        texto += QStringLiteral("; anteriores sin cambios: %1").arg(cifra(informe.anteriores));
    if (informe.sinSellar)
        texto += QStringLiteral("; las acciones anteriores todavía no están selladas");
    return texto;
}

} // namespace

QString resumenIntegridad(const InformeHistorial &informe)
{
    if (!informe.hallazgos.empty())
        return QStringLiteral("Registro alterado: ") + diferencias(informe);
    return informe.comenzado ? integro(informe) : QStringLiteral("El registro todavía no se comenzó a sellar");
}

QString momentoHallazgo(const HallazgoHistorial &hallazgo)
{
    const QDateTime &desde = hallazgo.desde, &hasta = hallazgo.hasta;
    if (!hasta.isValid())
        return base::fechaHoraTexto(desde);
    if (hallazgo.clase == HallazgoHistorial::Clase::Anteriores)
        return !desde.isValid() ? QStringLiteral("hasta el ") + base::fechaTexto(hasta.date())
            : desde.date() == hasta.date()
            ? base::fechaTexto(hasta.date())
            : QStringLiteral("%1 al %2").arg(base::fechaTexto(desde.date()), base::fechaTexto(hasta.date()));
    return !desde.isValid() || desde == hasta
        ? base::fechaHoraTexto(hasta)
        : QStringLiteral("%1 a %2").arg(base::fechaHoraTexto(desde), base::fechaHoraTexto(hasta));
}

QString textoHallazgo(const HallazgoHistorial &hallazgo)
{
    using Clase = HallazgoHistorial::Clase;
    const int n = hallazgo.cantidad;
    const QString sellos = contadas(n, QStringLiteral("sello"), QStringLiteral("sellos"));
    switch (hallazgo.clase) {
    case Clase::SinComienzo: return QStringLiteral("Se perdió el comienzo del registro: %1 sin comprobar").arg(sellos);
    case Clase::ComienzoAlterado: return QStringLiteral("El comienzo del registro fue modificado");
    case Clase::OtroComienzo:
        return QStringLiteral(
            "El registro que esta computadora conocía hasta ese momento fue reemplazado por otro, o borrado");
    case Clase::SinFinal:
        return (n > 0 ? QStringLiteral("Hasta ese momento esta computadora vio %1 más").arg(acciones(n))
                      : QStringLiteral("Hasta ese momento esta computadora vio otras acciones"))
            + QStringLiteral(": se quitaron las últimas, o se restauró una copia anterior");
    case Clase::FaltanEslabones:
        return (n == 1 ? QStringLiteral("Se quitó %1 del registro") : QStringLiteral("Se quitaron %1 del registro"))
            .arg(sellos);
    case Clase::EslabonAlterado:
        return (n == 1 ? QStringLiteral("Se modificó %1 del registro")
                       : QStringLiteral("Se modificaron %1 del registro"))
            .arg(sellos);
    case Clase::Anteriores:
        return n == 0 ? QStringLiteral("Se modificaron acciones de antes del registro")
            : n < 0   ? QStringLiteral("Se quitaron acciones de antes del registro: faltan %1").arg(-n)
                      : QStringLiteral("Se agregaron acciones a las de antes del registro: sobran %1").arg(n);
    case Clase::Modificada: return QStringLiteral("Se modificó una acción; ahora dice: ") + hallazgo.detalle;
    case Clase::Eliminada: return QStringLiteral("Se quitó una acción");
    case Clase::Agregada: return QStringLiteral("Se agregó una acción: ") + hallazgo.detalle;
    }
    return {};
}

void registrarVerificacion(db::Entorno &entorno, const InformeHistorial &informe)
{
    if (entorno.conexion().readOnly())
        return;
    const QString resumen = resumenIntegridad(informe);
    db::registrarHistorial(
        entorno, QStringLiteral("Historial de Accesos"), QStringLiteral("Se verificó el historial. %1.").arg(resumen));
    db::aceptarFinal(entorno);
}

} // namespace maintenance
