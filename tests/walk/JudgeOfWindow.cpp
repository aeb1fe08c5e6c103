// What the window must show: what a fresh load of the same file shows in a second editor with a connection of its own,
// placed on the same chapter or query, the same bill, feature and profession, but for what is prescribed.

#include "storage/Lookups.h"
#include "tests/walk/Judge.h"

void Judge::checkWindow() {
    const ModalAnswers noMessages;
    const Snapshot shown = snapshotOf(*m_driver.editor());
    load(shown);
    const Snapshot fresh = snapshotOf(*m_fresh);
    EXPECT_EQ(textOf(shown.tree), textOf(m_prescribed.tree.value_or(fresh.tree))) << "the tree";
    if (m_led.nodes != Nodes::Any)
        checkNodes(shown);
    compareBills(shown, fresh);
    compareDetails(shown, fresh);
    EXPECT_EQ(shown.boxesLocked, shown.bill < 0);
    EXPECT_EQ(shown.rule, shown.ofBill(BillCell::Rule).replace(u"\r\n"_s, u"\n"_s));
    EXPECT_EQ(shown.content, shown.ofBill(BillCell::Cont).replace(u"\r\n"_s, u"\n"_s));
    for (const KeyedGrid* grid : {m_driver.bills(), m_driver.contents(), m_driver.features(), m_driver.values()}) {
        const QString name = grid->objectName();
        EXPECT_EQ(grid->row() >= 0, grid->hasRows()) << qPrintable(name);
        EXPECT_EQ(grid->row(), m_led.rows.value(name, grid->row())) << qPrintable(name);
        EXPECT_FALSE(grid->isEditing()) << qPrintable(name);
        EXPECT_TRUE(grid->updatesEnabled()) << qPrintable(name);
    }
    EXPECT_EQ(shown.node, m_led.rows.value(u"tvSYB"_s, shown.node)) << "the selected chapter";
    if (m_led.blankRation) {
        EXPECT_TRUE(shown.ofContent(ContentCell::Level) == u"2" && shown.ofContent(ContentCell::ContDeID).isEmpty());
    }
    const QMap<int, bool> rules = enabled(shown);
    for (auto rule = rules.begin(); rule != rules.end(); ++rule)
        EXPECT_EQ(m_driver.isEnabled(rule.key() / 1000, rule.key() % 1000), *rule) << "command " << rule.key();
    EXPECT_FALSE(QFile::exists(m_driver.path() + u"-journal"_s)) << "something is uncommitted";
    EXPECT_EQ(m_driver.editor()->ormConn()->lookups().difference(), QString());
    m_last = shown;
}

/// Which commands have something to do, by host and id.
QMap<int, bool> Judge::enabled(const Snapshot& shown) const {
    const bool listsChapter = !shown.listsQuery;
    const bool bill = shown.bill >= 0;
    const bool unlocked = !m_prescribed.detailsLocked;
    const int level = shown.contentRow < 0 ? -1 : shown.ofContent(ContentCell::Level).toInt();
    return {
        {1100, listsChapter},
        {1101, shown.node >= 0 && shown.chapter.size() < 6},
        {1102, shown.node >= 0},
        {1103, shown.node >= 0},
        {1104, sibling(shown.tree, shown.node, -1) >= 0},
        {1105, sibling(shown.tree, shown.node, 1) >= 0},
        {1108, true},
        {1109, true},
        {2104, listsChapter && shown.bill > 0},
        {2105, listsChapter && bill && shown.bill + 1 < shown.bills.size()},
        {2200, listsChapter && shown.chapter.size() == 6},
        {2201, bill},
        {2202, true},
        {2400, bill},
        {2401, unlocked && (level == 0 || level == 1)},
        {2402, unlocked && level > 0},
        {2403, unlocked && level >= 0},
        {3300, bill},
        {3301, unlocked && shown.feature >= 0},
        {4300, unlocked && shown.ofFeature(FeatureCell::Type) == u"2"},
        {4301, unlocked && shown.value >= 0},
    };
}

/// Places a second editor as the window stands.
void Judge::load(const Snapshot& shown) {
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
        m_fresh->findChild<QLineEdit*>(u"CommandBars2.203"_s)->setText(m_query);
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

void Judge::compareBills(const Snapshot& shown, const Snapshot& fresh) {
    if (!m_prescribed.bills) {
        // Bills with one and the same code stand in no order of their own; a delete among results can leave such.
        EXPECT_EQ(columnOf(shown.bills, BillCell::Code), columnOf(fresh.bills, BillCell::Code));
        EXPECT_TRUE(std::is_permutation(shown.bills.begin(), shown.bills.end(), fresh.bills.begin(), fresh.bills.end()))
            << textOf(shown.bills) << "\nis not the bill list\n"
            << textOf(fresh.bills);
        return;
    }
    Rows expected;
    for (const QString& id : *m_prescribed.bills)
        expected << m_library.rows(u"SELECT ID,CodePrefix,Code,Name,Unit,Cont,Rule FROM tblBill WHERE ID=?"_s, {id});
    EXPECT_EQ(textOf(shown.bills), textOf(expected)) << "the bill list, in its prescribed order";
}

void Judge::compareDetails(const Snapshot& shown, Snapshot expected) {
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
