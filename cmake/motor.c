// The engine's amalgamation. Its own key derivation is private to that file: made callable here, so that the key of a
// file is derived once for all connections to it.
#include "sqlite3.c"

void motor_pbkdf2_hmac_sha512(const uint8_t *password, size_t passwordSize, const uint8_t *salt, size_t saltSize,
                              uint32_t iterations, uint8_t *out, size_t outSize)
{
    fastpbkdf2_hmac_sha512(password, passwordSize, salt, saltSize, iterations, out, outSize);
}
