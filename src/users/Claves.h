#pragma once

#include <QString>

/// The one verifier of users' passwords. What `claveusuario` holds is either the password itself, as older databases
/// have it, or its hash, which is all that this version writes:
///
///     "§1" + base64 of 36 bytes, without padding: 50 characters, the whole width of the column
///     bytes  0-11  random salt
///     bytes 12-23  tag of the password without regard to letter case
///     bytes 24-35  tag of the password as it is
///
/// A tag is 12 bytes of Argon2id (version 1.3, 19 MiB, 2 passes, 1 lane) over the UTF-8 of the trimmed password, salted
/// with the salt and one more byte that tells both tags apart: 'i' and 'e'. The first one is there because two rules
/// compare passwords differently: who enters must type the same case, but no two users may have passwords that differ
/// in case alone, as the database sees no difference there. Other parameters will be another version than "1".
///
/// Blanks around a password never count. Each comparison with a hash takes some hundredths of a second and 19 MiB;
/// std::bad_alloc when they are not to be had.
namespace users::claves {

/// Width of `claveusuario`.
inline constexpr int ancho = 50;

/// No password is set (or nothing was typed).
[[nodiscard]] bool vacia(QStringView clave);
/// What is stored is a hash, even a damaged one.
[[nodiscard]] bool esHuella(QStringView guardada);
/// The hash of a password, with a salt of its own. The password is not empty.
[[nodiscard]] QString huella(const QString &clave);

/// What was typed is the stored password, letter case included. False when one of them is empty, or the hash damaged.
[[nodiscard]] bool coincide(const QString &guardada, const QString &escrita);
/// The same without regard to letter case: what makes two users' passwords equal.
[[nodiscard]] bool coincideSinMayusculas(const QString &guardada, const QString &escrita);

} // namespace users::claves
