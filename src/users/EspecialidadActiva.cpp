#include "users/EspecialidadActiva.h"

namespace users {

const std::vector<std::pair<QString, int>> &especialidadesActivas()
{
    static const std::vector<std::pair<QString, int>> todas{
        {u"Clínica general"_qs, 0},
        {u"Ginecología y obstetricia"_qs, 1},
        {u"Pediatría"_qs, 2},
        {u"Oftalmología"_qs, 3},
        {u"Odontología"_qs, 4},
        {u"Kinesiología"_qs, 5},
    };
    return todas;
}

} // namespace users
