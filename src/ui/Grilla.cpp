#include "ui/Grilla.h"

#include "base/Csv.h"
#include "ui/Preferencias.h"
#include "ui/Ventana.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QRegularExpression>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>
#include <unordered_set>

namespace ui {

namespace {

Ventana *ventanaDe(const QWidget *widget)
{
    for (QWidget *w = widget->parentWidget(); w; w = w->parentWidget())
        if (auto *ventana = qobject_cast<Ventana *>(w))
            return ventana;
    return nullptr;
}

QString enUnaLinea(QString texto)
{
    for (QChar &c : texto)
        if (c == u'\t' || c == u'\n' || c == u'\r')
            c = u' ';
    return texto;
}

} // namespace

Grilla::Grilla(const QString &nombre, const QString &encabezado, QWidget *parent)
    : QTableView(parent)
    , m_modelo(new ModeloGrilla(leerEncabezado(encabezado), this))
{
    setObjectName(nombre);
    setModel(m_modelo);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setWordWrap(false);
    setShowGrid(false);
    setAlternatingRowColors(true);
    setTabKeyNavigation(false);
    setHorizontalScrollMode(ScrollPerPixel);

    verticalHeader()->hide();
    verticalHeader()->setMinimumSectionSize(0);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);

    QHeaderView *titulos = horizontalHeader();
    titulos->setHighlightSections(false);
    titulos->setStretchLastSection(true);
    titulos->setSortIndicatorClearable(true);
    titulos->setSortIndicator(-1, Qt::AscendingOrder); // as read until a title is clicked
    setSortingEnabled(true);
    for (int i = 0; i < m_modelo->columnCount(); ++i)
        setColumnHidden(i, m_modelo->columnas()[size_t(i)].caracteres == 0);
    connect(titulos, &QHeaderView::sectionResized, this, [this](int columna) {
        if (m_anchosPuestos && !m_recargando && !m_repartiendo && columna != m_modelo->columnCount() - 1)
            m_anchosCambiados = true;
    });
    connect(this, &QTableView::doubleClicked, this, [this](const QModelIndex &index) { emit activada(index.row()); });
}

Grilla::~Grilla()
{
    if (!m_anchosCambiados)
        return;
    QStringList anchos;
    for (int i = 0; i < m_modelo->columnCount(); ++i)
        anchos << QString::number(columnWidth(i));
    Preferencias::guardar(claveAnchos(), anchos.join(u','));
}

QString Grilla::claveAnchos() const
{
    const Ventana *ventana = ventanaDe(this);
    return QStringLiteral("anchos/") + (ventana ? ventana->objectName() + u'.' : QString()) + objectName();
}

int Grilla::anchoPropio(int columna) const
{
    const ColumnaGrilla &suya = m_modelo->columnas()[size_t(columna)];
    if (suya.caracteres == 0)
        return 0;
    const QFontMetrics letra = horizontalHeader()->fontMetrics();
    // Room beside the title for the mark of the order.
    return qMax(suya.caracteres * letra.averageCharWidth(), letra.horizontalAdvance(suya.titulo)) + 16;
}

void Grilla::ponerAnchos()
{
    const QStringList guardados = Preferencias::leer(claveAnchos()).split(u',', Qt::SkipEmptyParts);
    const bool valen = guardados.size() == m_modelo->columnCount();
    for (int i = 0; i < m_modelo->columnCount(); ++i) {
        const int guardado = valen ? guardados[i].toInt() : 0;
        if (!isColumnHidden(i))
            setColumnWidth(i, guardado > 0 ? qMin(guardado, 4000) : anchoPropio(i));
    }
    m_anchosGuardados = valen;
    repartirAncho();
}

void Grilla::setElasticas(std::vector<std::pair<int, int>> columnasYPesos)
{
    m_elasticas = std::move(columnasYPesos);
    repartirAncho();
}

void Grilla::repartirAncho()
{
    if (m_elasticas.empty() || m_anchosGuardados || m_anchosCambiados)
        return;
    int sobra = viewport()->width(), pesos = 0;
    for (int i = 0; i < m_modelo->columnCount(); ++i)
        sobra -= isColumnHidden(i) ? 0 : anchoPropio(i);
    for (const auto &[columna, peso] : m_elasticas)
        pesos += peso;
    const QScopedValueRollback repartiendo(m_repartiendo, true);
    for (const auto &[columna, peso] : m_elasticas)
        setColumnWidth(columna, anchoPropio(columna) + qMax(0, sobra) * peso / pesos);
}

