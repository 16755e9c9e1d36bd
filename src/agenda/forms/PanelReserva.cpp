#include "agenda/forms/PanelReserva.h"

#include "agenda/DiasNoLaborables.h"
#include "base/Fechas.h"
#include "db/Connection.h"
#include "ui/BotonLista.h"
#include "ui/Botones.h"
#include "ui/Estilo.h"
#include "ui/ListaCombo.h"
#include "ui/Ventana.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QLocale>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QStyledItemDelegate>
#include <QToolButton>

namespace agenda {

namespace {

/// Writes the day of the week beside each line: on the telephone nobody says only the number.
class ConDiaDeSemana : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter *pintor, const QStyleOptionViewItem &opcion, const QModelIndex &indice) const override
    {
        QStyledItemDelegate::paint(pintor, opcion, indice);
        const bool elegido = opcion.state & QStyle::State_Selected;
        pintor->save();
        pintor->setPen(elegido ? opcion.palette.color(QPalette::HighlightedText) : ui::color::tenue());
        const int ancho = opcion.fontMetrics.horizontalAdvance(QStringLiteral("00/00/0000 00:00    "));
        pintor->drawText(
            opcion.rect.adjusted(ancho, 0, 0, 0),
            Qt::AlignLeft | Qt::AlignVCenter,
            QLocale().dayName(indice.data(Qt::UserRole).toDateTime().date().dayOfWeek()));
        pintor->restore();
    }
};

} // namespace

QVariantMap resultadoReserva(int nrohc, const QDateTime &fecha, qint64 id)
{
    return {{QStringLiteral("nrohc"), nrohc}, {QStringLiteral("fecha"), fecha}, {QStringLiteral("id"), id}};
}

QStringList ventanasDelDia() { return {QStringLiteral("agendas"), QStringLiteral("agendastodas")}; }

PanelReserva::PanelReserva(ui::Ventana &ventana, ui::Ventanas &ventanas)
    : QWidget(&ventana)
{
    motivo = new QComboBox(this);
    motivo->setObjectName(QStringLiteral("motivo"));
    listamotivo = ui::botonLista(
        ventana, ventanas, *motivo, QStringLiteral("Lista Motivos Consulta"), tr("Motivos de Consulta"));
    construir();
    connect(quitarturno, &QPushButton::clicked, this, &PanelReserva::quitarElegidos);
    const auto habilitar = [this] { quitarturno->setEnabled(!listaturnos->selectedItems().isEmpty()); };
    connect(listaturnos, &QListWidget::itemSelectionChanged, this, habilitar);
    habilitar();
    auto *supr = new QShortcut(QKeySequence(Qt::Key_Delete), listaturnos);
    supr->setContext(Qt::WidgetShortcut);
    connect(supr, &QShortcut::activated, quitarturno, [this] { quitarturno->click(); });
}

void PanelReserva::cargar(db::Connection &conexion)
{
    ui::cargarLista(
        *motivo,
        conexion,
        QStringLiteral("Lista Motivos Consulta"),
        QStringLiteral("Motivo"),
        {{tr("<Sin motivo>"), 0}});
}

void PanelReserva::setTurnos(const QStringList &lineas)
{
    listaturnos->clear();
    agregar(lineas);
    emit turnosCambiados();
}

void PanelReserva::agregar(const QStringList &lineas)
{
    bool hayNuevos = false;
    for (const QString &linea : lineas) {
        const auto momento = leerTurno(linea);
        if (!momento)
            continue;
        const QString texto = base::fechaHoraTexto(*momento);
        const QList<QListWidgetItem *> iguales = listaturnos->findItems(texto, Qt::MatchExactly);
        auto *renglon = iguales.value(0);
        if (!renglon) {
            renglon = new QListWidgetItem(texto, listaturnos);
            renglon->setData(Qt::UserRole, *momento);
            hayNuevos = true;
        }
        listaturnos->scrollToItem(renglon);
    }
    if (hayNuevos)
        emit turnosCambiados();
}

base::Control PanelReserva::agregarEscrito(db::Connection &conexion, int doctor)
{
    const auto momento = leerTurno(nuevoturno->text());
    if (!momento)
        return momento.rechazo();
    if (auto rechazo = controlarDiaLaborable(conexion, doctor, momento->date())) {
        rechazo->campo = QStringLiteral("nuevoturno");
        return rechazo;
    }
    agregar({base::fechaHoraTexto(*momento)});
    nuevoturno->clear();
    nuevoturno->setFocus();
    return std::nullopt;
}

