#pragma once

#include <QString>
#include <optional>

class Connection;

/// Writing work contents, second-level contents and rations. Contents of a bill and second-level contents of a content
/// are numbered 1, 2, 3 …; adding and deleting renumbers those that follow.
///
/// Every function records its errors itself, under the name of the command it belongs to. Adding and deleting happen
/// inside a savepoint of that name. Deleting contents and second-level contents rolls back when it fails; the others
/// then leave the savepoint open, with what was done until then.

/// Changes the text of a content, whether or not there is such a content. False when it could not be written.
[[nodiscard]] bool ModifyCont(Connection* ormConn, qint64 contID, const QString& text);

/// Changes the text of a second-level content: of every row with its number.
[[nodiscard]] bool ModifySubCont(Connection* ormConn, qint64 contID, qint64 subNum, const QString& text);

/// Lowest row id of a second-level content; 0 when it has no row.
[[nodiscard]] qint64 GetSubContID(Connection* ormConn, qint64 contID, qint64 subNum);

struct NewContent {
    qint64 billID = 0;
    QString code;  ///< of the bill
    qint64 num = 0;
    QString name;
    QString prof;
};

/// Adds a content as number `num` of its bill. Gives its id, when it was added.
[[nodiscard]] std::optional<qint64> addContent(Connection* ormConn, const NewContent& content);

/// Adds a second-level content as number `subNum` of the content `contID`.
[[nodiscard]] bool addSubContent(Connection* ormConn, qint64 contID, qint64 subNum, const QString& name);

/// Deletes a content with its second-level contents and rations.
[[nodiscard]] bool deleteContent(Connection* ormConn, qint64 contID, qint64 contNum, qint64 billID);

/// Deletes a second-level content with its rations.
[[nodiscard]] bool deleteSubContent(Connection* ormConn, qint64 contID, qint64 subNum);

/// What happens to the row of a ration that is deleted.
enum class RationRow {
    Removed,  ///< The row goes.
    Cleared,  ///< The row stays as that of its second-level content, without a ration.
};

/// Deletes the ration in row `contDeID`.
[[nodiscard]] bool deleteRation(Connection* ormConn, qint64 contDeID, RationRow becomes);

struct Ration {
    QString deh;
    QString name;
    QString unit;
    QString dekID;
};

/// Writes a ration into row `id`. False when it could not be written.
[[nodiscard]] bool updateRation(Connection* ormConn, qint64 id, const Ration& ration);

/// Adds a row for a ration to a second-level content whose text is `subCont`. Gives its id, when it was added.
[[nodiscard]] std::optional<qint64> insertRation(Connection* ormConn, qint64 contID, qint64 subNum,
                                                 const QString& subCont, const Ration& ration);
