#include "clinical/Esquema.h"

#include "clinical/EsquemaPartes.h"

namespace clinical {

db::Schema esquema()
{
    return {
        tablasConsultas() + tablasRevision() + tablasMusculoesqueleticas() + tablasExamen() + tablasGinecologia()
        + tablasAntecedentes() + tablasObstetricia() + tablasEcografias() + tablasVarias()};
}

} // namespace clinical
