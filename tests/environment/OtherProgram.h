#pragma once

#include <QString>

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
