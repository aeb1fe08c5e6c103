#pragma once

#include <gtest/gtest.h>

#include <QFile>

using namespace Qt::StringLiterals;

struct sqlite3;

/// Another program that works on a database file by itself, with values that are bound and thus never part of a
/// statement.
class OtherProgram {
public:
    /// Opens the file at `path`, created when missing; `key` as for the system database, empty for a plain file.
    explicit OtherProgram(const QString& path, const char* key = "");
    ~OtherProgram();
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;

    /// Runs `statement` with `values` for its question marks; gives the first column of its rows.
    QStringList run(const char* statement, const QStringList& values = {});

private:
    sqlite3* m_database = nullptr;
};

/// Takes a file away and brings it back, in place of whatever stands there by then, when this goes.
class KeptFile {
public:
    explicit KeptFile(const QString& path) : m_path(path) { EXPECT_TRUE(QFile::rename(m_path, kept())); }
    ~KeptFile() {
        QFile::remove(m_path);
        EXPECT_TRUE(QFile::rename(kept(), m_path));
    }
    KeptFile(const KeptFile&) = delete;
    KeptFile& operator=(const KeptFile&) = delete;

private:
    QString kept() const { return m_path + u".kept"_s; }

    const QString m_path;
};

/// Makes `bytes` all that the file holds, in its place.
void overwrite(const QString& path, const QByteArray& bytes);

QByteArray bytesOf(const QString& path);
