#include "tests/fuzz/Walk.h"

#include <QCoreApplication>

#include "app/base/Guarded.h"
#include "app/controls/KeyedGrid.h"
#include "app/controls/KeyedTree.h"
#include "editor/bills/BillPane.h"
#include "editor/bills/FeaturePane.h"
#include "editor/chapters/ChapterPane.h"
#include "editor/contents/ContentPane.h"
#include "editor/contents/RationLookup.h"
#include "ration_browser/RationTree.h"
#include "storage/LibraryConnection.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype mostChapters = 6;
constexpr int mostRows = 4;

/// The panes of an editor window, put together as the window does.
struct Panes {
    ChapterPane chapters;
    BillPane bills;
    FeaturePane features;
    ContentPane contents;

    Panes() {
        chapters.chapterClicked = [this](const QString& tag) {
            if (tag.size() == 6)
                bills.LoadBill(tag);
            else
                bills.clearList();
        };
        bills.selectedChapter = [this] { return KeyedTree::tag(chapters.tvSYB()->selectedNode()); };
        bills.deselectChapter = [this] { chapters.tvSYB()->selectNode(nullptr); };
        bills.queryText = [] { return u"0"_s; };
        bills.billChanged = [this](qint64 id) {
            contents.LoadBillContent(id);
            features.LoadBillSpec(id);
        };
        const auto currentId = [this] { return bills.grdBillList()->value(bills.grdBillList()->row(), u"id"_s); };
        features.currentBillId = currentId;
        contents.currentBill = [this, currentId] {
            return CurrentBill{currentId(), bills.grdBillList()->text(bills.grdBillList()->row(), u"Code"_s)};
        };
        contents.DekID = u"GD2018ZHDE01"_s;
    }

    void setConnection(Connection* connection) {
        chapters.setConnection(connection);
        bills.setConnection(connection);
        features.setConnection(connection);
        contents.setConnection(connection);
    }

    void look() {
        KeyedGrid* list = bills.grdBillList();
        for (int row = 0; row < qMin(list->rowCount(), mostRows); ++row) {
            list->setRow(row);
            for (int feature = 0; feature < qMin(features.grdSpec()->rowCount(), mostRows); ++feature)
                features.grdSpec()->setRow(feature);
        }
    }

    void work() {
        bills.mnuAddBill_Click();
        bills.MoveBillRow(true);
        bills.MoveBillRow(false);
        features.mnuAddFeature_Click();
        features.mnuAddFeatureVal_Click();
        features.mnuDeleteFeatureVal_Click();
        features.mnuDeleteFeature_Click();
        contents.munAddBillCont_Click();
        contents.munAddBillSubCont_Click();
        contents.munAddBillContDe_Click();
        KeyedGrid* grid = contents.grdConcent();
        if (grid->hasRows()) {
            grid->setRow(grid->rowCount() - 1);
            contents.munDelBillContDe_Click();
            contents.munDelBillSubCont_Click();
            contents.mnuDelBillCont_Click();
        }
        bills.mnuDeleteBill_Click();
        chapters.mnuMoveContentDown_Click();
        chapters.mnuMoveContentUp_Click();
        chapters.mnuDeleteContent_Click();
    }
};

}  // namespace

void walkLibrary(const QString& path) {
    const auto connection = GetOrmConn(path);
    if (!connection || !succeeds([&] { connection->OpenRecordset("PRAGMA synchronous=OFF"); }))
        return;
    // Making the panes takes longer than everything that is done with them.
    static auto* panes = new Panes;
    panes->setConnection(connection.get());
    panes->chapters.CreateTvwSYB();
    panes->chapters.expandAll();
    const QList<KeyedTree::Node*> nodes = panes->chapters.tvSYB()->nodes();
    for (qsizetype i = 0; i < qMin(nodes.size(), mostChapters); ++i) {
        panes->chapters.tvSYB_NodeClick(nodes[nodes.size() - 1 - i]);
        panes->look();
    }
    panes->bills.mnuQueryBill_Click();
    panes->look();
    if (!nodes.isEmpty())
        panes->chapters.tvSYB_NodeClick(nodes.last());
    panes->work();
    // What was not committed is, as after an event of the user.
    QCoreApplication::processEvents();
    panes->bills.clearList();
    panes->contents.LoadBillContent(0);
    panes->features.LoadBillSpec(0);
    panes->setConnection(nullptr);
}

void walkRations(const QString& path, const QString& code) {
    QString name;
    QString unit;
    GetDeData(code, path, name, unit);
    guarded({"frmDekBrowser", "LoadSYB"}, [&] {
        Connection library;
        library.Open(path, QString(), Connection::readWriteCreate);
        KeyedTree tree;
        addRationRoot(&tree);
        Recordset rows = library.OpenRecordset("SELECT * FROM DeSYB WHERE isdel=0 ORDER BY CH,ZH,JH,XH,MH;");
        addRationChapters(&tree, rows);
    });
}
