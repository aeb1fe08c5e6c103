#include "tests/fuzz/Walk.h"

#include <QCoreApplication>

#include "app/base/Guarded.h"
#include "app/controls/KeyedGrid.h"
#include "app/controls/KeyedTree.h"
#include "editor/bills/BillPane.h"
#include "editor/bills/FeaturePane.h"
#include "editor/chapters/ChapterPane.h"
#include "editor/common/LibraryDocument.h"
#include "editor/contents/ContentPane.h"
#include "editor/contents/RationLookup.h"
#include "ration_browser/RationTree.h"
#include "storage/Connection.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype mostChapters = 6;
constexpr int mostRows = 4;

/// The panes of an editor window, without the window.
struct Panes {
    LibraryDocument library;
    ChapterPane chapters{library};
    BillPane bills{library};
    ContentPane contents{library};
    FeaturePane features{library};

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
    // Making the panes takes longer than everything that is done with them.
    static auto* panes = new Panes;
    LibraryDocument& library = panes->library;
    library.setDefaultRationLibrary(u"GD2018ZHDE01"_s);
    if (!library.open(path) || !succeeds([&] { library.connection()->OpenRecordset("PRAGMA synchronous=OFF"); }))
        return library.close();
    panes->chapters.CreateTvwSYB();
    panes->chapters.expandAll();
    const QList<KeyedTree::Node*> nodes = panes->chapters.tvSYB()->nodes();
    for (qsizetype i = 0; i < qMin(nodes.size(), mostChapters); ++i) {
        panes->chapters.tvSYB_NodeClick(nodes[nodes.size() - 1 - i]);
        panes->look();
    }
    library.showQuery(u"0"_s);
    panes->look();
    if (!nodes.isEmpty())
        panes->chapters.tvSYB_NodeClick(nodes.last());
    panes->work();
    // What was not committed is, as after an event of the user.
    QCoreApplication::processEvents();
    library.showChapter({});
    library.setCurrentBill(std::nullopt);
    library.close();
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
