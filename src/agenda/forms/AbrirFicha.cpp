#include "agenda/forms/AbrirFicha.h"

#include "ui/Ventanas.h"

namespace agenda {

base::Control abrirFicha(ui::Ventanas &ventanas, int nrohc)
{
    const QString ficha = QStringLiteral("pacientes");
    if (ventanas.buscar(ficha) || ventanas.buscar(QStringLiteral("pacientesredu")))
        return base::Rechazo{
            base::titulo::atencion,
            QStringLiteral("Un Paciente está siendo atendido, para seguir debe cerrar la ficha del Paciente")};
    ventanas.abrir(ficha, {.datos = {{QStringLiteral("nrohc"), nrohc}}});
    return std::nullopt;
}

} // namespace agenda
