#include "db/engine/Key.h"

#include <QCryptographicHash>
#include <QHash>
#include <QMutex>

// The engine's own derivation, from motor.c.
extern "C" void vastelo_pbkdf2_sha512(
    const uint8_t *password,
    size_t passwordSize,
    const uint8_t *salt,
    size_t saltLength,
    uint32_t iterations,
    uint8_t *out,
    size_t outSize);

namespace db {

namespace {
// SQLCipher 4: PBKDF2-HMAC-SHA512, 256,000 rounds, a key of 32 bytes.
constexpr uint32_t rounds = 256000;
constexpr int keySize = 32;
} // namespace

QByteArray derivedKey(const QString &password, const QByteArray &salt)
{
    static QMutex mutex;
    static QHash<QByteArray, QByteArray> known;

    const QByteArray secret = password.toUtf8();
    const QByteArray name = salt + QCryptographicHash::hash(secret, QCryptographicHash::Sha256);
    const QMutexLocker lock(&mutex);
    QByteArray &key = known[name];
    if (key.isEmpty()) {
        QByteArray bytes(keySize, '\0');
        vastelo_pbkdf2_sha512(
            reinterpret_cast<const uint8_t *>(secret.constData()),
            size_t(secret.size()),
            reinterpret_cast<const uint8_t *>(salt.constData()),
            size_t(salt.size()),
            rounds,
            reinterpret_cast<uint8_t *>(bytes.data()),
            size_t(keySize));
        key = "raw:" + bytes.toHex();
    }
    return key;
}

} // namespace db
