#include "storage/Savepoint.h"

#include "app/base/Guarded.h"
#include "storage/LibraryConnection.h"

namespace {

bool execute(Connection* connection, const SqlText& statement) {
    requireConnection(connection).Execute(statement);
    return true;
}

}  // namespace

bool SetSP(const QString& name, Connection* connection) {
    return guarded({"ModDBOperator", "SetSP"},
                   [&] { return !name.isEmpty() && execute(connection, sql(" Savepoint ", name, ";")); });
}

bool ReleaseSP(const QString& name, Connection* connection, bool started) {
    return guarded({"ModDBOperator", "ReleaseSP"}, [&] {
        return !name.isEmpty() && started && execute(connection, sql("Release Savepoint ", name, ";"));
    });
}

bool RollBackSP(const QString& name, Connection* connection, bool started) {
    return guarded({"ModDBOperator", "RollBackSP"}, [&] {
        return !name.isEmpty() && started && execute(connection, sql("RollBack To Savepoint ", name, ";"));
    });
}
