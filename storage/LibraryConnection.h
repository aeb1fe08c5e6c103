#pragma once

#include <QString>
#include <memory>

#include "storage/Connection.h"

/// Opening a bill library and the statements that every part of the program runs on it (module ModDBOperator).

/// Opens the library file at `path` (created when missing) and attaches its companion file, `path` followed by the
/// letter x, as "dbext" when there is one. No object after a recorded error.
///
/// When a journal lies beside the file that another file has left, the user is asked first: it is moved aside, or
/// nothing is opened and there is no object.
[[nodiscard]] std::unique_ptr<Connection> GetOrmConn(const QString& path);

/// The companion file of the library at `path`.
[[nodiscard]] QString companionPath(const QString& path);

/// The connection itself; throws Error 91 when there is none.
Connection& requireConnection(Connection* connection);

/// Closes the recordset.
void ReleaseOrmRecordset(Recordset& recordset);

/// Executes `statement`. False when there is no connection or no text, or after a recorded error.
[[nodiscard]] bool ExecuteDDL(Connection* connection, const SqlText& statement);

/// Whether a chapter has the code `code`, letter case ignored. True without a connection and after an error, which
/// keeps callers from inserting.
[[nodiscard]] bool ExistSybCode(Connection* connection, const QString& code);