void Grilla::resizeEvent(QResizeEvent *event)
{
    QTableView::resizeEvent(event);
    if (m_anchosPuestos)
        repartirAncho();
}

QSize Grilla::sizeHint() const
{
    int ancho = 2 * frameWidth() + verticalScrollBar()->sizeHint().width();
    for (int i = 0; i < m_modelo->columnCount(); ++i)
        if (!isColumnHidden(i))
            ancho += anchoPropio(i);
    const int alto
        = 2 * frameWidth() + horizontalHeader()->sizeHint().height() + 12 * verticalHeader()->defaultSectionSize();
    return {qBound(260, ancho, 900), alto};
}

void Grilla::showEvent(QShowEvent *event)
{
    // Only here the window whose name the widths carry, and the font, are known.
    if (!m_anchosPuestos) {
        ponerAnchos();
        m_anchosPuestos = true;
    }
    QTableView::showEvent(event);
}

int Grilla::filaActual() const
{
    const QModelIndex actual = currentIndex();
    return actual.isValid() && selectionModel()->isSelected(actual) ? actual.row() : -1;
}

qint64 Grilla::claveActual() const { return m_modelo->clave(filaActual()); }

std::vector<int> Grilla::filasElegidas() const
{
    std::vector<int> filas;
    for (const QItemSelectionRange &tramo : selectionModel()->selection())
        for (int fila = tramo.top(); fila <= tramo.bottom(); ++fila)
            filas.push_back(fila);
    std::sort(filas.begin(), filas.end());
    filas.erase(std::unique(filas.begin(), filas.end()), filas.end());
    return filas;
}

std::vector<qint64> Grilla::clavesElegidas() const
{
    std::vector<qint64> claves;
    for (const int fila : filasElegidas())
        claves.push_back(m_modelo->clave(fila));
    return claves;
}

void Grilla::elegirClave(qint64 clave) { elegirFila(m_modelo->filaDe(clave)); }

void Grilla::elegirFila(int fila)
{
    if (fila < 0 || fila >= m_modelo->rowCount()) {
        selectionModel()->clear();
        return;
    }
    int columna = 0;
    while (columna < m_modelo->columnCount() - 1 && isColumnHidden(columna))
        ++columna;
    const QModelIndex index = m_modelo->index(fila, columna);
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    scrollTo(index);
}

void Grilla::recargar(const std::function<void()> &cambio)
{
    const int filaAntes = filaActual();
    const qint64 claveAntes = claveActual();
    const std::vector<qint64> elegidasAntes = clavesElegidas();
    const int vertical = verticalScrollBar()->value(), horizontal = horizontalScrollBar()->value();

    m_recargando = true;
    cambio();
    if (claveAntes != 0) {
        const int fila = m_modelo->filaDe(claveAntes);
        elegirFila(fila);
        if (fila < 0 && m_modelo->rowCount() > 0)
            selectionModel()->setCurrentIndex(
                m_modelo->index(qMin(filaAntes, m_modelo->rowCount() - 1), 0), QItemSelectionModel::NoUpdate);
    }
    if (elegidasAntes.size() > 1) {
        const std::unordered_set<qint64> buscadas(elegidasAntes.begin(), elegidasAntes.end());
        QItemSelection elegidas;
        const int filas = m_modelo->rowCount(), ultima = m_modelo->columnCount() - 1;
        for (int fila = 0, desde = -1; fila <= filas; ++fila) {
            const bool elegida = fila < filas && buscadas.contains(m_modelo->clave(fila)) && m_modelo->clave(fila) != 0;
            if (elegida && desde < 0)
                desde = fila;
            if (!elegida && desde >= 0)
                elegidas.select(m_modelo->index(std::exchange(desde, -1), 0), m_modelo->index(fila - 1, ultima));
        }
        selectionModel()->select(elegidas, QItemSelectionModel::Select);
    }
    // The scroll bars learn the new number of rows only with the layout that is still pending.
    executeDelayedItemsLayout();
    updateGeometries();
    verticalScrollBar()->setValue(vertical);
    horizontalScrollBar()->setValue(horizontal);
    m_recargando = false;

    if (filaActual() != filaAntes || claveActual() != claveAntes)
        emit filaCambiada(filaActual());
}

