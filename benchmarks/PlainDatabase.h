#pragma once

#include <QString>
#include <memory>

struct sqlite3;
struct sqlite3_stmt;

/// SQLite's own calls with the least around them: the side that the program is measured against, and what the generator
/// writes with. Every failure throws Error.

class PlainStatement {
public:
    PlainStatement(sqlite3* database, const char* text);

    /// Binds all parameters, in order, and runs the statement to its end; ready for the next run afterwards.
    template <typename... Values>
    void run(const Values&... values) {
        int position = 0;
        (bind(++position, values), ...);
        while (step()) {
        }
        reset();
    }

    /// True when a row was read, false at the end.
    bool step();
    void reset();
    qint64 number(int column) const;
    QString text(int column) const;

private:
    void bind(int position, qint64 value);
    void bind(int position, const QString& value);

    sqlite3* m_database;
    struct Finalizer {
        void operator()(sqlite3_stmt* statement) const;
    };
    std::unique_ptr<sqlite3_stmt, Finalizer> m_statement;
};

class PlainDatabase {
public:
    /// Opens the file (created when missing) with the settings that the program leaves as they are: rollback journal,
    /// full synchronous.
    explicit PlainDatabase(const QString& path);

    /// Runs all statements of `script` and reads every column of their rows as UTF-8 text.
    void run(const char* script);
    void run(const QString& script) { run(script.toUtf8().constData()); }
    PlainStatement prepare(const char* text) { return {m_database.get(), text}; }
    PlainStatement prepare(const QString& text) { return prepare(text.toUtf8().constData()); }

private:
    struct Closer {
        void operator()(sqlite3* database) const;
    };
    std::unique_ptr<sqlite3, Closer> m_database;
};
