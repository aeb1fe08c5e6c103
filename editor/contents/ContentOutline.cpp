#include "editor/contents/ContentOutline.h"

#include <utility>

#include "app/base/Guarded.h"
#include "editor/contents/ContentRows.h"
#include "storage/LibraryConnection.h"

using namespace Qt::StringLiterals;

namespace {

/// For as long as it lives, tblContDe names a temporary table with the rows of some contents only.
///
/// The statements for a bill's outline read the whole table twice for each content and second-level content; on the
/// copy they cost next to nothing. The copy keeps the affinity of every column, so they compare as they would on the
/// library's table, and its rows stand in row id order. Nothing may be written to tblContDe meanwhile. Filling it
/// changes the connection's last inserted row id.
class RowsOfContents {
public:
    explicit RowsOfContents(Connection& connection) : m_connection(connection) {}

    /// When it fails half-way the destructor takes away what was made.
    void fill(const Outline& contents) {
        SqlComposer ids;
        bool first = true;
        for (const OutlineRow& content : contents) {
            const SqlText id = sql("'", content.contID, "'");
            // An id with an apostrophe fits into no statement; the query for its own rows records the error later.
            if (!id.brokenAt().isEmpty())
                continue;
            if (!std::exchange(first, false))
                ids.add(",");
            ids.add(id);
        }
        m_connection.Execute(dropped);
        m_connection.Execute(sql("CREATE TEMP TABLE tblContDe AS SELECT * FROM main.tblContDe WHERE contID IN (",
                                 ids.take(), ") ORDER BY id;"));
        // A pass over the copy for each content is dear only when there are very many.
        constexpr std::size_t worthAnIndex = 100;
        if (contents.size() >= worthAnIndex)
            m_connection.Execute("CREATE INDEX temp.tblContDe_contID ON tblContDe(contID);");
    }

    ~RowsOfContents() {
        guarded({"frmEditor", "LoadBillContent"}, [this] { m_connection.Execute(dropped); });
    }

    RowsOfContents(const RowsOfContents&) = delete;
    RowsOfContents& operator=(const RowsOfContents&) = delete;

private:
    inline static const SqlText dropped = "DROP TABLE IF EXISTS temp.tblContDe;";
    Connection& m_connection;
};

Outline readContents(Connection& connection, qint64 billID, const QString& prof) {
    Outline contents;
    Recordset rows = connection.OpenRecordset(
        sql("select * from tblCont where billID='", billID, "' and prof like '%", prof, "%' ORDER BY num asc;"));
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
            RowsOfContents copy(*ormConn);
            copy.fill(outline);
            Outline whole;
            for (const OutlineRow& content : outline) {
                whole.push_back(content);
                LoadSubContent(ormConn, whole, content.contID, ContentRows::subContentLevel);
            }
            return whole;
        },
        [&] { return outline; });
}

void LoadSubContent(Connection* ormConn, Outline& outline, const QString& contID, int level) {
    guarded({"frmEditor", "LoadSubContent"}, [&] {
        Recordset rows = requireConnection(ormConn).OpenRecordset(
            sql("select distinct subCont,subNum from tblContDe where contID='", contID, "' ORDER BY subNum;"));
        for (; !rows.EndOfFile(); rows.MoveNext()) {
            OutlineRow& subContent = outline.emplace_back();
            subContent.level = level;
            subContent.contID = contID;
            subContent.subNum = rows.text("subNum");
            subContent.cont = rows.text("subCont");
            LoadContentDe(ormConn, outline, contID, QString(subContent.subNum), level + 1);
        }
        ReleaseOrmRecordset(rows);
    });
}

void LoadContentDe(Connection* ormConn, Outline& outline, const QString& contID, const QString& subNum, int level) {
    guarded({"frmEditor", "LoadContentDe"}, [&] {
        Recordset rows = requireConnection(ormConn).OpenRecordset(
            sql("select id,deh,name,unit,dekid from tblContDe where deh IS NOT NULL AND deh<>'' AND contID='", contID,
                "' and subNum='", subNum, "';"));
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
