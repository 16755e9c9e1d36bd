#pragma once

#include "printing/Hoja.h"

#include <QDateTime>
#include <QImage>
#include <QMetaType>
#include <QStringList>
#include <QVector>

#include <variant>

namespace printing {

/// Formatted text. What is stored in the database is first made HTML with texto::comoHtml(); words of persons in HTML
/// put together by hand go through QString::toHtmlEscaped().
struct Texto {
    QString html;
};

struct Columna {
    QString titulo;
    Qt::Alignment alineacion = Qt::AlignLeft;
    /// 0: as wide as its texts need. Columns with a weight share what the others leave, in proportion.
    double peso = 0;
};

struct Fila {
    enum class Clase {
        Comun,
        Grupo, ///< its first text stands alone, over the whole width, above the rows that follow it
        Total
    };
    QStringList celdas; ///< plain, may have line breaks; fewer than columns leave the last ones empty
    Clase clase = Clase::Comun;
};

/// A list: its titles stand again on every page, a row is never parted unless it is higher than a page.
struct Tabla {
    QVector<Columna> columnas;
    QVector<Fila> filas;
};

/// A picture, never wider nor higher than the page.
struct Imagen {
    QImage imagen;
    double ancho = 0; ///< millimetres; 0: the whole width
};

using Bloque = std::variant<Texto, Tabla, Imagen>;

/// What stands at the top of every page.
struct Encabezado {
    QString general; ///< HTML, empty for none
    QString paciente; ///< HTML, empty for none
    QImage imagen; ///< a wide one goes over the text, any other at its left
};

/// A document as a value, cheap to copy: what it says, and on which sheet. Paginas lays it out.
struct Documento {
    QString titulo; ///< plain; also the name of the print job and of its PDF
    QString subtitulo; ///< plain lines below the title
    Encabezado encabezado;
    QVector<Bloque> cuerpo;
    Hoja hoja;
    bool conTitulo = true; ///< whether the title is printed
    bool conPie = true; ///< date and "Página 1 de 3" at the bottom
    QDateTime fecha; ///< when it was made, for the bottom line; invalid for none
};

} // namespace printing

Q_DECLARE_METATYPE(printing::Documento)
