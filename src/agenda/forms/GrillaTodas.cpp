#include "agenda/forms/GrillaTodas.h"

#include "agenda/forms/ColorTono.h"
#include "ui/Estilo.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyledItemDelegate>

#include <algorithm>

namespace agenda {

namespace {

/// Letters that a column shows at least; with more columns than fit the table scrolls.
constexpr int letrasPorColumna = 17;
constexpr int borde = 4;

QColor conTransparencia(QColor color, int alfa)
{
    color.setAlpha(alfa);
    return color;
}

/// The professional's name, and below it how his day stands.
class Encabezado : public QHeaderView
{
public:
    explicit Encabezado(QWidget *parent)
        : QHeaderView(Qt::Horizontal, parent)
    {
        setSectionResizeMode(Fixed);
        setHighlightSections(false);
    }
    [[nodiscard]] QSize sizeHint() const override
    {
        return {QHeaderView::sizeHint().width(), 2 * fontMetrics().height() + 2 * borde};
    }

protected:
    void paintSection(QPainter *painter, const QRect &rect, int section) const override
    {
        QStyleOptionHeader opcion;
        initStyleOption(&opcion);
        opcion.rect = rect;
        opcion.section = section;
        opcion.position = QStyleOptionHeader::Middle;
        style()->drawControl(QStyle::CE_HeaderSection, &opcion, painter, this);

        const int alto = fontMetrics().height();
        QRect linea = rect.adjusted(borde, borde, -borde, 0);
        linea.setHeight(alto);
        const auto escribir = [&](const QFont &letra, const QColor &color, const QString &texto) {
            painter->setFont(letra);
            painter->setPen(color);
            painter->drawText(
                linea,
                Qt::AlignHCenter | Qt::AlignVCenter,
                QFontMetrics(letra).elidedText(texto, Qt::ElideRight, linea.width()));
            linea.translate(0, alto);
        };
        QFont negrita = font();
        negrita.setBold(true);
        const auto dato = [&](int rol) { return model()->headerData(section, Qt::Horizontal, rol); };
        painter->save();
        escribir(negrita, palette().color(QPalette::ButtonText), dato(Qt::DisplayRole).toString());
        const bool noAtiende = dato(ModeloTodas::NoAtiende).toBool();
        escribir(font(), noAtiende ? ui::color::error() : ui::color::tenue(), dato(ModeloTodas::Resumen).toString());
        painter->restore();
    }
};

class Pintor : public QStyledItemDelegate
{
public:
    explicit Pintor(GrillaTodas &grilla)
        : QStyledItemDelegate(&grilla)
        , m_grilla(grilla)
    {
    }

    void paint(QPainter *painter, const QStyleOptionViewItem &opcion, const QModelIndex &index) const override
    {
        const ModeloTodas::Lugar lugar = m_grilla.modelo().lugar(index.row(), index.column());
        const QPalette &paleta = opcion.palette;
        const QRect &todo = opcion.rect;
        painter->save();
        const bool fuera = !lugar.fila || (lugar.libre() && lugar.agenda->dia.noLaborable);
        if (fuera) {
            painter->fillRect(todo, paleta.color(QPalette::Window));
            painter->fillRect(todo, QBrush(conTransparencia(paleta.color(QPalette::Mid), 110), Qt::BDiagPattern));
        }
        if (lugar.fila)
            pintarFila(painter, opcion, index, lugar, fuera);
        painter->restore();
    }

private:
    void pintarFila(
        QPainter *painter,
        const QStyleOptionViewItem &opcion,
        const QModelIndex &index,
        const ModeloTodas::Lugar &lugar,
        bool fuera) const
    {
        const QPalette &paleta = opcion.palette;
        const QRect &todo = opcion.rect;
        const bool elegida = opcion.state & QStyle::State_Selected;
        const QColor tono = colorDe(lugar.agenda->dia.tono(*lugar.fila, m_grilla.ahora()));
        QColor letra = paleta.color(QPalette::Text), segunda = ui::color::tenue();
        if (elegida) {
            const bool activa = m_grilla.hasFocus();
            painter->fillRect(todo, paleta.color(activa ? QPalette::Active : QPalette::Inactive, QPalette::Highlight));
            letra = segunda = paleta.color(activa ? QPalette::Active : QPalette::Inactive, QPalette::HighlightedText);
        } else if (!fuera && tono.isValid()) {
            painter->fillRect(todo, tono);
            letra = Qt::black;
            segunda = QColor(0x50, 0x50, 0x50);
        } else if (lugar.fila->clase == FilaDia::Clase::Bloqueado) {
            painter->fillRect(todo, paleta.color(QPalette::Window));
            letra = ui::color::tenue();
        }

        QFont negrita = opcion.font;
        negrita.setBold(lugar.turno() && lugar.fila->llegado && !lugar.fila->atendido);
        QRect linea = todo.adjusted(borde, 0, -borde, 0);
        linea.setHeight(todo.height() / std::max(1, lugar.alto));
        const auto escribir = [&](const QFont &fuente, const QColor &color, const QString &texto) {
            painter->setFont(fuente);
            painter->setPen(color);
            painter->drawText(
                linea,
                Qt::AlignVCenter | Qt::AlignLeft,
                QFontMetrics(fuente).elidedText(texto, Qt::ElideRight, linea.width()));
            linea.translate(0, linea.height());
        };
        escribir(negrita, letra, index.data().toString());
        if (lugar.alto > 1 && lugar.turno())
            escribir(opcion.font, segunda, lugar.fila->motivo.isEmpty() ? lugar.fila->cobertura : lugar.fila->motivo);
        if (m_grilla.hasFocus() && index == m_grilla.currentIndex()) {
            painter->setPen(QPen(letra, 1, Qt::DotLine));
            painter->drawRect(todo.adjusted(1, 1, -2, -2));
        }
    }

