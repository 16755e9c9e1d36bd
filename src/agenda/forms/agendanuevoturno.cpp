#include "agenda/forms/agendanuevoturno.h"

#include "agenda/DiasNoLaborables.h"
#include "agenda/Reserva.h"
#include "base/Fechas.h"
#include "db/Entorno.h"
#include "ui/BotonLista.h"
#include "ui/Botones.h"
#include "ui/Estilo.h"
#include "ui/ListaCombo.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QShortcut>
#include <QToolButton>

namespace agenda {

agendanuevoturno::agendanuevoturno(db::Entorno &entorno, ui::Ventanas &ventanas)
    : Ventana(entorno, ventanas, QStringLiteral("agendanuevoturno"), tr("Nuevo Turno"))
{
    construir();
    alPulsar(elegirpaciente, [this] { pedirPaciente(QStringLiteral("elecpaci")); });
    alPulsar(nuevopaciente, [this] { pedirPaciente(QStringLiteral("nuevopaci")); });
    alPulsar(agregarturno, [this] { agregarTurno(); });
    alPulsar(quitarturno, [this] { quitarTurno(); });
    alPulsar(guardar, [this] { save(); });
    connect(cancelar, &QPushButton::clicked, this, &QWidget::close);
    setEnter(agregarturno, {nuevoturno});
}

bool agendanuevoturno::preparar(const ui::Pedido &pedido)
{
    m_doctor = pedido.datos.value(QStringLiteral("doctor")).toInt();
    listaturnos->clear();
    listaturnos->addItems(pedido.datos.value(QStringLiteral("turnos")).toStringList());
    refrescar();
    elegirpaciente->setVisible(ventanas().existe(QStringLiteral("elecpaci")));
    nuevopaciente->setVisible(ventanas().existe(QStringLiteral("nuevopaci")));
    elegirpaciente->setFocus();
    return true;
}

void agendanuevoturno::refrescar()
{
    ui::cargarLista(
        *motivo,
        conexion(),
        QStringLiteral("Lista Motivos Consulta"),
        QStringLiteral("Motivo"),
        {{tr("<Sin motivo>"), 0}});
}

bool agendanuevoturno::hayCambios() const
{
    return m_nrohc != 0 || !observacionestur->toPlainText().trimmed().isEmpty();
}

void agendanuevoturno::pedirPaciente(const QString &ventana)
{
    ui::Pedido pedido;
    pedido.datos = {{QStringLiteral("modo"), 2}};
    const QPointer<agendanuevoturno> esta(this);
    pedido.alTerminar = [esta](const QVariantMap &resultado) {
        if (esta) {
            esta->mostrarPaciente(
                resultado.value(QStringLiteral("nrohc")).toInt(), resultado.value(QStringLiteral("nombre")).toString());
        }
    };
    ventanas().abrir(ventana, pedido, this);
}

void agendanuevoturno::mostrarPaciente(int nrohc, const QString &nombre)
{
    if (nrohc == 0)
        return;
    m_nrohc = nrohc;
    paciente->setText(nombre.isEmpty() ? nombrePaciente(conexion(), nrohc).value_or(QString()) : nombre);
    motivo->setFocus();
}

QStringList agendanuevoturno::turnos() const
{
    QStringList lineas;
    for (int i = 0; i < listaturnos->count(); ++i)
        lineas << listaturnos->item(i)->text();
    return lineas;
}

void agendanuevoturno::agregarTurno()
{
    const auto momento = leerTurno(nuevoturno->text());
    if (!momento) {
        aceptado(momento.rechazo());
        return;
    }
    if (!aceptado(controlarDiaLaborable(conexion(), m_doctor, momento->date())))
        return;
    listaturnos->addItem(base::fechaHoraTexto(*momento));
    nuevoturno->clear();
    nuevoturno->setFocus();
}

void agendanuevoturno::quitarTurno() { qDeleteAll(listaturnos->selectedItems()); }

void agendanuevoturno::save()
{
    Reserva reserva;
    reserva.nrohc = m_nrohc;
    reserva.doctor = m_doctor;
    reserva.motivo = ui::idElegido(*motivo);
    reserva.observacionestur = observacionestur->toPlainText();
    for (const QString &linea : turnos()) {
        const auto momento = leerTurno(linea);
        if (!momento) {
            aceptado(momento.rechazo());
            return;
        }
        reserva.turnos.append(*momento);
    }
    const auto hecha = reservar(entorno(), reserva);
    if (!hecha) {
        aceptado(hecha.rechazo());
        return;
    }
    const bool ninguno = hecha->ids.isEmpty();
    aceptado(hecha->informe());
    if (!ninguno)
        terminar({{QStringLiteral("nrohc"), m_nrohc}});
}

void agendanuevoturno::construir()
{
    paciente = new QLabel(tr("Sin elegir"), this);
    paciente->setObjectName(QStringLiteral("paciente"));
    paciente->setTextFormat(Qt::PlainText);
    QFont negrita = paciente->font();
    negrita.setBold(true);
    paciente->setFont(negrita);
    elegirpaciente
        = ui::boton(this, QStringLiteral("elegirpaciente"), tr("Elegir &paciente..."), QStringLiteral("edit-find"));
    nuevopaciente
        = ui::boton(this, QStringLiteral("nuevopaciente"), tr("Paciente n&uevo..."), QStringLiteral("contact-new"));
    listaturnos = new QListWidget(this);
    listaturnos->setObjectName(QStringLiteral("listaturnos"));
    listaturnos->setSelectionMode(QAbstractItemView::ExtendedSelection);
    listaturnos->setFixedHeight(7 * fontMetrics().lineSpacing());
    nuevoturno = new QLineEdit(this);
    nuevoturno->setObjectName(QStringLiteral("nuevoturno"));
    nuevoturno->setPlaceholderText(tr("dd/mm/aaaa hh:mm"));
    nuevoturno->setMinimumWidth(fontMetrics().horizontalAdvance(nuevoturno->placeholderText()) + 30);
    agregarturno = ui::boton(this, QStringLiteral("agregarturno"), tr("&Agregar"), QStringLiteral("list-add"));
    quitarturno = ui::boton(this, QStringLiteral("quitarturno"), tr("&Quitar"), QStringLiteral("list-remove"));
    motivo = new QComboBox(this);
    motivo->setObjectName(QStringLiteral("motivo"));
    listamotivo = ui::botonLista(
        *this, ventanas(), *motivo, QStringLiteral("Lista Motivos Consulta"), tr("Motivos de Consulta"));
    observacionestur = new QPlainTextEdit(this);
    observacionestur->setObjectName(QStringLiteral("observacionestur"));
    observacionestur->setTabChangesFocus(true);
    observacionestur->setMinimumHeight(5 * fontMetrics().lineSpacing());
    const ui::FinDeFormulario fin = ui::finDeFormulario(this);
    guardar = fin.guardar;
    cancelar = fin.cancelar;

    auto *botonesPaciente = new QHBoxLayout;
    botonesPaciente->addWidget(elegirpaciente);
    botonesPaciente->addWidget(nuevopaciente);
    botonesPaciente->addStretch(1);
    auto *agregado = new QHBoxLayout;
    agregado->addWidget(nuevoturno, 1);
    agregado->addWidget(agregarturno);
    agregado->addWidget(quitarturno);

    auto *eleccion = new QHBoxLayout;
    eleccion->addWidget(motivo, 1);
    eleccion->addWidget(listamotivo);

    auto *campos = new QFormLayout;
    campos->setSpacing(ui::espacio);
    campos->addRow(tr("Paciente:"), paciente);
    campos->addRow(QString(), botonesPaciente);
    campos->addRow(tr("&Turnos:"), listaturnos);
    campos->addRow(tr("Otra &fecha y hora:"), agregado);
    campos->addRow(tr("&Motivo:"), eleccion);
    campos->addRow(tr("&Observaciones:"), observacionestur);
    // The rows' own layouts carry no buddy.
    for (const auto &[fila, campo] : {std::pair<QLayout *, QWidget *>(agregado, nuevoturno), {eleccion, motivo}})
        if (auto *etiqueta = qobject_cast<QLabel *>(campos->labelForField(fila)))
            etiqueta->setBuddy(campo);

    auto *todo = new QVBoxLayout(this);
    todo->setContentsMargins(ui::margen, ui::margen, ui::margen, ui::margen);
    todo->addLayout(campos, 1);
    todo->addLayout(fin.fila);

    auto *supr = new QShortcut(QKeySequence(Qt::Key_Delete), listaturnos);
    supr->setContext(Qt::WidgetShortcut);
    connect(supr, &QShortcut::activated, quitarturno, [this] { quitarturno->click(); });
    setMinimumSize(520, 400);
}

} // namespace agenda
