#pragma once

#include "users/forms/FormularioIngreso.h"

namespace users {

/// Another user in place of the one who works. The other windows close before: they show what the former one may see,
/// and may hold what she was writing. Where that would be lost and she keeps it, nothing changes.
class acceso2 : public FormularioIngreso
{
    Q_OBJECT

public:
    acceso2(db::Entorno &entorno, ui::Ventanas &ventanas);

    bool preparar(const ui::Pedido &pedido) override;

protected:
    void entrar(const Identidad &quien) override;
};

} // namespace users
