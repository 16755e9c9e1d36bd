#pragma once

#include "users/forms/FormularioIngreso.h"

namespace users {

/// The login at start. Whoever waits for it is told "id"; cancelled, nobody has come in.
class acceso : public FormularioIngreso
{
    Q_OBJECT

public:
    acceso(db::Entorno &entorno, ui::Ventanas &ventanas);

protected:
    void entrar(const Identidad &quien) override;
};

} // namespace users
