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
#include "tests/support/ModalAnswers.h"

using namespace Qt::StringLiterals;

namespace {

KeyedGrid* billsOf(const frmEditor& editor) { return editor.billPane()->grdBillList(); }

/// Bills with one and the same code stand in no order of their own; a delete among results can leave such.
Rows withoutOrderOfEqualCodes(Rows rows) {
    auto begin = rows.begin();
    while (begin != rows.end()) {
        const auto end = std::find_if(
            begin, rows.end(), [&](const QStringList& row) { return row[BillCell::Code] != (*begin)[BillCell::Code]; });
        std::sort(begin, end);
        begin = end;
    }
    return rows;
}

QString lines(QString text) { return text.replace(u"\r\n"_s, u"\n"_s); }

}  // namespace

Comparison::Comparison(EditorDriver& driver, const Prescribed& prescribed)
    : m_driver(driver), m_prescribed(prescribed), m_last(snapshotOf(*driver.editor())) {}

frmEditor& Comparison::fresh() {
    // Most of the time its panes are only loaded anew; now and then the whole window is.
    constexpr int renewedEvery = 40;
    if (m_checks++ % renewedEvery == 0) {
        m_fresh = std::make_unique<frmEditor>(m_driver.window());
        m_fresh->setDBFilePath(m_driver.path());
        EXPECT_TRUE(m_fresh->Form_Load());
    } else {
        m_fresh->chapterPane()->CreateTvwSYB();
    }
    return *m_fresh;
}

void Comparison::check(const QString& query) {
    const ModalAnswers noMessages;
    const Snapshot shown = snapshotOf(*m_driver.editor());
    fresh();
    compareTree(shown);
    compareBills(shown, query);
    compareDetails(shown);
    compareBoxes(shown);
    for (const KeyedGrid* grid : {m_driver.bills(), m_driver.contents(), m_driver.features(), m_driver.values()}) {
        EXPECT_EQ(grid->row() >= 0, grid->hasRows()) << qPrintable(grid->objectName());
        EXPECT_FALSE(grid->isEditing()) << qPrintable(grid->objectName());
        EXPECT_TRUE(grid->updatesEnabled()) << qPrintable(grid->objectName());
    }
    EXPECT_FALSE(QFile::exists(m_driver.path() + u"-journal"_s)) << "something is uncommitted";
    m_last = shown;
}

void Comparison::look() { m_last = snapshotOf(*m_driver.editor()); }

void Comparison::compareTree(const Snapshot& shown) {
    const Rows expected = m_prescribed.tree.value_or(rowsOf(m_fresh->chapterPane()->tvSYB()));
    EXPECT_EQ(textOf(shown.tree), textOf(expected)) << "the tree";
}

void Comparison::compareBills(const Snapshot& shown, const QString& query) {
    BillPane* bills = m_fresh->billPane();
    bills->clearList();
    m_fresh->contentPane()->cboProfession()->setCurrentIndex(m_driver.profession()->currentIndex());
    const QString chapter = m_driver.chapter();
    if (m_driver.bills()->tag() == u"1"_s) {
        m_fresh->findChild<QLineEdit*>(u"CommandBars2.203"_s)->setText(query);
        m_fresh->commandBars(2)->execute(202);
    } else if (KeyedTree::Node* node = m_fresh->chapterPane()->tvSYB()->node(u'K' + chapter)) {
        m_fresh->chapterPane()->tvSYB_NodeClick(node);
    } else if (chapter.size() == 6) {
        bills->LoadBill(chapter);
    }
    if (!m_prescribed.bills) {
        EXPECT_EQ(textOf(withoutOrderOfEqualCodes(shown.bills)),
                  textOf(withoutOrderOfEqualCodes(rowsOf(bills->grdBillList()))))
            << "the bill list";
        return;
    }
    Rows expected;
    OtherProgram file(m_driver.path());
    for (const QString& id : *m_prescribed.bills)
        expected << file.rows(u"SELECT ID,IFNULL(CodePrefix,''),Code,IFNULL(Name,''),IFNULL(Unit,''),IFNULL(Cont,''),"
                              "IFNULL(Rule,'') FROM tblBill WHERE ID=?"_s,
                              {id});
    EXPECT_EQ(textOf(shown.bills), textOf(expected)) << "the bill list, in its prescribed order";
}

void Comparison::showBill(const QString& id) {
    KeyedGrid* bills = billsOf(*m_fresh);
    int row = bills->rowCount() - 1;
    while (row >= 0 && bills->text(row, u"id"_s) != id)
        --row;
    if (row >= 0 && m_driver.bills()->hasRows()) {
        bills->setRow(row);
    } else {
        m_fresh->contentPane()->LoadBillContent(id.toLongLong());
        m_fresh->featurePane()->LoadBillSpec(id.toLongLong());
    }
    m_fresh->featurePane()->grdSpec()->setRow(m_driver.features()->row());
}

void Comparison::compareDetails(Snapshot shown) {
    const int row = m_driver.bills()->row();
    const bool listsBills = m_driver.bills()->tag() == u"1"_s || m_driver.chapter().size() == 6;
    if (row >= 0 || listsBills) {
        EXPECT_EQ(m_prescribed.detailsOf, row < 0 ? u"0"_s : shown.bills[row][BillCell::Id]);
    }
    showBill(m_prescribed.detailsOf);
    Snapshot expected = snapshotOf(*m_fresh);
    if (m_prescribed.detailsLocked) {
        expected = m_last;
        // Another feature of a bill that is gone: its values went with it.
        if (m_driver.features()->row() != m_lastFeature)
            expected.values.clear();
    }
    m_lastFeature = m_driver.features()->row();
    if (m_prescribed.contentsEmptied)
        expected.contents.clear();
    EXPECT_EQ(m_driver.editor()->library().isShownBillGone(), m_prescribed.detailsLocked);
    if (!m_prescribed.detailsLocked)
        m_prescribed.applyToContents(expected.contents, shown.contents);
    EXPECT_EQ(textOf(shown.contents), textOf(expected.contents)) << "the contents";
    EXPECT_EQ(textOf(shown.features), textOf(expected.features)) << "the features";
    EXPECT_EQ(textOf(shown.values), textOf(expected.values)) << "the values";
}

void Comparison::compareBoxes(const Snapshot& shown) {
    const int row = m_driver.bills()->row();
    EXPECT_EQ(shown.boxesLocked, row < 0);
    EXPECT_EQ(shown.rule, row < 0 ? QString() : lines(shown.bills[row][BillCell::Rule]));
    EXPECT_EQ(shown.content, row < 0 ? QString() : lines(shown.bills[row][BillCell::Cont]));
}