void PanelReserva::quitarElegidos()
{
    const QList<QListWidgetItem *> elegidos = listaturnos->selectedItems();
    if (elegidos.isEmpty())
        return;
    qDeleteAll(elegidos);
    emit turnosCambiados();
}

void PanelReserva::elegir(const QVector<QDateTime> &momentos)
{
    listaturnos->clearSelection();
    for (int i = 0; i < listaturnos->count(); ++i)
        listaturnos->item(i)->setSelected(momentos.contains(listaturnos->item(i)->data(Qt::UserRole).toDateTime()));
}

QVector<QDateTime> PanelReserva::turnos() const
{
    QVector<QDateTime> momentos;
    for (int i = 0; i < listaturnos->count(); ++i)
        momentos.append(listaturnos->item(i)->data(Qt::UserRole).toDateTime());
    return momentos;
}

QStringList PanelReserva::lineas() const
{
    QStringList textos;
    for (const QDateTime &momento : turnos())
        textos << base::fechaHoraTexto(momento);
    return textos;
}

Reserva PanelReserva::leer() const
{
    Reserva reserva;
    reserva.turnos = turnos();
    reserva.motivo = ui::idElegido(*motivo);
    reserva.observacionestur = observacionestur->toPlainText();
    return reserva;
}

void PanelReserva::construir()
{
    listaturnos = new QListWidget(this);
    listaturnos->setObjectName(QStringLiteral("listaturnos"));
    listaturnos->setSelectionMode(QAbstractItemView::ExtendedSelection);
    listaturnos->setItemDelegate(new ConDiaDeSemana(listaturnos));
    listaturnos->setMinimumHeight(6 * fontMetrics().lineSpacing());
    agregarturno
        = ui::boton(this, QStringLiteral("agregarturno"), tr("Agrega&r turno..."), QStringLiteral("view-calendar-day"));
    quitarturno = ui::boton(this, QStringLiteral("quitarturno"), tr("&Quitar"), QStringLiteral("list-remove"));
    nuevoturno = new QLineEdit(this);
    nuevoturno->setObjectName(QStringLiteral("nuevoturno"));
    nuevoturno->setPlaceholderText(tr("dd/mm/aaaa hh:mm"));
    nuevoturno->setMinimumWidth(fontMetrics().horizontalAdvance(nuevoturno->placeholderText()) + 30);
    agregarescrito = ui::boton(this, QStringLiteral("agregarescrito"), tr("Agregar"), QStringLiteral("list-add"));
    observacionestur = new QPlainTextEdit(this);
    observacionestur->setObjectName(QStringLiteral("observacionestur"));
    observacionestur->setTabChangesFocus(true);
    observacionestur->setFixedHeight(5 * fontMetrics().lineSpacing());

    auto *botones = new QVBoxLayout;
    botones->addWidget(agregarturno);
    botones->addWidget(quitarturno);
    botones->addStretch(1);
    auto *lista = new QHBoxLayout;
    lista->addWidget(listaturnos, 1);
    lista->addLayout(botones);
    auto *escrito = new QHBoxLayout;
    escrito->addWidget(nuevoturno, 1);
    escrito->addWidget(agregarescrito);
    auto *eleccion = new QHBoxLayout;
    eleccion->addWidget(motivo, 1);
    eleccion->addWidget(listamotivo);

    campos = new QFormLayout(this);
    campos->setContentsMargins(0, 0, 0, 0);
    campos->setSpacing(ui::espacio);
    campos->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    campos->addRow(tr("Turno&s:"), lista);
    campos->addRow(tr("Otra &fecha y hora:"), escrito);
    campos->addRow(tr("Moti&vo:"), eleccion);
    campos->addRow(tr("O&bservaciones:"), observacionestur);
    // The rows' own layouts carry no buddy.
    for (const auto &[fila, campo] :
         {std::pair<QLayout *, QWidget *>(lista, listaturnos), {escrito, nuevoturno}, {eleccion, motivo}})
        if (auto *etiqueta = qobject_cast<QLabel *>(campos->labelForField(fila)))
            etiqueta->setBuddy(campo);
}

} // namespace agenda
