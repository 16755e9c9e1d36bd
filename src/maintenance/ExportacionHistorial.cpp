#include "maintenance/ExportacionHistorial.h"

#include "base/Csv.h"
#include "base/Fechas.h"
#include "db/Error.h"

namespace maintenance {

namespace {
constexpr int filasPorPagina = 2000;
}

ExportacionHistorial::ExportacionHistorial(
    db::Connection &conexion, const FiltroHistorial &filtro, const QString &archivo)
    : m_usuarios(conexion)
    , m_busqueda(conexion, filtro, filasPorPagina)
    , m_archivo(archivo)
{
    // The mark makes spreadsheets read the accents right.
    if (!m_archivo.open(QIODevice::WriteOnly) || m_archivo.write("\xEF\xBB\xBF") < 0)
        fallar();
    escribir(
        {QStringLiteral("Fecha"),
         QStringLiteral("Hora"),
         QStringLiteral("Equipo"),
         QStringLiteral("Usuario"),
         QStringLiteral("Ventana"),
         QStringLiteral("Acción")});
}

void ExportacionHistorial::fallar() const
{
    throw db::Error(
        db::Error::Kind::General, 0, QStringLiteral("No se pudo escribir el archivo: %1").arg(m_archivo.errorString()));
}

void ExportacionHistorial::escribir(const QStringList &campos)
{
    QStringList linea;
    for (const QString &campo : campos)
        linea << base::campoCsv(campo);
    const QByteArray texto = linea.join(u';').toUtf8() + "\r\n";
    if (m_archivo.write(texto) != texto.size())
        fallar();
}

bool ExportacionHistorial::seguir()
{
    using Busqueda = BusquedaHistorial;
    const Busqueda::Tanda tanda = m_busqueda.seguir();
    for (int f = 0; f < tanda.cantidad; ++f) {
        const QDateTime fecha = tanda.filas->dateTime(f, Busqueda::Fecha);
        escribir(
            {base::fechaTexto(fecha.date()),
             fecha.toString(QStringLiteral("HH:mm")),
             tanda.filas->text(f, Busqueda::Equipo),
             m_usuarios.nombre(int(tanda.filas->integer(f, Busqueda::Usuario))),
             tanda.filas->text(f, Busqueda::Ventana),
             tanda.filas->text(f, Busqueda::Accion)});
    }
    m_filas += tanda.cantidad;
    if (!m_busqueda.terminada())
        return true;
    if (!m_archivo.commit())
        fallar();
    return false;
}

} // namespace maintenance
