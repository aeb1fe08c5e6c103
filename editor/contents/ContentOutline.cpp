#include "editor/contents/ContentOutline.h"

#include "app/base/Guarded.h"
#include "editor/contents/ContentRows.h"
#include "storage/LibraryConnection.h"
#include "storage/Lookups.h"

using namespace Qt::StringLiterals;

namespace {

/// "key IN ('1','2',…)" with the ids of the contents.
SqlText isOneOf(const Outline& contents) {
    SqlComposer ids;
    ids.add("key IN (NULL");
    for (const OutlineRow& content : contents) {
        const SqlText id = sql(",'", content.contID, "'");
        // An id with an apostrophe fits into no statement; the query for its own rows records the error later.
        if (id.brokenAt().isEmpty())
            ids.add(id);
    }
    ids.add(")");
    return ids.take();
}

Outline readContents(Connection& connection, qint64 billID, const QString& prof) {
    Outline contents;
    Recordset rows = connection.OpenRecordset(
        sql("select * from tblCont where billID='", billID, "' and prof like '%", prof, "%'",
            connection.lookups().narrow(LookupBy::ContentsByBill, sql("key=", billID)), " ORDER BY num asc;"));
    for (; !rows.EndOfFile(); rows.MoveNext()) {
        OutlineRow& content = contents.emplace_back();
        content.contID = rows.text("id");
        content.contNum = rows.text("Num");
        content.cont = rows.text("cont");
    }
    ReleaseOrmRecordset(rows);
    return contents;
}

}  // namespace

Outline LoadBillContent(Connection* ormConn, qint64 billID, const QString& prof) {
    Outline outline;
    return guarded(
        {"frmEditor", "LoadBillContent"},
        [&] {
            outline = readContents(requireConnection(ormConn), billID, prof);
            if (outline.empty())
                return outline;
            const Lookups::Some subRows = ormConn->lookups().some(LookupBy::SubRowsByContent, isOneOf(outline));
            Outline whole;
            for (const OutlineRow& content : outline) {
                whole.push_back(content);
                LoadSubContent(ormConn, whole, content.contID, ContentRows::subContentLevel,
                               subRows.narrow(sql("key='", content.contID, "'")));
            }
            return whole;
        },
        [&] { return outline; });
}

void LoadSubContent(Connection* ormConn, Outline& outline, const QString& contID, int level, const SqlText& narrowed) {
    guarded({"frmEditor", "LoadSubContent"}, [&] {
        Recordset rows =
            requireConnection(ormConn).OpenRecordset(sql("select distinct subCont,subNum from tblContDe where contID='",
                                                         contID, "'", narrowed, " ORDER BY subNum;"));
        for (; !rows.EndOfFile(); rows.MoveNext()) {
            OutlineRow& subContent = outline.emplace_back();
            subContent.level = level;
            subContent.contID = contID;
            subContent.subNum = rows.text("subNum");
            subContent.cont = rows.text("subCont");
            LoadContentDe(ormConn, outline, contID, QString(subContent.subNum), level + 1, narrowed);
        }
        ReleaseOrmRecordset(rows);
    });
}

void LoadContentDe(Connection* ormConn, Outline& outline, const QString& contID, const QString& subNum, int level,
                   const SqlText& narrowed) {
    guarded({"frmEditor", "LoadContentDe"}, [&] {
        Recordset rows = requireConnection(ormConn).OpenRecordset(
            sql("select id,deh,name,unit,dekid from tblContDe where deh IS NOT NULL AND deh<>'' AND contID='", contID,
                "' and subNum='", subNum, "'", narrowed, ";"));
        for (; !rows.EndOfFile(); rows.MoveNext()) {
            OutlineRow& ration = outline.emplace_back();
            ration.level = level;
            ration.contID = contID;
            ration.contDeID = rows.text("id");
            ration.subNum = subNum;
            ration.cont = ContentRows::rationText(rows.text("deh").toUpper(), rows.text("name"));
            ration.unit = rows.text("Unit");
            ration.dekName = rows.text("dekid");
        }
        ReleaseOrmRecordset(rows);
    });
}
