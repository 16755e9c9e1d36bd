#pragma once

#include <QByteArray>
#include <QString>

namespace db {

/// The key of an encrypted file: derived from the password and the salt in the file's first 16 bytes. A derivation
/// costs about a quarter of a second, so each is made once a process and remembered. Yields "raw:" and 64 hexadecimal
/// digits, as the engine takes a ready key.
[[nodiscard]] QByteArray derivedKey(const QString &password, const QByteArray &salt);

inline constexpr int saltSize = 16;

} // namespace db
