#include "storage/KeyedAccess.h"

#include <QFile>
#include <QHash>
#include <array>
#include <chrono>
#include <future>

#include "key_derivation.h"

namespace {

constexpr qsizetype saltSize = 16;
constexpr std::size_t keySize = 32;

QByteArray derive(const QByteArray& password, const QByteArray& salt) {
    std::array<unsigned char, keySize> key{};
    tessel_derive_key(reinterpret_cast<const unsigned char*>(password.constData()),
                      static_cast<std::size_t>(password.size()),
                      reinterpret_cast<const unsigned char*>(salt.constData()), key.data());
    return {reinterpret_cast<const char*>(key.data()), static_cast<qsizetype>(key.size())};
}

using Key = std::shared_future<QByteArray>;

/// The salt of the file; empty when it has none yet.
QByteArray saltOf(const QString& path) {
    QFile file(path);
    const QByteArray salt = file.open(QIODevice::ReadOnly) ? file.read(saltSize) : QByteArray();
    return salt.size() < saltSize ? QByteArray() : salt;
}

Key& remembered(const QByteArray& passphrase, const QByteArray& salt) {
    static QHash<QByteArray, Key> keys;
    return keys[salt + passphrase];
}

/// The key as it is remembered, or its derivation begun now: on another thread, or, when `policy` is deferred, by the
/// first who waits for it.
const Key& keyOf(const QByteArray& passphrase, const QByteArray& salt, std::launch policy) {
    Key& key = remembered(passphrase, salt);
    if (!key.valid())
        key = std::async(policy, derive, passphrase, salt).share();
    return key;
}

}  // namespace

QByteArray keyForFile(const QString& path, const QString& password) {
    const QByteArray passphrase = password.toUtf8();
    const QByteArray salt = saltOf(path);
    if (salt.isEmpty())
        return passphrase;
    return "x'" + keyOf(passphrase, salt, std::launch::deferred).get().toHex() + salt.toHex() + "'";
}

void deriveKeyAhead(const QString& path, const QString& password) {
    const QByteArray salt = saltOf(path);
    if (!salt.isEmpty())
        keyOf(password.toUtf8(), salt, std::launch::async);
}

bool isKeyBeingDerived(const QString& path, const QString& password) {
    const Key& key = remembered(password.toUtf8(), saltOf(path));
    return key.valid() && key.wait_for(std::chrono::seconds(0)) == std::future_status::timeout;
}
