#include "agenda/forms/agendaordenes.h"

#include "agenda/OrdenesTurno.h"
#include "agenda/Textos.h"
#include "agenda/TurnoGuardado.h"
#include "db/Entorno.h"
#include "ui/Botones.h"
#include "ui/Estilo.h"

#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace agenda {

agendaordenes::agendaordenes(db::Entorno &entorno, ui::Ventanas &ventanas)
    : Ventana(entorno, ventanas, QStringLiteral("agendaordenes"), tr("Registrar una Sesión"))
{
    turno = new QLabel(this);
    turno->setObjectName(QStringLiteral("turno"));
    turno->setTextFormat(Qt::PlainText);
    auto *rotulo = new QLabel(tr("&Orden a la que corresponde la sesión realizada:"), this);
    listaordenes = new QListWidget(this);
    listaordenes->setObjectName(QStringLiteral("listaordenes"));
    listaordenes->setUniformItemSizes(true);
    listaordenes->setAlternatingRowColors(true);
    rotulo->setBuddy(listaordenes);
    aceptar = ui::boton(this, QStringLiteral("aceptar"), tr("&Registrar sesión"), QStringLiteral("dialog-ok-apply"));
    cancelar = ui::boton(this, QStringLiteral("cancelar"), tr("&No registrar"), QStringLiteral("dialog-cancel"));
    auto *botones = new QHBoxLayout;
    botones->addStretch(1);
    botones->addWidget(aceptar);
    botones->addWidget(cancelar);

    auto *todo = new QVBoxLayout(this);
    todo->setContentsMargins(ui::margen, ui::margen, ui::margen, ui::margen);
    todo->setSpacing(ui::espacio);
    todo->addWidget(turno);
    todo->addWidget(rotulo);
    todo->addWidget(listaordenes, 1);
    todo->addLayout(botones);
    setMinimumSize(820, 240);

    alPulsar(aceptar, [this] { elegir(); });
    connect(cancelar, &QPushButton::clicked, this, &QWidget::close);
    connect(listaordenes, &QListWidget::itemDoubleClicked, aceptar, &QPushButton::click);
    setEnter(aceptar, {listaordenes});
}

bool agendaordenes::preparar(const ui::Pedido &pedido)
{
    const auto guardado = leerTurnoGuardado(conexion(), pedido.datos.value(QStringLiteral("id")).toLongLong());
    if (!guardado)
        return aceptado(registroEliminado());
    m_id = guardado->id;
    turno->setText(guardado->titulo());
    listaordenes->clear();
    for (const OrdenTurno &orden : ordenesConSesiones(conexion(), guardado->nrohc)) {
        auto *renglon = new QListWidgetItem(orden.renglon(), listaordenes);
        renglon->setData(Qt::UserRole, orden.id);
    }
    if (listaordenes->count() == 0)
        return false;
    listaordenes->setCurrentRow(0);
    listaordenes->setFocus();
    return true;
}

void agendaordenes::elegir()
{
    if (const QListWidgetItem *elegida = listaordenes->currentItem())
        terminar({{QStringLiteral("id"), m_id}, {QStringLiteral("idorden"), elegida->data(Qt::UserRole).toLongLong()}});
}

} // namespace agenda
