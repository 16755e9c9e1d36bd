#include "agenda/forms/agendamotivo.h"

#include "agenda/CambiosTurno.h"
#include "agenda/Textos.h"
#include "agenda/TurnoGuardado.h"
#include "agenda/forms/Motivos.h"
#include "db/Entorno.h"
#include "db/ListaDoctores.h"
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
    const EleccionMotivo eleccion = eleccionMotivo(*this, ventanas);
    motivo = eleccion.motivo;
    listamotivo = eleccion.listamotivo;
    pedido->setBuddy(motivo);
    const ui::FinDeFormulario fin = ui::finDeFormulario(this);
    guardar = fin.guardar;
    cancelar = fin.cancelar;

    auto *todo = new QVBoxLayout(this);
    todo->setContentsMargins(ui::margen, ui::margen, ui::margen, ui::margen);
    todo->setSpacing(ui::espacio);
    todo->addWidget(turno);
    todo->addWidget(pedido);
    todo->addLayout(eleccion.fila);
    todo->addStretch(1);
    todo->addLayout(fin.fila);
    setMinimumSize(400, 150);

    alPulsar(guardar, [this] { save(); });
    connect(cancelar, &QPushButton::clicked, this, &QWidget::close);
}

bool agendamotivo::preparar(const ui::Pedido &pedido)
{
    if (!aceptado(db::controlarDerecho(entorno(), derechoCambios)))
        return false;
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

void agendamotivo::refrescar() { cargarMotivos(*motivo, conexion()); }

void agendamotivo::save()
{
    if (aceptado(modificar(entorno(), m_id, {.motivo = ui::idElegido(*motivo)})))
        terminar({});
}

} // namespace agenda
