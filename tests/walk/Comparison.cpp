#include "tests/walk/Comparison.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <algorithm>

#include "editor/bills/BillPane.h"
#include "editor/bills/FeaturePane.h"
#include "editor/chapters/ChapterPane.h"
#include "editor/common/LibraryDocument.h"
#include "editor/contents/ContentPane.h"
#include "storage/Connection.h"
#include "storage/Lookups.h"
#include "tests/support/ModalAnswers.h"

using namespace Qt::StringLiterals;

namespace {

Rows sorted(Rows rows) {
    std::sort(rows.begin(), rows.end());
    return rows;
}

QString lines(QString text) { return text.replace(u"\r\n"_s, u"\n"_s); }

}  // namespace

Comparison::Comparison(EditorDriver& driver, const Prescribed& prescribed)
    : m_driver(driver), m_prescribed(prescribed) {}

void Comparison::check(const QString& query) {
    const ModalAnswers noMessages;
    const Snapshot shown = snapshotOf(*m_driver.editor());
    load(shown, query);
    const Snapshot fresh = snapshotOf(*m_fresh);
    EXPECT_EQ(textOf(shown.tree), textOf(m_prescribed.tree.value_or(fresh.tree))) << "the tree";
    compareBills(shown, fresh);
    compareDetails(shown, fresh);
    EXPECT_EQ(shown.boxesLocked, shown.bill < 0);
    EXPECT_EQ(shown.rule, lines(shown.ofBill(BillCell::Rule)));
    EXPECT_EQ(shown.content, lines(shown.ofBill(BillCell::Cont)));
    for (const KeyedGrid* grid : {m_driver.bills(), m_driver.contents(), m_driver.features(), m_driver.values()}) {
        EXPECT_EQ(grid->row() >= 0, grid->hasRows()) << qPrintable(grid->objectName());
        EXPECT_FALSE(grid->isEditing()) << qPrintable(grid->objectName());
        EXPECT_TRUE(grid->updatesEnabled()) << qPrintable(grid->objectName());
    }
    EXPECT_FALSE(QFile::exists(m_driver.path() + u"-journal"_s)) << "something is uncommitted";
    EXPECT_EQ(m_driver.editor()->ormConn()->lookups().difference(), QString());
    m_last = shown;
}

/// Places a second editor as the window stands.
void Comparison::load(const Snapshot& shown, const QString& query) {
    // Most of the time its panes are only loaded anew; now and then the whole window is.
    constexpr int renewedEvery = 40;
    if (m_checks++ % renewedEvery == 0) {
        m_fresh = std::make_unique<frmEditor>(m_driver.window());
        m_fresh->setDBFilePath(m_driver.path());
        EXPECT_TRUE(m_fresh->Form_Load());
    } else {
        m_fresh->chapterPane()->CreateTvwSYB();
    }
    BillPane* bills = m_fresh->billPane();
    bills->clearList();
    m_fresh->contentPane()->cboProfession()->setCurrentIndex(m_driver.profession()->currentIndex());
    if (shown.listsQuery) {
        m_fresh->findChild<QLineEdit*>(u"CommandBars2.203"_s)->setText(query);
        m_fresh->commandBars(2)->execute(202);
    } else if (KeyedTree::Node* node = m_fresh->chapterPane()->tvSYB()->node(u'K' + shown.chapter)) {
        m_fresh->chapterPane()->tvSYB_NodeClick(node);
    } else if (shown.listsBills()) {
        bills->LoadBill(shown.chapter);
    }
    int row = bills->grdBillList()->rowCount() - 1;
    while (row >= 0 && bills->grdBillList()->text(row, u"id"_s) != m_prescribed.detailsOf)
        --row;
    if (row >= 0 && shown.bill >= 0) {
        bills->grdBillList()->setRow(row);
    } else {
        m_fresh->contentPane()->LoadBillContent(m_prescribed.detailsOf.toLongLong());
        m_fresh->featurePane()->LoadBillSpec(m_prescribed.detailsOf.toLongLong());
    }
    m_fresh->featurePane()->grdSpec()->setRow(shown.feature);
}

void Comparison::compareBills(const Snapshot& shown, const Snapshot& fresh) {
    if (!m_prescribed.bills) {
        // Bills with one and the same code stand in no order of their own; a delete among results can leave such.
        EXPECT_EQ(columnOf(shown.bills, BillCell::Code), columnOf(fresh.bills, BillCell::Code));
        EXPECT_EQ(textOf(sorted(shown.bills)), textOf(sorted(fresh.bills))) << "the bill list";
        return;
    }
    OtherProgram file(m_driver.path());
    Rows expected;
    for (const QString& id : *m_prescribed.bills)
        expected << file.rows(u"SELECT ID,CodePrefix,Code,Name,Unit,Cont,Rule FROM tblBill WHERE ID=?"_s, {id});
    EXPECT_EQ(textOf(shown.bills), textOf(expected)) << "the bill list, in its prescribed order";
}

void Comparison::compareDetails(const Snapshot& shown, Snapshot expected) {
    EXPECT_EQ(m_driver.editor()->library().isShownBillGone(), m_prescribed.detailsLocked);
    if (shown.bill >= 0 || shown.listsBills()) {
        EXPECT_EQ(m_prescribed.detailsOf, shown.bill < 0 ? u"0"_s : shown.ofBill(BillCell::Id));
    }
    Rows contents = shown.contents;
    if (m_prescribed.detailsLocked) {
        expected = m_last;
        // Another feature of a bill that is gone: its values went with it.
        if (shown.feature != m_last.feature)
            expected.values.clear();
    }
    if (m_prescribed.contentsEmptied)
        expected.contents.clear();
    if (!m_prescribed.detailsLocked)
        m_prescribed.applyToContents(expected.contents, contents);
    EXPECT_EQ(textOf(contents), textOf(expected.contents)) << "the contents";
    EXPECT_EQ(textOf(shown.features), textOf(expected.features)) << "the features";
    EXPECT_EQ(textOf(shown.values), textOf(expected.values)) << "the values";
}
