#pragma once

#include <QString>

#include <utility>
#include <vector>

namespace ui {

/// One field of a form, declared once: the column it edits and the control that edits it. Built with the functions of
/// namespace `ui::campo`, refined with the words below: `campo::texto("DNI", "&Documento:").con(16)`.
struct Campo {
    enum class Tipo {
        Texto, ///< a line of text
        Memo, ///< text of several lines
        Entero, ///< whole number; empty is Null
        Decimal, ///< number with a decimal comma; empty is Null
        Fecha, ///< date; empty is Null
        Bandera, ///< tick; its caption is the label
        Eleccion, ///< one of `opciones`
        Lista, ///< an entry of a lookup table, as its id
        Propio ///< a control handed over by the window, edited through its USER property
    };
    using Opciones = std::vector<std::pair<QString, int>>;

    QString columna; ///< column of the table, letter for letter
    QString etiqueta; ///< label, mnemonic included
    Tipo tipo = Tipo::Texto;
    QString nombre; ///< object name of the control
    QString ayuda = {}; ///< tool tip
    QString tabla = {}; ///< Lista: the lookup table
    QString columnaNombre = {}; ///< Lista: its name column
    Opciones opciones = {}; ///< Eleccion: the entries; Lista: those before the table's
    int caracteres = 0; ///< width in characters, 0 for all the room; for a Memo its height in lines
    int minimo = -2'147'483'647; ///< Entero
    int maximo = 2'147'483'647;
    bool ancho = false; ///< takes a whole row of its group

    [[nodiscard]] Campo llamado(const QString &objectName) const; ///< another object name than the column's
    [[nodiscard]] Campo con(int ancho) const; ///< width in characters, lines of a Memo
    [[nodiscard]] Campo entre(int desde, int hasta) const; ///< both included
    [[nodiscard]] Campo dice(const QString &texto) const; ///< tool tip
    [[nodiscard]] Campo entero() const; ///< a row of its own
};

namespace campo {
[[nodiscard]] Campo texto(const QString &columna, const QString &etiqueta);
[[nodiscard]] Campo memo(const QString &columna, const QString &etiqueta);
[[nodiscard]] Campo numero(const QString &columna, const QString &etiqueta);
[[nodiscard]] Campo decimal(const QString &columna, const QString &etiqueta);
[[nodiscard]] Campo fecha(const QString &columna, const QString &etiqueta);
[[nodiscard]] Campo bandera(const QString &columna, const QString &etiqueta);
[[nodiscard]] Campo eleccion(const QString &columna, const QString &etiqueta, const Campo::Opciones &opciones);
/// `vacia` is the first entry, id 0; empty for none.
[[nodiscard]] Campo lista(
    const QString &columna,
    const QString &etiqueta,
    const QString &tabla,
    const QString &vacia = {},
    const QString &columnaNombre = QStringLiteral("nombre"));
[[nodiscard]] Campo propio(const QString &columna, const QString &etiqueta);
} // namespace campo

} // namespace ui
