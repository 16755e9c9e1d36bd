#include "agenda/forms/Motivos.h"

#include "ui/BotonLista.h"
#include "ui/ListaCombo.h"
#include "ui/Ventana.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QToolButton>

namespace agenda {

namespace {

const QString tabla = QStringLiteral("Lista Motivos Consulta");

} // namespace

EleccionMotivo eleccionMotivo(ui::Ventana &ventana, ui::Ventanas &ventanas)
{
    auto *motivo = new QComboBox(&ventana);
    motivo->setObjectName(QStringLiteral("motivo"));
    const EleccionMotivo eleccion{
        motivo,
        ui::botonLista(ventana, ventanas, *motivo, tabla, QStringLiteral("Motivos de Consulta")),
        new QHBoxLayout};
    eleccion.fila->addWidget(eleccion.motivo, 1);
    eleccion.fila->addWidget(eleccion.listamotivo);
    return eleccion;
}

void cargarMotivos(QComboBox &motivo, db::Connection &conexion)
{
    ui::cargarLista(motivo, conexion, tabla, QStringLiteral("Motivo"), {{QStringLiteral("<Sin motivo>"), 0}});
}

} // namespace agenda
