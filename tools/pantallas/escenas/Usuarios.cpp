#include "Escenas.h"

#include <QListWidget>
#include <QTabWidget>

namespace pantallas {

namespace {

const QString medicos = QStringLiteral("medicos");

/// The secretary, on one of the pages of her settings.
std::function<void(Escena &)> secretariaEn(int solapa)
{
    return [solapa](Escena &e) {
        sobreElMarco(medicos)(e);
        if (auto *usuarios = e.control<QListWidget>(medicos, QStringLiteral("lisusuarios")))
            usuarios->setCurrentRow(usuarios->count() - 1);
        if (auto *solapas = e.control<QTabWidget>(medicos, QStringLiteral("solapas")))
            solapas->setCurrentIndex(solapa);
    };
}

} // namespace

std::vector<Pantalla> escenasDeUsuarios()
{
    return {
        {medicos, sobreElMarco(medicos)},
        {QStringLiteral("medicos-acceso"), secretariaEn(1)},
        {QStringLiteral("medicos-permisos"), secretariaEn(2)},
        {QStringLiteral("medicos-opciones"), secretariaEn(3)},
    };
}

} // namespace pantallas
