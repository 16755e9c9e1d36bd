#include "printing/Armar.h"

#include "base/Clock.h"
#include "base/Numeros.h"
#include "db/Entorno.h"
#include "db/Error.h"
#include "db/Recordset.h"
#include "printing/ImagenEncabezado.h"

#include <QBuffer>

#include <algorithm>

namespace printing {

namespace {

/// The temporary row of `Imprimir` of one document.
struct FilaTemporal {
    QString titulo;
    QString cuerpo;
    QString general;
    QString paciente;
    QByteArray imagenEncabezado;
    QByteArray imagen;
};

void borrarTemporales(db::Connection &conexion)
{
    conexion.execute(QStringLiteral("DELETE FROM [Imprimir] WHERE nrohc = -99"));
}

/// Writes the row, reads it back and removes it.
FilaTemporal porImprimir(db::Connection &conexion, const FilaTemporal &fila)
{
    db::Transaction transaccion(conexion);
    borrarTemporales(conexion);
    db::Recordset nueva(conexion, QStringLiteral("SELECT * FROM [Imprimir] WHERE id = 0"));
    nueva.addNew();
    nueva.set(u"nrohc", -99);
    nueva.set(u"impri1", fila.titulo);
    nueva.set(u"imprihc", fila.cuerpo);
    nueva.set(u"impriencabezadogeneral", fila.general);
    nueva.set(u"impriencabezadopaciente", fila.paciente);
    nueva.set(u"imagenenca", fila.imagenEncabezado);
    nueva.set(u"imagen", fila.imagen);
    const qint64 id = nueva.update();
    const db::Recordset leida(conexion, QStringLiteral("SELECT * FROM [Imprimir] WHERE id = ?"), {id});
    const FilaTemporal vuelta{
        leida.text(u"impri1"),
        leida.text(u"imprihc"),
        leida.text(u"impriencabezadogeneral"),
        leida.text(u"impriencabezadopaciente"),
        leida.value(u"imagenenca").toByteArray(),
        leida.value(u"imagen").toByteArray()};
    borrarTemporales(conexion);
    transaccion.commit();
    return vuelta;
}

/// A printed page must not fail because its scratch paper is out of reach.
bool sePrescinde(const db::Error &error)
{
    return error.kind() == db::Error::Kind::ReadOnly || error.kind() == db::Error::Kind::Busy
        || error.kind() == db::Error::Kind::Full;
}

FilaTemporal pasar(db::Connection &conexion, const FilaTemporal &fila)
{
    if (conexion.readOnly())
        return fila;
    try {
        return porImprimir(conexion, fila);
    } catch (const db::Error &error) {
        if (!sePrescinde(error))
            throw;
        return fila;
    }
}

QByteArray comoPng(const QImage &imagen)
{
    QByteArray bytes;
    QBuffer salida(&bytes);
    if (!imagen.isNull() && salida.open(QIODevice::WriteOnly))
        imagen.save(&salida, "PNG");
    return bytes;
}

} // namespace

Documento armar(db::Entorno &entorno, const Contenido &contenido)
{
    const PlantillasEncabezado plantillas = leerPlantillas(entorno.conexion());
    const FilaTemporal fila = pasar(
        entorno.conexion(),
        {contenido.titulo,
         contenido.html,
         encabezadoGeneral(entorno, plantillas.general),
         contenido.paciente ? encabezadoPaciente(*contenido.paciente, plantillas.paciente) : QString(),
         plantillas.imagen ? leerImagen(entorno) : QByteArray(),
         comoPng(contenido.imagen)});

    Documento documento;
    documento.titulo = fila.titulo;
    documento.subtitulo = contenido.subtitulo;
    documento.encabezado = {fila.general, fila.paciente, imagenDe(fila.imagenEncabezado)};
    documento.hoja = contenido.hoja;
    documento.fecha = entorno.clock().now();
    if (!fila.cuerpo.isEmpty())
        documento.cuerpo.append(Texto{fila.cuerpo});
    if (!contenido.imagen.isNull())
        documento.cuerpo.append(Imagen{QImage::fromData(fila.imagen)});
    if (contenido.tabla)
        documento.cuerpo.append(*contenido.tabla);
    return documento;
}

Tabla tablaDe(const db::ResultSet &filas, const std::vector<ColumnaImpresa> &columnas)
{
    Tabla tabla;
    std::vector<int> lugares;
    for (const ColumnaImpresa &columna : columnas) {
        tabla.columnas.append(columna.titulo);
        lugares.push_back(filas.column(columna.columna));
        Q_ASSERT_X(lugares.back() >= 0, "printing::tablaDe", qPrintable(columna.columna));
    }
    tabla.filas.reserve(filas.rowCount());
    for (int fila = 0; fila < filas.rowCount(); ++fila) {
        Fila suya;
        for (size_t i = 0; i < columnas.size(); ++i) {
            const bool importe = columnas[i].dinero && !filas.isNull(fila, lugares[i]);
            suya.celdas << (importe ? base::dinero(filas.real(fila, lugares[i])) : filas.text(fila, lugares[i]));
        }
        tabla.filas.append(std::move(suya));
    }
    return tabla;
}

/// A server whose tables an older program made keeps the long texts in a type that it does not sort.
static QString ordenable(db::Connection &conexion, const QString &orden)
{
    if (conexion.dialect().kind() == db::Dialect::Kind::Access)
        return orden;
    const QVector<db::Column> declaradas = conexion.columns(QStringLiteral("Imprimir2"));
    QStringList terminos;
    for (const QString &columna : orden.split(u',')) {
        const bool largo = std::any_of(declaradas.cbegin(), declaradas.cend(), [&](const db::Column &declarada) {
            return declarada.type == db::Type::Memo && declarada.name.compare(columna, Qt::CaseInsensitive) == 0;
        });
        terminos << (largo ? conexion.dialect().memo(columna) : columna);
    }
    return terminos.join(u',');
}

db::Rows porImprimir2(db::Connection &conexion, const std::function<void()> &llenar, const QString &orden)
{
    const QString borrar = QStringLiteral("DELETE FROM [Imprimir2] WHERE nrohc = 0");
    db::Transaction transaccion(conexion);
    conexion.execute(borrar);
    llenar();
    db::Rows filas = conexion.query(
        QStringLiteral("SELECT * FROM [Imprimir2] WHERE nrohc = 0 ORDER BY ")
        + (orden.isEmpty() ? QStringLiteral("id") : ordenable(conexion, orden) + QStringLiteral(",id")));
    conexion.execute(borrar);
    transaccion.commit();
    return filas;
}

} // namespace printing
