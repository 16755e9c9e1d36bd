#pragma once

#include "base/Rechazo.h"

#include <QString>

namespace db {
class Entorno;
}

namespace users {

/// A user who has proved to be one. Only identificar() makes it: nobody becomes the current user without.
class Identidad
{
public:
    [[nodiscard]] int id() const { return m_id; }
    [[nodiscard]] const QString &nombre() const { return m_nombre; }

private:
    Identidad() = default;
    friend base::Resultado<Identidad> identificar(db::Entorno &entorno, int id, const QString &clave);
    friend void tomarPuesto(db::Entorno &entorno, const Identidad &quien);

    int m_id = 0;
    QString m_nombre;
    QString m_claveClara; ///< as stored, when it is not hashed yet
};

/// Checks the password typed for the user of that `id`. Refused, in this order: the user is gone; nothing typed where a
/// password is set; another password, or any where none is set. Changes nothing. Throws db::Error, std::bad_alloc.
[[nodiscard]] base::Resultado<Identidad> identificar(db::Entorno &entorno, int id, const QString &clave);

/// The login: `quien` is the current user of this computer from here on, the log says so, and a password that was still
/// stored as it is typed is replaced by its hash. Throws db::Error, with the former user still in place when setup.dat
/// cannot be written.
void ingresar(db::Entorno &entorno, const Identidad &quien);

/// The same in place of the user who worked until now, with the log entry of a change.
void cambiarUsuario(db::Entorno &entorno, const Identidad &quien);

} // namespace users
