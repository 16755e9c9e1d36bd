#include "agenda/forms/ColorTono.h"

namespace agenda {

QColor colorDe(Tono tono)
{
    switch (tono) {
    case Tono::Atendido: return QColor(0xCF, 0xFB, 0xCF);
    case Tono::Pasado: return QColor(0xE0, 0xE0, 0xE0);
    case Tono::Sobreturno: return QColor(0xFF, 0xE6, 0xB8);
    case Tono::Ninguno: break;
    }
    return {};
}

} // namespace agenda
