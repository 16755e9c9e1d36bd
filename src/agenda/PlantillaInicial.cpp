#include "agenda/PlantillaInicial.h"

#include "agenda/Plantilla.h"

namespace agenda {

void asegurarPlantillaInicial(db::Connection &conexion, int iddoctor)
{
    if (!listarPlantillas(conexion, iddoctor).isEmpty())
        return;
    Plantilla plantilla;
    plantilla.iddoctor = iddoctor;
    for (Jornada &dia : plantilla.dias) {
        dia.maDesde = QTime(8, 0);
        dia.maHasta = QTime(12, 0);
        dia.taDesde = QTime(16, 0);
        dia.taHasta = QTime(20, 0);
    }
    (void)guardarPlantilla(conexion, plantilla, QStringLiteral("01/01/1900"), QStringLiteral("31/12/2100"));
}

} // namespace agenda
