#include "printing/forms/Ver.h"

#include "printing/AnchosTabla.h"
#include "printing/Armar.h"
#include "ui/Grilla.h"
#include "ui/Ventanas.h"

namespace printing {

namespace {

/// A line of dashes fills a cell of the screen; on paper it would only make its column wide.
QString paraPapel(const QString &celda)
{
    const QString texto = celda.trimmed();
    return texto.size() > 3 && texto.count(u'-') == texto.size() ? QStringLiteral("---") : texto;
}

} // namespace

void ver(ui::Ventanas &ventanas, const Documento &documento, QWidget *sobre)
{
    ventanas.abrir(
        QStringLiteral("vistaprevia"),
        {.datos = {{QStringLiteral("documento"), QVariant::fromValue(documento)}}},
        sobre);
}

Tabla tablaDe(const ui::Grilla &grilla)
{
    const ui::ModeloGrilla &modelo = grilla.modelo();
    Tabla tabla;
    std::vector<int> vistas;
    for (int i = 0; i < modelo.columnCount(); ++i)
        if (!grilla.isColumnHidden(i)) {
            const ui::ColumnaGrilla &suya = modelo.columnas()[size_t(i)];
            tabla.columnas.append({suya.titulo, suya.alineacion});
            vistas.push_back(i);
        }
    const int filas = modelo.rowCount();
    tabla.filas.reserve(filas);
    for (int f = 0; f < filas; ++f) {
        Fila fila;
        fila.celdas.reserve(qsizetype(vistas.size()));
        for (const int columna : vistas)
            fila.celdas << paraPapel(modelo.textoCelda(f, columna));
        tabla.filas.append(std::move(fila));
    }
    return tabla;
}

void imprimirGrilla(
    db::Entorno &entorno, ui::Ventanas &ventanas, const ui::Grilla &grilla, const QString &titulo, QWidget *sobre)
{
    Contenido contenido{.titulo = titulo};
    contenido.tabla = tablaDe(grilla);
    contenido.hoja.apaisada = convieneApaisada(*contenido.tabla, contenido.hoja);
    ver(ventanas, armar(entorno, contenido), sobre);
}

} // namespace printing
