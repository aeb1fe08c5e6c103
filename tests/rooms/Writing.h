#pragma once

#include <QString>
#include <functional>

#include "tests/support/TemporaryLibrary.h"

/// A library in which every row has neighbours that a statement could hit by mistake, all of them stamped 'old':
/// chapters 01, 0101, 010101, 010102 and 02 (ids 1 to 5); bills 010101001 to 010101005, 010102001 and 01001 (ids 1 to
/// 7), each with a parameter, two contents (id of the bill and 1 or 2) and two features (likewise); each content with
/// three second-level contents, of which the first has two rations (id of the content and 1 to 4); each feature with
/// two values (likewise).
class DetailedLibrary : public TemporaryLibrary {
public:
    DetailedLibrary();

    /// What `act` changes in the file, a line for each table and kind of change: "tblBill +8 Code=010101006 IsDel=0",
    /// "tblCont ~31 ~32 Code=010101002", "tblParm -1 -2". NULL is not told; a time of now is told as "now".
    QString changes(const std::function<void()>& act) const;
};

/// A procedure that writes to a library, and how it deals with failures.
struct Writing {
    enum class Failing {
        Statement,   ///< one statement by ExecuteDDL
        Own,         ///< one statement of its own
        RolledBack,  ///< in a savepoint, which is rolled back
        LeftOpen,    ///< in a savepoint, which stays open until the event is over
    };
    const char* place;  ///< where its errors are recorded
    Failing failing;
    std::function<bool(Connection*)> runs;  ///< whether it says that it succeeded
    const char* changes;                    ///< as told by DetailedLibrary::changes()
    SqlText refused;                        ///< a change that comes late in it, as in CREATE TEMP TRIGGER … BEFORE
    const char* left = "";                  ///< what has been changed when that was refused
};

/// Runs it without a library, with one that is locked, that is being read, that refuses `refused`, and at last
/// undisturbed, all that by passes and by look-ups. Each time the right error is recorded, the file is as it has to be
/// when the event is over, and the next edit is in the file at once.
void expectWriting(const Writing& writing);
