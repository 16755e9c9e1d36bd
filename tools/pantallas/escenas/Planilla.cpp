#include "Escenas.h"

namespace pantallas {

namespace {

const QString agendas = QStringLiteral("agendas");
const QString ocupada = QStringLiteral("11:20");

std::function<void(Escena &)> desdeLaAgenda(const QString &boton)
{
    return [boton](Escena &e) {
        e.abrirAgenda(ocupada);
        e.pulsar(agendas, boton);
    };
}

} // namespace

/// What leaves the appointment book.
std::vector<Pantalla> escenasDePlanilla()
{
    return {
        {QStringLiteral("planilla"), desdeLaAgenda(QStringLiteral("imprimir"))},
        {QStringLiteral("agendaexportar"), desdeLaAgenda(QStringLiteral("exportarics"))},
        {QStringLiteral("agendamanana"), desdeLaAgenda(QStringLiteral("manana"))},
    };
}

} // namespace pantallas