    GrillaTodas &m_grilla;
};

} // namespace

GrillaTodas::GrillaTodas(const QString &nombre, QWidget *parent)
    : QTableView(parent)
    , m_modelo(new ModeloTodas(this))
{
    setObjectName(nombre);
    setModel(m_modelo);
    setHorizontalHeader(new Encabezado(this));
    setItemDelegate(new Pintor(*this));
    setSelectionBehavior(SelectItems);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    setCornerButtonEnabled(false);
    setHorizontalScrollMode(ScrollPerPixel);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setMinimumSectionSize(0);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    verticalHeader()->setHighlightSections(false);
    verticalHeader()->setSectionsClickable(false);
    connect(this, &QTableView::doubleClicked, this, &GrillaTodas::activada);
    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        if (!m_recargando)
            emit eleccionCambiada();
    });
}

void GrillaTodas::setAviso(const QString &aviso)
{
    m_aviso = aviso;
    viewport()->update();
}

void GrillaTodas::mostrar(std::shared_ptr<const TodasAgendas> todas, const std::set<int> &ocultos)
{
    // By what they are, not by where they stand: hours come and go with the others' appointments.
    using Clave = std::pair<int, qint64>;
    const auto clave = [](const Lugar &lugar) { return Clave(lugar.agenda->dia.doctor, lugar.fila->clave()); };
    std::vector<Clave> elegidas;
    for (const Lugar &lugar : elegidos())
        elegidas.push_back(clave(lugar));
    const Lugar antes = actual();
    const Clave corriente = antes.fila ? clave(antes) : Clave(0, 0); // no row has the key 0
    const int vertical = verticalScrollBar()->value(), horizontal = horizontalScrollBar()->value();

    m_recargando = true;
    m_modelo->setTodas(std::move(todas), ocultos);
    clearSpans();
    QItemSelection seleccion;
    QModelIndex donde;
    for (int c = 0; c < m_modelo->columnCount(); ++c)
        for (const CuadroDia::Celda &celda : m_modelo->cuadro().columnas[size_t(c)]) {
            if (celda.alto > 1)
                setSpan(celda.renglon, c, celda.alto, 1);
            const Clave suya = clave(m_modelo->lugar(celda.renglon, c));
            const QModelIndex indice = m_modelo->index(celda.renglon, c);
            if (std::find(elegidas.begin(), elegidas.end(), suya) != elegidas.end())
                seleccion.select(indice, indice);
            if (suya == corriente)
                donde = indice;
        }
    ponerAnchos();
    selectionModel()->setCurrentIndex(donde, QItemSelectionModel::NoUpdate);
    selectionModel()->select(seleccion, QItemSelectionModel::ClearAndSelect);
    verticalScrollBar()->setValue(vertical);
    horizontalScrollBar()->setValue(horizontal);
    m_recargando = false;
    emit eleccionCambiada();
}

GrillaTodas::Lugar GrillaTodas::actual() const
{
    const QModelIndex indice = currentIndex();
    if (!indice.isValid() || !selectionModel()->isSelected(indice))
        return {};
    return m_modelo->lugar(indice.row(), indice.column());
}

std::vector<GrillaTodas::Lugar> GrillaTodas::elegidos() const
{
    QModelIndexList indices = selectionModel()->selectedIndexes();
    std::sort(indices.begin(), indices.end(), [](const QModelIndex &a, const QModelIndex &b) {
        return std::pair(a.column(), a.row()) < std::pair(b.column(), b.row());
    });
    std::vector<Lugar> lugares;
    for (const QModelIndex &indice : indices)
        if (const Lugar lugar = m_modelo->lugar(indice.row(), indice.column()); lugar.fila)
            lugares.push_back(lugar);
    return lugares;
}

void GrillaTodas::elegirIndice(const QModelIndex &indice)
{
    setCurrentIndex(indice);
    selectionModel()->select(indice, QItemSelectionModel::ClearAndSelect);
    scrollTo(indice);
}

