#pragma once

#include <QStringList>
#include <random>

#include "benchmarks/PlainDatabase.h"

/// A file of the program that is about to be damaged, and the dice by which that is done. The same seed always does the
/// same damage.
class BadFile {
public:
    /// The file at `path`, which is good and opens with `password`; an empty one means a plain file.
    BadFile(QString path, QString password, unsigned seed);

    const QString& path() const { return m_path; }
    bool isPlain() const { return m_password.isEmpty(); }

    /// 0 to count - 1; 0 also when there is nothing to choose from: what is left of a file may be empty.
    int upTo(int count) { return static_cast<int>(m_dice() % static_cast<unsigned>(qMax(count, 1))); }
    bool chance(int percent) { return upTo(100) < percent; }
    QByteArray randomBytes(int count);
    template <typename List>
    const auto& oneOf(const List& list) {
        return list[static_cast<std::size_t>(upTo(static_cast<int>(std::size(list))))];
    }

    QByteArray bytes() const;
    void write(const QByteArray& bytes) const;
    static int pageSize(const QByteArray& bytes);

    /// The file as an open database that takes whatever is done to it.
    PlainDatabase open() const;
    /// The file becomes an empty database with this password.
    void replaceByNew(const QString& password) const;

    /// Any of the tables, and any of a table's columns.
    QString table(PlainDatabase& database);
    static QStringList columns(PlainDatabase& database, const QString& table);
    QString column(PlainDatabase& database, const QString& table) { return oneOf(columns(database, table)); }

private:
    static PlainDatabase open(const QString& path, const QString& password);

    QString m_path;
    QString m_password;
    std::mt19937 m_dice;
};
