#include "ui/ModeloGrilla.h"

#include "base/Fechas.h"
#include "base/Numeros.h"
#include "ui/OrdenTexto.h"

#include <QLocale>

#include <algorithm>

namespace ui {

namespace {

QString momentoTexto(const QDateTime &momento)
{
    return momento.time() == QTime(0, 0) ? base::fechaTexto(momento.date()) : base::fechaHoraTexto(momento);
}

/// A decimal comma, no thousands: a weight or a count is read as it was typed.
QString numeroTexto(QString numero) { return numero.replace(u'.', u','); }

} // namespace

std::vector<ColumnaGrilla> leerEncabezado(const QString &encabezado)
{
    std::vector<ColumnaGrilla> columnas;
    const QList<QStringView> partes = QStringView(encabezado).split(u'|');
    for (qsizetype i = 1; i < partes.size(); ++i) {
        QStringView parte = partes[i];
        ColumnaGrilla columna;
        if (!parte.isEmpty() && QStringView(u"<^>").contains(parte.front())) {
            columna.alineacion = parte.front() == u'^' ? Qt::AlignHCenter
                : parte.front() == u'>'                ? Qt::AlignRight
                                                       : Qt::AlignLeft;
            parte = parte.sliced(1);
        }
        columna.titulo = parte.trimmed().toString();
        columna.caracteres = int(parte.size());
        columnas.push_back(std::move(columna));
    }
    return columnas;
}

ModeloGrilla::ModeloGrilla(std::vector<ColumnaGrilla> columnas, QObject *parent)
    : QAbstractTableModel(parent)
    , m_columnas(std::move(columnas))
    , m_ordenColumnas(m_columnas.size(), -1)
    , m_formatos(m_columnas.size(), Formato::Propio)
{
}

void ModeloGrilla::setRows(db::Rows rows, int primera)
{
    beginResetModel();
    m_textos.clear();
    m_claves.clear();
    m_paginas.clear();
    if (rows)
        m_paginas.push_back({rows, 0, rows->rowCount()});
    m_primera = primera;
    m_permutacion = ordenadas(m_ordenadaPor, m_sentido);
    endResetModel();
}

void ModeloGrilla::agregarRows(db::Rows rows, int cantidad)
{
    Q_ASSERT(m_textos.empty() && cantidad <= rows->rowCount());
    if (cantidad <= 0)
        return;
    const int antes = filas();
    beginInsertRows({}, antes, antes + cantidad - 1);
    m_paginas.push_back({std::move(rows), antes, cantidad});
    for (int row = antes; !m_permutacion.empty() && row < antes + cantidad; ++row)
        m_permutacion.push_back(row);
    endInsertRows();
}

void ModeloGrilla::setMas(std::function<bool()> hay, std::function<void()> traer)
{
    m_hayMas = std::move(hay);
    m_traerMas = std::move(traer);
}

bool ModeloGrilla::canFetchMore(const QModelIndex &parent) const { return !parent.isValid() && m_hayMas && m_hayMas(); }

void ModeloGrilla::fetchMore(const QModelIndex &parent)
{
    if (!parent.isValid() && m_traerMas)
        m_traerMas();
}

const ModeloGrilla::Pagina &ModeloGrilla::paginaDe(int origin) const
{
    const auto despues = std::upper_bound(
        m_paginas.begin(), m_paginas.end(), origin, [](int row, const Pagina &pagina) { return row < pagina.inicio; });
    return *std::prev(despues);
}

void ModeloGrilla::setTextos(std::vector<QStringList> textos, std::vector<qint64> claves)
{
    Q_ASSERT(textos.size() == claves.size());
    beginResetModel();
    m_paginas.clear();
    m_textos = std::move(textos);
    m_claves = std::move(claves);
    m_permutacion = ordenadas(m_ordenadaPor, m_sentido);
    endResetModel();
}

void ModeloGrilla::setFormato(int columna, Formato formato) { m_formatos.at(size_t(columna)) = formato; }

void ModeloGrilla::setOrden(int columna, int columnaResultado)
{
    m_ordenColumnas.at(size_t(columna)) = columnaResultado;
}

ModeloGrilla::Recorrido::Recorrido(const ModeloGrilla &modelo)
    : m_modelo(modelo)
{
    if (m_modelo.m_alRecorrer)
        m_modelo.m_alRecorrer(true);
}

ModeloGrilla::Recorrido::~Recorrido()
{
    if (m_modelo.m_alRecorrer)
        m_modelo.m_alRecorrer(false);
}

int ModeloGrilla::filas() const
{
    return m_paginas.empty() ? int(m_textos.size()) : m_paginas.back().inicio + m_paginas.back().cantidad;
}

qint64 ModeloGrilla::claveOrigen(int origin) const
{
    if (m_paginas.empty())
        return m_claves[size_t(origin)];
    const auto &[rows, inicio, cantidad] = paginaDe(origin);
    return m_columnaClave >= 0 && m_columnaClave < rows->columnCount() ? rows->integer(origin - inicio, m_columnaClave)
                                                                       : 0;
}

qint64 ModeloGrilla::clave(int row) const { return row >= 0 && row < filas() ? claveOrigen(origen(row)) : 0; }

int ModeloGrilla::filaDe(qint64 clave) const
{
    if (!m_paginas.empty() && m_columnaClave < 0)
        return -1;
    for (int row = 0, n = filas(); row < n; ++row)
        if (claveOrigen(origen(row)) == clave)
            return row;
    return -1;
}

QString ModeloGrilla::textoCelda(int row, int column) const { return textoOrigen(origen(row), column); }

QString ModeloGrilla::textoOrigen(int origin, int column) const
{
    if (m_paginas.empty())
        return m_textos[size_t(origin)].value(column);
    const Pagina &pagina = paginaDe(origin);
    const db::ResultSet &rows = *pagina.rows;
    const int row = origin - pagina.inicio;
    if (m_texto)
        return m_texto(rows, row, column);
    const int celda = m_primera + column;
    if (celda >= rows.columnCount() || rows.isNull(row, celda))
        return {};
    switch (m_formatos[size_t(column)]) {
    case Formato::Fecha: return base::fechaTexto(rows.dateTime(row, celda).date());
    case Formato::FechaHora: return base::fechaHoraTexto(rows.dateTime(row, celda));
    case Formato::Hora: return rows.dateTime(row, celda).toString(QStringLiteral("HH:mm"));
    case Formato::Dinero: return base::dinero(rows.real(row, celda));
    case Formato::SiNo: return rows.flag(row, celda) ? tr("Sí") : tr("No");
    case Formato::Propio: break;
    }
    switch (rows.fields()[size_t(celda)].type) {
    case db::Type::DateTime: {
        const QDateTime momento = rows.dateTime(row, celda);
        return momento.isValid() ? momentoTexto(momento) : rows.text(row, celda);
    }
    case db::Type::Flag: return rows.flag(row, celda) ? tr("Sí") : tr("No");
    case db::Type::Single:
    case db::Type::Double: return numeroTexto(rows.text(row, celda));
    default: return rows.text(row, celda);
    }
}

QString ModeloGrilla::textoSeguro(int origin, int column) const
{
    try {
        return textoOrigen(origin, column);
    } catch (const std::exception &) {
        return {};
    }
}

int ModeloGrilla::rowCount(const QModelIndex &parent) const { return parent.isValid() ? 0 : filas(); }

int ModeloGrilla::columnCount(const QModelIndex &parent) const { return parent.isValid() ? 0 : int(m_columnas.size()); }

QVariant ModeloGrilla::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return {};
    const int origin = origen(index.row());
    switch (role) {
    case Qt::DisplayRole: {
        // One line per row: a memo shows its first words.
        QString texto = textoSeguro(origin, index.column());
        if (texto.contains(u'\n') || texto.contains(u'\r'))
            texto = texto.left(500).simplified();
        return texto;
    }
    case TextoEntero: return textoSeguro(origin, index.column());
    case Clave: return claveOrigen(origin);
    case Qt::TextAlignmentRole:
        return QVariant::fromValue(m_columnas[size_t(index.column())].alineacion | Qt::AlignVCenter);
    case Qt::ToolTipRole:
        if (m_ayuda)
            return m_ayuda(origin);
        break;
    case Qt::BackgroundRole:
        if (const QColor color = m_fondo ? m_fondo(origin) : QColor(); color.isValid())
            return color;
        break;
    case Qt::ForegroundRole:
        // The row's own colour may be light while the person's palette is dark.
        if (const QColor color = m_fondo ? m_fondo(origin) : QColor(); color.isValid())
            return QColor(qGray(color.rgb()) > 127 ? Qt::black : Qt::white);
        break;
    default: break;
    }
    return {};
}

