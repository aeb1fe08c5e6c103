#pragma once

#include <QString>
#include <optional>
#include <vector>

#include "editor/common/Codes.h"
#include "storage/Recordset.h"

class Connection;

/// The statements that read and change the bill items of a library. Bills are meant by the row id of tblBill.
///
/// The functions that change give their result only when everything is in the file; after a recorded error, and when
/// the savepoint could not be released, they have rolled back to their savepoint, which stays open.

/// The bills of a chapter, in the order of their codes: those whose code is the first six characters of `chapterCode`
/// and exactly three more. Throws Error.
Recordset billsOfChapter(Connection* ormConn, const QString& chapterCode);

/// The bills of all chapters whose code contains `text` (LIKE, so "%" and "_" match anything), in the order of their
/// codes. Throws Error.
Recordset billsWithCode(Connection* ormConn, const QString& text);

/// Whether there is a bill with that id. Throws Error.
bool billExists(Connection* ormConn, qint64 id);

/// Writes one column of a bill. False after a recorded error: `value` must hold no apostrophe.
[[nodiscard]] bool ModifyBill(Connection* ormConn, qint64 id, const QString& field, const QString& value);

/// Adds an empty bill with the code `code`, then gives each of `shifted`, and its work contents, the code it comes
/// with; codes of parameters stay. The row id of the new bill.
[[nodiscard]] std::optional<qint64> addBill(Connection* ormConn, const QString& code, const std::vector<Bill>& shifted);

/// Deletes a bill with all that depends on it, then gives each of `shifted`, and its work contents, the code it comes
/// with. False, with everything rolled back, when there is no such bill.
[[nodiscard]] bool deleteBill(Connection* ormConn, qint64 id, const std::vector<Bill>& shifted);

/// Swaps the codes of two bills, with those of their parameters and work contents. Each comes with the code it has;
/// `temporaryCode` stands in during the swap.
[[nodiscard]] bool moveBill(Connection* ormConn, const Bill& moving, const Bill& neighbour,
                            const QString& temporaryCode);