void Grilla::mostrar(db::Rows rows, int primera)
{
    recargar([&] { m_modelo->setRows(std::move(rows), primera); });
}

void Grilla::mostrar(std::vector<QStringList> filas, std::vector<qint64> claves)
{
    recargar([&] { m_modelo->setTextos(std::move(filas), std::move(claves)); });
}

void Grilla::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QTableView::currentChanged(current, previous);
    if (!m_recargando && current.row() != previous.row())
        emit filaCambiada(current.row());
}

void Grilla::recorrerTexto(bool soloElegidas, const Linea &linea) const
{
    const auto unir = [this, &linea](auto celda) {
        QStringList celdas;
        for (int columna = 0; columna < m_modelo->columnCount(); ++columna)
            if (!isColumnHidden(columna))
                celdas << enUnaLinea(celda(columna));
        return linea(celdas.join(u'\t'));
    };
    const auto fila = [&](int row) { return unir([&](int columna) { return m_modelo->textoCelda(row, columna); }); };
    if (soloElegidas) {
        // The rows may become fewer while `linea` lets events happen.
        for (const int row : filasElegidas())
            if (row >= m_modelo->rowCount() || !fila(row))
                return;
        return;
    }
    const ModeloGrilla::Recorrido recorrido(*m_modelo);
    if (!unir([this](int columna) { return m_modelo->columnas()[size_t(columna)].titulo; }))
        return;
    for (int row = 0; row < m_modelo->rowCount(); ++row)
        if (!fila(row))
            return;
}

QString Grilla::comoTexto(bool soloElegidas) const
{
    QStringList lineas;
    recorrerTexto(soloElegidas, [&lineas](const QString &linea) {
        lineas << linea;
        return true;
    });
    return lineas.join(u'\n');
}

void Grilla::recorrerCsv(const Linea &linea) const
{
    const auto unir = [this, &linea](auto celda) {
        QStringList campos;
        for (int columna = 0; columna < m_modelo->columnCount(); ++columna)
            if (!isColumnHidden(columna))
                campos << base::campoCsv(celda(columna));
        return linea(campos.join(u';'));
    };
    const ModeloGrilla::Recorrido recorrido(*m_modelo);
    if (!unir([this](int columna) { return m_modelo->columnas()[size_t(columna)].titulo; }))
        return;
    for (int row = 0; row < m_modelo->rowCount(); ++row)
        if (!unir([&](int columna) { return m_modelo->textoCelda(row, columna); }))
            return;
}

QString Grilla::comoCsv() const
{
    QString csv;
    recorrerCsv([&csv](const QString &linea) {
        csv += linea + QStringLiteral("\r\n");
        return true;
    });
    return csv;
}

void Grilla::copiar(bool soloElegidas)
{
    if (Ventana *ventana = ventanaDe(this))
        ventana->copiar(*this, soloElegidas);
    else
        QApplication::clipboard()->setText(comoTexto(soloElegidas));
}

void Grilla::keyPressEvent(QKeyEvent *event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (event->matches(QKeySequence::Copy)) {
        copiar(true);
        event->accept();
    } else if (enter && filaActual() >= 0) {
        event->accept();
        emit activada(filaActual());
    } else if (enter || event->key() == Qt::Key_Escape) {
        event->ignore();
    } else {
        QTableView::keyPressEvent(event);
    }
}

void Grilla::contextMenuEvent(QContextMenuEvent *event)
{
    QMenu menu;
    // What the window lets be done with a row comes first.
    menu.addActions(actions());
    menu.addSeparator();
    QAction *soloElegidas = menu.addAction(tr("Copiar"));
    soloElegidas->setEnabled(selectionModel()->hasSelection());
    QAction *todo = menu.addAction(tr("Copiar toda la lista"));
    Ventana *ventana = ventanaDe(this);
    QAction *exportar = ventana ? menu.addAction(tr("Exportar la lista...")) : nullptr;
    QAction *imprimir = ventana && ventana->puedeImprimirLista() ? menu.addAction(tr("Imprimir la lista...")) : nullptr;
    const QAction *elegida = menu.exec(event->globalPos());
    if (!elegida)
        return;
    if (elegida == exportar)
        ventana->exportar(*this);
    else if (elegida == imprimir)
        ventana->imprimirLista(*this);
    else if (elegida == soloElegidas || elegida == todo)
        copiar(elegida == soloElegidas);
}

} // namespace ui