QVariant ModeloGrilla::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= columnCount())
        return {};
    const ColumnaGrilla &columna = m_columnas[size_t(section)];
    if (role == Qt::DisplayRole)
        return columna.titulo;
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(columna.alineacion | Qt::AlignVCenter);
    return {};
}

int ModeloGrilla::columnaOrden(int column) const
{
    const int otra = m_ordenColumnas[size_t(column)];
    return otra >= 0 ? otra : m_primera + column;
}

std::vector<int> ModeloGrilla::ordenadas(int column, Qt::SortOrder order) const
{
    if (column < 0 || column >= columnCount() || filas() == 0)
        return {};
    const bool descendente = order == Qt::DescendingOrder;
    // Of several results no single one knows the order.
    const db::Rows unico = m_paginas.size() == 1 ? rows() : nullptr;
    if (unico && column == m_yaOrdenada) {
        std::vector<int> alReves;
        for (int origin = descendente ? filas() - 1 : -1; origin >= 0; --origin)
            alReves.push_back(origin);
        return alReves;
    }
    const bool propia = unico && m_ordenColumnas[size_t(column)] < 0;
    const bool calculada = propia && (m_texto || columnaOrden(column) >= unico->columnCount());
    if (unico && !calculada && columnaOrden(column) < unico->columnCount())
        return ordenarColumna(*unico, columnaOrden(column), descendente);
    // No raw value stands behind these cells: what is read is what sorts.
    std::vector<QString> textos;
    textos.reserve(size_t(filas()));
    for (int origin = 0, n = filas(); origin < n; ++origin)
        textos.push_back(textoSeguro(origin, column).trimmed());
    return ordenarTextos(textos, descendente);
}

void ModeloGrilla::sort(int column, Qt::SortOrder order)
{
    if (m_alOrdenar)
        m_alOrdenar(column);
    emit layoutAboutToBeChanged({}, VerticalSortHint);
    const QModelIndexList antes = persistentIndexList();
    std::vector<int> origenes;
    origenes.reserve(size_t(antes.size()));
    for (const QModelIndex &index : antes)
        origenes.push_back(origen(index.row()));

    m_ordenadaPor = column;
    m_sentido = order;
    m_permutacion = ordenadas(column, order);

    if (!antes.isEmpty()) {
        std::vector<int> vista(static_cast<size_t>(filas()));
        for (int row = 0, n = filas(); row < n; ++row)
            vista[size_t(origen(row))] = row;
        QModelIndexList despues;
        despues.reserve(antes.size());
        for (qsizetype i = 0; i < antes.size(); ++i)
            despues << createIndex(vista[size_t(origenes[size_t(i)])], antes[i].column());
        changePersistentIndexList(antes, despues);
    }
    emit layoutChanged({}, VerticalSortHint);
}

} // namespace ui
