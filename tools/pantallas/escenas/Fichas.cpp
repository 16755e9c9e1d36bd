#include "Escenas.h"

#include "Camara.h"
#include "db/Connection.h"
#include "ui/EditorTexto.h"

#include <QComboBox>
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

void verHistoria(Escena &e)
{
    verFicha(e);
    e.pulsar(ficha, QStringLiteral("bothc"));
    if (auto *hoja = e.control<ui::EditorTexto>(QStringLiteral("histoclinica"), QStringLiteral("HC")))
        hoja->setHtml(QStringLiteral(
            "<html><body><p><b>12/03/2024</b> Consulta por <u>disnea nocturna</u>. Asma desde la infancia.</p>"
            "<p>Se indica:</p><ul><li>Budesonide 200, dos veces por día</li><li>Salbutamol a demanda</li></ul>"
            "<p><b>18/11/2026</b> Mejor. <span style='color:#c00000'>Sin crisis desde agosto.</span></p>"
            "</body></html>"));
    for (const auto &[nombre, texto] :
         {std::pair{QStringLiteral("GrupoSanguineo"), QStringLiteral("A")},
          {QStringLiteral("FactorSanguineo"), QStringLiteral("Rh +")}})
        if (auto *lista = e.control<QComboBox>(QStringLiteral("histoclinica"), nombre))
            lista->setCurrentText(texto);
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
        {QStringLiteral("histoclinica"), verHistoria},
    };
}

} // namespace pantallas
