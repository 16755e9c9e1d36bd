#include "Escenas.h"

#include "Camara.h"
#include "db/Connection.h"

#include <QTabWidget>

namespace pantallas {

namespace {

const QString ficha = QStringLiteral("pacientes");

/// The file of a patient of whom there is something to tell.
void verFicha(Escena &e)
{
    db::Connection &conexion = e.consultorio().conexion();
    const db::Rows fila = conexion.query(QStringLiteral("SELECT MIN(NroHC) FROM [Pacientes] WHERE sexo = 0 and "
                                                        "cobertura = 1 and FeNac < #01/01/1990# and TelCelular <> ''"));
    const int nrohc = int(fila->integer(0, 0));
    conexion.execute(
        QStringLiteral("UPDATE [Pacientes] SET alergias = ?, Notas = ? WHERE NroHC = ?"),
        {QStringLiteral("Alergia a la penicilina. Asma: evitar betabloqueantes."),
         QStringLiteral("Avisar los turnos a la hija (Lucía, 0341 155550199)."),
         nrohc});
    e.ventanas().abrir(ficha, {.datos = {{QStringLiteral("nrohc"), nrohc}}});
    asentar();
}

} // namespace

std::vector<Pantalla> escenasDeFichas()
{
    return {
        {ficha, verFicha},
        {QStringLiteral("pacientes-familia"),
         [](Escena &e) {
             verFicha(e);
             if (auto *solapas = e.control<QTabWidget>(ficha, QStringLiteral("solapas")))
                 solapas->setCurrentIndex(2);
         }},
    };
}

} // namespace pantallas
