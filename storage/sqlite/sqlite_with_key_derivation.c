/* The amalgamation, with its key derivation reachable from outside. */
#include "sqlite3.c"

#include "key_derivation.h"

void tessel_derive_key(const unsigned char* password, size_t password_size, const unsigned char salt[16],
                       unsigned char key[32]) {
    fastpbkdf2_hmac_sha512(password, password_size, salt, 16, 256000, key, 32);
}
