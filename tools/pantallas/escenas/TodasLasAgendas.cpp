#include "Escenas.h"
#include "db/Connection.h"

#include <QLineEdit>

namespace pantallas {

namespace {

const QString todas = QStringLiteral("agendastodas");
const QString telefonos = QStringLiteral("telefonos");

void abrirTodas(Escena &e)
{
    e.ventanas().abrir(todas, {}, &e.marco());
    if (auto *sala = e.control<ui::Grilla>(todas, QStringLiteral("sala"))) {
        sala->setFocus();
        sala->elegirFila(0);
    }
}

void buscarTelefono(Escena &e)
{
    e.ventanas().abrir(telefonos, {}, &e.marco());
    e.escribir(telefonos, QStringLiteral("buscado"), QStringLiteral("la"));
    e.tecla(telefonos, QStringLiteral("buscado"), Qt::Key_Down);
}

} // namespace

std::vector<Pantalla> escenasDeTodasLasAgendas()
{
    return {
        {todas, abrirTodas},
        {telefonos, buscarTelefono},
        {QStringLiteral("telefonomodif"),
         [](Escena &e) {
             e.ventanas().abrir(telefonos, {}, &e.marco());
             e.elegir(telefonos, QStringLiteral("lista"), 0, QStringLiteral("Farmacia de la Plaza"));
             e.pulsar(telefonos, QStringLiteral("modificar"));
         }},
        {QStringLiteral("resulbusque"),
         [](Escena &e) {
             const auto turnos = e.consultorio().conexion().query(
                 QStringLiteral("SELECT TOP 1 NroHC FROM [Agenda Turnos] WHERE NroHC > 0 and Fecha > ?"
                                " GROUP BY NroHC ORDER BY count(*) DESC,NroHC"),
                 {e.consultorio().clock().now().addDays(1)});
             const QVariantMap datos{
                 {QStringLiteral("nrohc"), turnos->rowCount() > 0 ? int(turnos->integer(0, 0)) : 1}};
             e.ventanas().abrir(QStringLiteral("resulbusque"), {.datos = datos}, &e.marco());
         }},
    };
}

} // namespace pantallas
