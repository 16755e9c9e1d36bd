#include "agenda/forms/agendamotivo.h"

#include "agenda/CambiosTurno.h"
#include "agenda/Textos.h"
#include "agenda/TurnoGuardado.h"
#include "db/Entorno.h"
#include "ui/BotonLista.h"
#include "ui/Botones.h"
#include "ui/Estilo.h"
#include "ui/ListaCombo.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

namespace agenda {

agendamotivo::agendamotivo(db::Entorno &entorno, ui::Ventanas &ventanas)
    : Ventana(entorno, ventanas, QStringLiteral("agendamotivo"), tr("Motivo de la Consulta"))
{
    turno = new QLabel(this);
    turno->setObjectName(QStringLiteral("turno"));
    turno->setTextFormat(Qt::PlainText);
    auto *pedido = new QLabel(QStringLiteral("Seleccione el Motivo de la Consulta"), this);
    motivo = new QComboBox(this);
    motivo->setObjectName(QStringLiteral("motivo"));
    pedido->setBuddy(motivo);
    listamotivo
        = ui::botonLista(*this, ventanas, *motivo, QStringLiteral("Lista Motivos Consulta"), tr("Motivos de Consulta"));
    auto *eleccion = new QHBoxLayout;
    eleccion->addWidget(motivo, 1);
    eleccion->addWidget(listamotivo);
    const ui::FinDeFormulario fin = ui::finDeFormulario(this);
    guardar = fin.guardar;
    cancelar = fin.cancelar;

    auto *todo = new QVBoxLayout(this);
    todo->setContentsMargins(ui::margen, ui::margen, ui::margen, ui::margen);
    todo->setSpacing(ui::espacio);
    todo->addWidget(turno);
    todo->addWidget(pedido);
    todo->addLayout(eleccion);
    todo->addStretch(1);
    todo->addLayout(fin.fila);
    setMinimumSize(400, 150);

    alPulsar(guardar, [this] { save(); });
    connect(cancelar, &QPushButton::clicked, this, &QWidget::close);
}

bool agendamotivo::preparar(const ui::Pedido &pedido)
{
    const auto guardado = leerTurnoGuardado(conexion(), pedido.datos.value(QStringLiteral("id")).toLongLong());
    if (!guardado)
        return aceptado(registroEliminado());
    m_id = guardado->id;
    turno->setText(guardado->titulo());
    refrescar();
    ui::elegirId(*motivo, guardado->motivo);
    motivo->setFocus();
    return true;
}

void agendamotivo::refrescar()
{
    ui::cargarLista(
        *motivo,
        conexion(),
        QStringLiteral("Lista Motivos Consulta"),
        QStringLiteral("Motivo"),
        {{tr("<Sin motivo>"), 0}});
}

void agendamotivo::save()
{
    if (aceptado(cambiarMotivo(entorno(), m_id, ui::idElegido(*motivo))))
        terminar({});
}

} // namespace agenda
