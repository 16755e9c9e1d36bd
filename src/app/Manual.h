#pragma once

#include <QString>
#include <QStringList>
#include <QVector>

namespace app {

/// A page of the user's guide.
struct PaginaManual {
    QString archivo; ///< path inside the guide, "guia/agenda.md"
    QString titulo; ///< its first heading
    QStringList secciones; ///< its second-level headings
    QString texto; ///< without marks, for searching
    QStringList imagenes; ///< names of its pictures, without folder and ending
};

struct HallazgoManual {
    int pagina = 0; ///< index in Manual::paginas()
    QString fragmento; ///< the words around the first place, in one line
};

/// The user's guide as it is written: guia.md, which is its first page and by its links the order of the others, and
/// every page of the folder guia beside it; those without a link come last, by title.
class Manual
{
public:
    /// `raiz`: the folder that holds guia.md, "/" or ":/manual" for example. A guide that is not there has no pages.
    explicit Manual(const QString &raiz);

    [[nodiscard]] const QVector<PaginaManual> &paginas() const { return m_paginas; }
    /// The page that explains a window: the first one that shows its picture. Empty when there is none.
    [[nodiscard]] QString paginaDeVentana(const QString &ventana) const;
    /// Pages that hold every word, in whatever case and with or without accents; those that have them in their title
    /// first. Nothing for a search without a letter.
    [[nodiscard]] QVector<HallazgoManual> buscar(const QString &texto) const;

private:
    QVector<PaginaManual> m_paginas;
};

/// Letter by letter in lower case and without accents, so that a place in one is a place in the other.
[[nodiscard]] QString sinAcentos(QStringView texto);

/// The name under which a link reaches a heading: "Días en que no se atiende" is "días-en-que-no-se-atiende".
[[nodiscard]] QString anclaDe(const QString &encabezado);

} // namespace app
