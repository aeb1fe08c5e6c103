#pragma once

#include <QPointer>

#include "editor/frmEditor.h"
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
    Disturbance(const QString& path, Kind kind, const QString& change = QString(), frmEditor* editor = nullptr);
    ~Disturbance();

private:
    OtherProgram m_other;
    QPointer<frmEditor> m_refusing;
};
