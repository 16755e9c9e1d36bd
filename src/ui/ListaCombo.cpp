#include "ui/ListaCombo.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QCompleter>
#include <QLineEdit>
#include <QListView>
#include <QStandardItemModel>

namespace ui {

namespace {

/// Role of an entry's text as it is searched for.
constexpr int rolBuscado = Qt::UserRole + 1;

/// Finds entries by any part of their text as plegado() writes it, and shows them as they are.
class Buscador : public QCompleter
{
public:
    Buscador(QAbstractItemModel *modelo, QObject *parent)
        : QCompleter(modelo, parent)
    {
        setCompletionRole(rolBuscado);
        setFilterMode(Qt::MatchContains);
        setMaxVisibleItems(12);
    }
    [[nodiscard]] QStringList splitPath(const QString &escrito) const override { return {plegado(escrito)}; }
    [[nodiscard]] QString pathFromIndex(const QModelIndex &index) const override
    {
        return index.data(Qt::DisplayRole).toString();
    }
};

/// The entry that is chosen, or that was typed whole; -1 for none.
int indiceElegido(const QComboBox &lista)
{
    const int actual = lista.currentIndex();
    if (!lista.isEditable())
        return actual;
    const QString escrito = lista.currentText().trimmed();
    if (actual >= 0 && escrito.compare(lista.itemText(actual).trimmed(), Qt::CaseInsensitive) == 0)
        return actual;
    return escrito.isEmpty() ? -1 : lista.findText(escrito, Qt::MatchFixedString);
}

} // namespace

QString plegado(const QString &texto)
{
    QString letras;
    for (const QChar c : texto.normalized(QString::NormalizationForm_D))
        if (c.category() != QChar::Mark_NonSpacing)
            letras += c;
    return letras.toCaseFolded();
}

void cargarLista(
    QComboBox &lista,
    db::Connection &conexion,
    const QString &tabla,
    const QString &columnaNombre,
    const std::vector<std::pair<QString, int>> &antes)
{
    const db::Dialect &d = conexion.dialect();
    const QString columna = d.identifier(columnaNombre);
    const db::Rows rows = conexion.query(
        QStringLiteral("SELECT id,%1 FROM %2 ORDER BY prioridad DESC, %1").arg(columna, d.identifier(tabla)));
    std::vector<std::pair<QString, int>> entradas = antes;
    entradas.reserve(antes.size() + size_t(rows->rowCount()));
    for (int i = 0; i < rows->rowCount(); ++i)
        entradas.emplace_back(rows->text(i, 1), int(rows->integer(i, 0)));
    ponerEntradas(lista, entradas);
    const QSignalBlocker calla(lista);
    if (!antes.empty() && indiceElegido(lista) < 0 && lista.currentText().trimmed().isEmpty())
        lista.setCurrentIndex(0);
}

void ponerEntradas(QComboBox &lista, const std::vector<std::pair<QString, int>> &entradas)
{
    const int elegido = idElegido(lista, -1);
    const bool habia = indiceElegido(lista) >= 0;
    const QString escrito = !habia && lista.isEditable() ? lista.currentText() : QString();
    const QSignalBlocker calla(lista);
    // Built beside the list and handed over whole: a list that watches five thousand single additions is slow.
    auto *modelo = new QStandardItemModel(&lista);
    QList<QStandardItem *> items;
    items.reserve(qsizetype(entradas.size()));
    for (const auto &[texto, id] : entradas) {
        auto *item = new QStandardItem(texto);
        item->setData(id, Qt::UserRole);
        item->setData(plegado(texto), rolBuscado);
        items << item;
    }
    modelo->appendColumn(items);

    lista.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    if (lista.minimumContentsLength() == 0)
        lista.setMinimumContentsLength(12);
    if (auto *vista = qobject_cast<QListView *>(lista.view()))
        vista->setUniformItemSizes(true);
    lista.setModel(modelo); // deletes the one before
    lista.setEditable(true);
    lista.setInsertPolicy(QComboBox::NoInsert);
    lista.setCompleter(new Buscador(modelo, modelo));
    lista.setCurrentIndex(habia ? lista.findData(elegido) : -1);
    if (!escrito.isEmpty())
        lista.setEditText(escrito);
}

int idElegido(const QComboBox &lista, int otherwise)
{
    const int indice = indiceElegido(lista);
    return indice >= 0 ? lista.itemData(indice).toInt() : otherwise;
}

void elegirId(QComboBox &lista, int id)
{
    lista.setCurrentIndex(lista.findData(id));
    if (lista.isEditable() && lista.currentIndex() < 0)
        lista.clearEditText();
    if (lista.lineEdit())
        lista.lineEdit()->setCursorPosition(0); // a long name shows its beginning
}

} // namespace ui
