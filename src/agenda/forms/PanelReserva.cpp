#include "agenda/forms/PanelReserva.h"

#include "agenda/DiasNoLaborables.h"
#include "agenda/MismoDia.h"
#include "agenda/TurnosListados.h"
#include "agenda/forms/LineaAviso.h"
#include "agenda/forms/Motivos.h"
#include "base/Clock.h"
#include "base/Fechas.h"
#include "db/Entorno.h"
#include "ui/Botones.h"
#include "ui/Estilo.h"
#include "ui/ListaCombo.h"
#include "ui/Rotulos.h"
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

PanelReserva::PanelReserva(ui::Ventana &ventana, ui::Ventanas &ventanas, db::Entorno &entorno)
    : QWidget(&ventana)
    , m_ventana(ventana)
    , m_ventanas(ventanas)
    , m_entorno(entorno)
{
    construir();
    connect(agregarturno, &QPushButton::clicked, this, [this] { m_ventana.intentar([this] { elegirHora(); }); });
    connect(quitarturno, &QPushButton::clicked, this, &PanelReserva::quitarElegidos);
    const auto habilitar = [this] { quitarturno->setEnabled(!listaturnos->selectedItems().isEmpty()); };
    connect(listaturnos, &QListWidget::itemSelectionChanged, this, habilitar);
    habilitar();
    auto *supr = new QShortcut(QKeySequence(Qt::Key_Delete), listaturnos);
    supr->setContext(Qt::WidgetShortcut);
    connect(supr, &QShortcut::activated, quitarturno, [this] { quitarturno->click(); });
}

void PanelReserva::setAgenda(int doctor, QDate fecha)
{
    m_doctor = doctor;
    m_fecha = fecha;
    profesional->setText(nombreProfesional(m_entorno.conexion(), doctor));
}

void PanelReserva::cargar() { cargarMotivos(*motivo, m_entorno.conexion()); }

void PanelReserva::elegirHora()
{
    ui::Pedido pedido;
    pedido.datos = {{QStringLiteral("doctor"), m_doctor}, {QStringLiteral("fecha"), m_fecha}};
    if (const auto momentos = turnos(); !momentos.isEmpty())
        pedido.datos.insert(QStringLiteral("momento"), momentos.last());
    const QPointer<PanelReserva> este(this);
    pedido.alTerminar = [este](const QVariantMap &resultado) {
        if (este)
            este->agregar(resultado.value(QStringLiteral("turnos")).toStringList());
    };
    m_ventanas.abrir(QStringLiteral("agendanuevahora"), pedido, &m_ventana);
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

base::Control PanelReserva::agregarEscrito()
{
    const auto momento = leerTurno(nuevoturno->text());
    if (!momento)
        return momento.rechazo();
    if (auto rechazo = controlarDiaLaborable(m_entorno.conexion(), m_doctor, momento->date())) {
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
    reserva.doctor = m_doctor;
    reserva.turnos = turnos();
    reserva.motivo = ui::idElegido(*motivo);
    reserva.observacionestur = observacionestur->toPlainText();
    return reserva;
}

QSet<qint64> PanelReserva::mostrarAviso(int nrohc)
{
    db::Connection &conexion = m_entorno.conexion();
    const auto momentos = turnos();
    const auto suyos = turnosDeEsosDias(conexion, nrohc, momentos);
    aviso->mostrar(
        avisoDeReserva(suyos, momentos, m_entorno.clock().today(), avisoSinAtencion(conexion, m_doctor, momentos)));
    QSet<qint64> ids;
    for (const TurnoDelPaciente &turno : suyos)
        ids.insert(turno.id);
    return ids;
}

void PanelReserva::construir()
{
    profesional = ui::rotuloFuerte(this, QStringLiteral("profesional"));
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
    const EleccionMotivo eleccion = eleccionMotivo(m_ventana, m_ventanas);
    motivo = eleccion.motivo;
    listamotivo = eleccion.listamotivo;
    aviso = new LineaAviso(this);

    campos = new QFormLayout;
    campos->setSpacing(ui::espacio);
    campos->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
    campos->addRow(tr("Profesional:"), profesional);
    campos->addRow(tr("Turno&s:"), lista);
    campos->addRow(tr("Otra &fecha y hora:"), escrito);
    campos->addRow(tr("Moti&vo:"), eleccion.fila);
    campos->addRow(tr("O&bservaciones:"), observacionestur);
    // The rows' own layouts carry no buddy.
    for (const auto &[fila, campo] :
         {std::pair<QLayout *, QWidget *>(lista, listaturnos), {escrito, nuevoturno}, {eleccion.fila, motivo}})
        if (auto *etiqueta = qobject_cast<QLabel *>(campos->labelForField(fila)))
            etiqueta->setBuddy(campo);
    auto *todo = new QVBoxLayout(this);
    todo->setContentsMargins(0, 0, 0, 0);
    todo->setSpacing(ui::espacio);
    todo->addLayout(campos, 1);
    todo->addWidget(aviso);
}

} // namespace agenda
