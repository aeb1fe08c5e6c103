#ifndef TESSEL_KEY_DERIVATION_H
#define TESSEL_KEY_DERIVATION_H

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

/** The page key of a SQLCipher 4 file: PBKDF2-HMAC-SHA512 over the password with the file's first 16 bytes as salt,
    256,000 rounds. Takes about 0.15 s, on purpose. */
void tessel_derive_key(const unsigned char* password, size_t password_size, const unsigned char salt[16],
                       unsigned char key[32]);

#ifdef __cplusplus
}
#endif

#endif