bool GrillaTodas::elegir(int doctor, qint64 clave)
{
    const int columna = m_modelo->columnaDe(doctor);
    if (columna < 0)
        return false;
    for (const CuadroDia::Celda &celda : m_modelo->cuadro().columnas[size_t(columna)])
        if (m_modelo->lugar(celda.renglon, columna).fila->clave() == clave) {
            elegirIndice(m_modelo->index(celda.renglon, columna));
            return true;
        }
    return false;
}

bool GrillaTodas::elegirHora(int doctor, QTime hora)
{
    const int columna = m_modelo->columnaDe(doctor);
    const auto &horas = m_modelo->cuadro().horas;
    const auto renglon = std::lower_bound(horas.begin(), horas.end(), hora) - horas.begin();
    const QModelIndex indice = columna < 0 ? QModelIndex() : cercana(columna, int(renglon));
    if (!indice.isValid())
        return false;
    elegirIndice(indice);
    return true;
}

QModelIndex GrillaTodas::cercana(int columna, int renglon) const
{
    const auto &celdas = m_modelo->cuadro().columnas[size_t(columna)];
    if (celdas.empty())
        return {};
    if (const CuadroDia::Celda *celda = m_modelo->cuadro().celda(columna, renglon))
        return m_modelo->index(celda->renglon, columna);
    // Between its hours: whichever begins or ends nearer.
    const CuadroDia::Celda *mejor = &celdas.front();
    const auto lejos = [renglon](const CuadroDia::Celda &c) {
        return c.renglon > renglon ? c.renglon - renglon : renglon - (c.renglon + c.alto - 1);
    };
    for (const CuadroDia::Celda &celda : celdas)
        if (lejos(celda) < lejos(*mejor))
            mejor = &celda;
    return m_modelo->index(mejor->renglon, columna);
}

QModelIndex GrillaTodas::enHora(int columna, int desde, int paso) const
{
    const auto &celdas = m_modelo->cuadro().columnas[size_t(columna)];
    for (size_t i = 0; i < celdas.size(); ++i)
        if (celdas[i].renglon == desde) {
            const auto otra = qsizetype(i) + paso;
            if (otra >= 0 && otra < qsizetype(celdas.size()))
                return m_modelo->index(celdas[size_t(otra)].renglon, columna);
        }
    return currentIndex();
}

QModelIndex GrillaTodas::moveCursor(CursorAction accion, Qt::KeyboardModifiers)
{
    const int columnas = m_modelo->columnCount();
    if (columnas == 0)
        return {};
    const QModelIndex aqui = currentIndex();
    if (!aqui.isValid())
        return cercana(0, 0);
    const int porPagina = std::max(1, viewport()->height() / std::max(1, verticalHeader()->defaultSectionSize()) - 1);
    switch (accion) {
    case MoveUp: return enHora(aqui.column(), aqui.row(), -1);
    case MoveDown: return enHora(aqui.column(), aqui.row(), 1);
    case MoveLeft:
    case MovePrevious: return aqui.column() > 0 ? cercana(aqui.column() - 1, aqui.row()) : aqui;
    case MoveRight:
    case MoveNext: return aqui.column() + 1 < columnas ? cercana(aqui.column() + 1, aqui.row()) : aqui;
    case MoveHome: return cercana(aqui.column(), 0);
    case MoveEnd: return cercana(aqui.column(), m_modelo->rowCount() - 1);
    case MovePageUp: return cercana(aqui.column(), std::max(0, aqui.row() - porPagina));
    case MovePageDown: return cercana(aqui.column(), std::min(m_modelo->rowCount() - 1, aqui.row() + porPagina));
    }
    return aqui;
}

void GrillaTodas::keyPressEvent(QKeyEvent *event)
{
    const bool sola = (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    if (sola && (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && actual().fila) {
        event->accept();
        emit activada();
        return;
    }
    QTableView::keyPressEvent(event);
}

void GrillaTodas::ponerAnchos()
{
    const int columnas = m_modelo->columnCount();
    if (columnas == 0)
        return;
    const int minimo = letrasPorColumna * fontMetrics().averageCharWidth() + 2 * borde;
    const int ancho = std::max(minimo, viewport()->width() / columnas);
    for (int c = 0; c < columnas; ++c)
        setColumnWidth(c, ancho);
}

void GrillaTodas::resizeEvent(QResizeEvent *event)
{
    QTableView::resizeEvent(event);
    ponerAnchos();
}

void GrillaTodas::paintEvent(QPaintEvent *event)
{
    QTableView::paintEvent(event);
    if (m_modelo->columnCount() > 0 || m_aviso.isEmpty())
        return;
    QPainter pintor(viewport());
    pintor.setPen(ui::color::tenue());
    pintor.drawText(viewport()->rect().adjusted(20, 0, -20, 0), Qt::AlignCenter | Qt::TextWordWrap, m_aviso);
}

} // namespace agenda
