#pragma once

#include <QString>
#include <functional>
#include <random>
#include <vector>

/// A good file of the program that is about to be damaged, and the dice by which that is done: the same seed always
/// does the same damage.
struct Victim {
    QString path;
    QByteArray key;  ///< empty for a plain file
    std::mt19937 dice;

    int upTo(qsizetype count) { return static_cast<int>(dice() % static_cast<unsigned>(qMax(count, qsizetype(1)))); }
    template <typename List>
    const auto& oneOf(const List& list) {
        return list[static_cast<std::size_t>(upTo(static_cast<qsizetype>(std::size(list))))];
    }
    QByteArray noise(int count);
    /// Runs a script on the file as a database; $t in it is a table, $c and $d are columns, $n is a number. False when
    /// it fails.
    bool run(QByteArray script);
};

/// One way in which a file can be bad; false when this file cannot be so.
struct DamageKind {
    const char* name;
    std::function<bool(Victim&)> apply;
};

/// All of them: bytes that changed, files of another kind, schemas and contents that no library has.
const std::vector<DamageKind>& damageKinds();
