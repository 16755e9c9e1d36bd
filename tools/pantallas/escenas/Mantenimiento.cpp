#include "Escenas.h"

#include "Camara.h"
#include "maintenance/forms/historial.h"

#include <QComboBox>

namespace pantallas {

namespace {

const QString mantenimiento = QStringLiteral("mantenimiento");
const QString coberturaDeMuestra
    = QStringLiteral("PAMI - Instituto Nacional de Servicios Sociales para Jubilados y Pensionados");

std::function<void(Escena &)> mantener(const QString &lista, const QString &entrada)
{
    return [lista, entrada](Escena &e) {
        e.pulsar({}, QStringLiteral("menmantenimiento"));
        e.escribir(mantenimiento, QStringLiteral("buscarlista"), lista);
        asentar();
        e.escribir(mantenimiento, QStringLiteral("buscarlista"), {});
        e.elegir(mantenimiento, QStringLiteral("entradas"), 0, entrada);
    };
}

void mantenerDesdeElAlta(Escena &e)
{
    darDeAlta(e);
    if (auto *cobertura = e.control<QComboBox>(QStringLiteral("nuevopaci"), QStringLiteral("coberturar")))
        cobertura->setEditText(QStringLiteral("Mutual del Personal Jerárquico"));
    e.pulsar(QStringLiteral("nuevopaci"), QStringLiteral("listacoberturar"));
}

void verHistorial(Escena &e)
{
    e.pulsar({}, QStringLiteral("menhistorial"));
    auto *ventana = dynamic_cast<maintenance::historial *>(e.ventanas().buscar(QStringLiteral("historial")));
    while (ventana && ventana->ocupada())
        asentar();
    e.elegir(QStringLiteral("historial"), QStringLiteral("lista"), 4, QStringLiteral("Agenda de Turnos"));
}

} // namespace

std::vector<Pantalla> escenasDeMantenimiento()
{
    return {
        {mantenimiento, mantener(QStringLiteral("cobertura"), coberturaDeMuestra)},
        {QStringLiteral("mantenimiento-vacunas"), mantener(QStringLiteral("vacuna"), QStringLiteral("Varicela"))},
        {QStringLiteral("listareemplazo"),
         [](Escena &e) {
             mantener(QStringLiteral("cobertura"), coberturaDeMuestra)(e);
             e.pulsar(mantenimiento, QStringLiteral("reemplazar"));
         }},
        {QStringLiteral("listamantenimiento"), mantenerDesdeElAlta},
        {QStringLiteral("historial"), verHistorial},
    };
}

} // namespace pantallas
