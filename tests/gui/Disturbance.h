#pragma once

#include <QString>

struct sqlite3;
struct sqlite3_stmt;

/// Something outside the program that makes writing to a library fail for as long as it lives. It uses the database
/// by itself: the program's own connections end their transactions with the user's event.
class Disturbance {
public:
    enum class Kind {
        Written,  ///< Another program is writing: nothing can be written, everything can be read.
        Read,     ///< Another program is reading: what was written cannot be brought to an end.
        Refused,  ///< The file itself refuses one kind of change of one table.
        Locked,   ///< Another program keeps everybody out.
    };

    /// `change` says what a file refuses, for instance "UPDATE ON tblBill".
    Disturbance(const QString& path, Kind kind, const QString& change = QString());
    ~Disturbance();
    Disturbance(const Disturbance&) = delete;
    Disturbance& operator=(const Disturbance&) = delete;

private:
    void run(const QString& statement);

    sqlite3* m_other = nullptr;
    sqlite3_stmt* m_reading = nullptr;
    Kind m_kind;
};
