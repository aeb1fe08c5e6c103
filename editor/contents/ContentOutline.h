#pragma once

#include <QString>
#include <vector>

#include "storage/Sql.h"

class Connection;

/// Reading what the work of a bill consists of: its contents, their second-level contents and the rations of those.

/// One row of the outline, as the library has it: level 0 is a work content, 1 a second-level content, 2 a ration.
struct OutlineRow {
    int level = 0;
    QString contID;
    QString contDeID;
    QString contNum;
    QString subNum;
    QString cont;
    QString unit;
    QString dekName;
};
using Outline = std::vector<OutlineRow>;

/// The contents of the bill `billID` that belong to the profession `prof` ("01" to "09"), in outline order. After a
/// recorded error, what had been read until then.
Outline LoadBillContent(Connection* ormConn, qint64 billID, const QString& prof);

/// Appends the second-level contents of the content `contID`, each with its rations, at outline level `level`.
/// `narrowed` is what a look-up adds to the statements on the content's rows.
void LoadSubContent(Connection* ormConn, Outline& outline, const QString& contID, int level,
                    const SqlText& narrowed = "");

/// Appends the rations of one second-level content at outline level `level`; `subNum` is its number as text.
void LoadContentDe(Connection* ormConn, Outline& outline, const QString& contID, const QString& subNum, int level,
                   const SqlText& narrowed = "");
