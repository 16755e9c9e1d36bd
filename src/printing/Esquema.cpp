#include "printing/Esquema.h"

#include "db/Declarar.h"

namespace printing {

using namespace db::declarar;

db::Schema esquema()
{
    // Temporary rows carry nrohc -99. The texts are memos: a cell of a printed list is never refused for its length.
    const Columnas comunes = contador() + largos("nrohc") + memos("imprihc " + serie("impri", 1, 20))
        + memos("impriencabezadogeneral impriencabezadopaciente") + binarios("imagenenca imagen");
    return {
        {tabla("Imprimir", comunes, {indice("nrohc")}),
         tabla("Imprimir2", comunes + dobles(serie("imprinume", 1, 9)), {indice("nrohc")})}};
}

} // namespace printing
