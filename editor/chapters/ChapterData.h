#pragma once

#include <QString>

class Connection;

/// The statements that change the chapters of a library. Each gives True when it is done and False after a recorded
/// error. `code` is a chapter's code, `name` its name without the code.

/// Adds a chapter. A code that is taken is told to the user and gives False; so does a missing connection.
bool AddBillSYB(Connection* ormConn, const QString& code, const QString& name);

/// Gives the chapter a new name.
bool ModifyBillSYB(Connection* ormConn, const QString& code, const QString& name);

/// Deletes the chapter's own row, and the bills whose codes are the first six characters of `code` and exactly three
/// more, with all that depends on them. Chapters below it stay in the file. After an error the statements already run
/// stay in effect in the savepoint "DeleteBillSYB", which is left open.
bool DeleteBillSYB(Connection* ormConn, const QString& code);

/// Swaps the codes of two sibling chapters together with every chapter, bill and work content below them. Codes that
/// begin with the zeros which stand in for the level's code during the swap end up below `codeA`. An error undoes
/// everything and leaves the savepoint "ExchangeSYBNode" open.
bool ExchangeSYBNode(Connection* ormConn, const QString& codeA, const QString& codeB);
