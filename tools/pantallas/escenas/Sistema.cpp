#include "Escenas.h"

#include "db/Error.h"
#include "db/Verificacion.h"

namespace pantallas {

std::vector<Pantalla> escenasDeSistema()
{
    return {
        {QStringLiteral("sistema"), [](Escena &) {}},
        {QStringLiteral("acceso"), sobreElMarco(QStringLiteral("acceso"))},
        {QStringLiteral("acceso2"), [](Escena &e) { e.pulsar({}, QStringLiteral("menusuario")); }},
        {QStringLiteral("usuariosadmin"), sobreElMarco(QStringLiteral("usuariosadmin"))},
        {QStringLiteral("mensaje-sin-base"),
         [](Escena &) {},
         [](Escena &e, base::Mensajes &) { e.pulsar({}, QStringLiteral("menagendas")); },
         false},
        {QStringLiteral("mensaje-base-daniada"),
         [](Escena &) {},
         [](Escena &, base::Mensajes &mensajes) {
             db::avisarBaseDaniada(
                 mensajes,
                 db::Error(
                     db::Error::Kind::Corrupt, 11, QStringLiteral("El archivo de la base de datos está dañado.")));
         },
         false},
    };
}

} // namespace pantallas
