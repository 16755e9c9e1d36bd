#pragma once

#include "printing/Documento.h"
#include "printing/Encabezados.h"

namespace printing {

/// What a document is to say; armar() adds what every document of the practice carries.
struct Contenido {
    QString titulo;
    QString subtitulo = {};
    std::optional<DatosPaciente> paciente = {}; ///< gives the patient header
    QString html = {}; ///< the body, or what stands above the picture and the list; see Texto
    QImage imagen = {};
    std::optional<Tabla> tabla = {};
    Hoja hoja = {};
};

/// The document with the practice's headers, its picture and the time. It is assembled in the print table `Imprimir`:
/// headers, title, body and pictures are written into a temporary row (`nrohc` -99), read back and removed within one
/// transaction. No other station ever sees the row, and the main window's timer cannot take it away; what is printed
/// afterwards is held in memory. Where the table cannot be written (a read-only database, a full disk, another station
/// that is writing for long) the document is made all the same. Throws db::Error when the database cannot be read.
[[nodiscard]] Documento armar(db::Entorno &entorno, const Contenido &contenido);

/// A column of a printed list and the column of a print table that it shows: `impri1`, `imprinume1`...
struct ColumnaImpresa {
    QString columna;
    Columna titulo;
    bool dinero = false; ///< a number, written as "1.234,50"
};

/// A list of rows of a print table, in their order; an empty title hides nothing. A column that the rows do not have is
/// a programming fault.
[[nodiscard]] Tabla tablaDe(const db::ResultSet &filas, const std::vector<ColumnaImpresa> &columnas);

/// Runs `llenar`, which adds rows with `nrohc` 0 to `Imprimir2`, and hands over those rows in the order of their `id`
/// or of `orden` ("impri3,impri4"). All in one transaction, at whose end the rows are gone again: lists of two stations
/// never mix. Throws db::Error.
[[nodiscard]] db::Rows
porImprimir2(db::Connection &conexion, const std::function<void()> &llenar, const QString &orden = {});

} // namespace printing
