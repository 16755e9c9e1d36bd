/* The embedded engine's source as one unit, with the one thing that it keeps to itself: its key derivation, so that a
 * key derived once can be used again (see Key.cpp). */
#include "sqlite3.c"

void vastelo_pbkdf2_sha512(
    const uint8_t *password,
    size_t passwordSize,
    const uint8_t *salt,
    size_t saltSize,
    uint32_t rounds,
    uint8_t *out,
    size_t outSize)
{
    fastpbkdf2_hmac_sha512(password, passwordSize, salt, saltSize, rounds, out, outSize);
}
