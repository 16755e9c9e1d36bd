#include "app/Esquema.h"

#include "agenda/Esquema.h"
#include "billing/Esquema.h"
#include "clinical/Esquema.h"
#include "db/EsquemaNucleo.h"
#include "patients/Esquema.h"
#include "printing/Esquema.h"

namespace app {

QVector<db::Schema> esquemaPorRutinas()
{
    db::Schema nucleo = db::esquemaNucleo();
    nucleo += printing::esquema();
    db::Schema historias = patients::esquema();
    historias += clinical::esquema();
    return {nucleo, historias, billing::esquema(), agenda::esquema()};
}

db::Schema esquemaCompleto()
{
    db::Schema all;
    for (const db::Schema &part : esquemaPorRutinas())
        all += part;
    return all;
}

} // namespace app
