#include "storage/KeyedAccess.h"

#include <QFile>
#include <QHash>
#include <array>

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

}  // namespace

QByteArray keyForFile(const QString& path, const QString& password) {
    const QByteArray passphrase = password.toUtf8();
    QByteArray salt;
    if (QFile file(path); file.open(QIODevice::ReadOnly))
        salt = file.read(saltSize);
    if (salt.size() < saltSize)
        return passphrase;

    static QHash<QByteArray, QByteArray> remembered;
    QByteArray& key = remembered[salt + passphrase];
    if (key.isEmpty())
        key = derive(passphrase, salt);
    return "x'" + key.toHex() + salt.toHex() + "'";
}
