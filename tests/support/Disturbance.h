#pragma once

#include "editor/frmEditor.h"
#include "storage/Connection.h"
#include "tests/support/OtherProgram.h"

/// Something that makes writing to a library fail for as long as it lives. Another program uses the database by itself:
/// the program's own connections end their transactions with the user's event.
class Disturbance {
public:
    enum class Kind {
        Written,  ///< Another program is writing: nothing can be written, everything can be read.
        Read,     ///< Another program is reading: what was written cannot be brought to an end.
        Refused,  ///< One kind of change of one table is refused on the editor's connection.
        Locked,   ///< Another program keeps everybody out.
    };

    /// `change` says what is refused on the connection of `editor`, for instance "UPDATE ON tblBill".
    Disturbance(const QString& path, Kind kind, const QString& change = QString(), frmEditor* editor = nullptr)
        : m_other(path), m_refusing(kind == Kind::Refused ? editor : nullptr) {
        if (kind == Kind::Read)
            m_other.keepReading();
        else if (kind != Kind::Refused)
            m_other.run(kind == Kind::Written ? "BEGIN IMMEDIATE" : "BEGIN EXCLUSIVE");
        else if (editor)
            editor->ormConn()->Execute(
                sql("CREATE TEMP TRIGGER refuse BEFORE ", change, " BEGIN SELECT RAISE(ABORT,'refused'); END"));
    }
    ~Disturbance() {
        if (m_refusing && m_refusing->ormConn())
            m_refusing->ormConn()->Execute("DROP TRIGGER IF EXISTS temp.refuse");
    }

private:
    OtherProgram m_other;
    QPointer<frmEditor> m_refusing;
};
