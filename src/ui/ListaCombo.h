#pragma once

#include "db/Connection.h"

class QComboBox;

namespace ui {

/// Fills a list with the rows of a lookup table, each text with its `id` as the item's data, ordered by descending
/// priority and then by name. Entries given in `antes` ("<Todas>" with its id) come first, and the first of them is
/// chosen where nothing was; otherwise the chosen entry stays, or what is typed and no entry, or none is chosen. Typing
/// finds entries by any part, accents or not, and never adds one. The list sends no signal.
void cargarLista(
    QComboBox &lista,
    db::Connection &conexion,
    const QString &tabla,
    const QString &columnaNombre = QStringLiteral("nombre"),
    const std::vector<std::pair<QString, int>> &antes = {});

/// The same with entries that do not come from a lookup table. The chosen id stays chosen, or the typed text stays; no
/// signal is sent.
void ponerEntradas(QComboBox &lista, const std::vector<std::pair<QString, int>> &entradas);

/// The `id` of the chosen entry; `otherwise` when none is chosen or what was typed is no entry.
[[nodiscard]] int idElegido(const QComboBox &lista, int otherwise = 0);
/// Chooses the entry of that id; none when the list does not hold it.
void elegirId(QComboBox &lista, int id);

} // namespace ui
