#include "editor/common/InSavepoint.h"

#include "app/base/Guarded.h"
#include "storage/Connection.h"
#include "storage/Savepoint.h"

bool inSavepoint(const char* command, Connection* ormConn, const std::function<bool(Connection&)>& writes,
                 AfterFailure after) {
    const QString name = QString::fromLatin1(command);
    bool started = false;
    const auto undo = [&] {
        if (after == AfterFailure::RollBack)
            RollBackSP(name, ormConn, started);
        return false;
    };
    return guarded(
        {"frmEditor", command},
        [&] {
            started = SetSP(name, ormConn);
            if (!started)
                return false;
            ormConn->prepareToWrite();
            return (writes(*ormConn) && ReleaseSP(name, ormConn, started)) || undo();
        },
        undo);
}
