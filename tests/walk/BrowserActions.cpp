// How the user chooses rations in the ration browser.

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QTest>

#include "ration_browser/frmDekBrowser.h"
#include "tests/walk/RandomUser.h"

using namespace Qt::StringLiterals;

using namespace ContentCell;

/// Chooses a library now and then, and a chapter.
void RandomUser::chooseInBrowser(frmDekBrowser* browser) {
    if (chance(30)) {
        const int before = browser->cboDek()->currentIndex();
        m_driver.key(browser->cboDek(), oneOf({Qt::Key_Up, Qt::Key_Down}));
        const QString path = m_rations.library(browser->cboDek()->currentData().toString()).browserPath;
        if (browser->cboDek()->currentIndex() != before && !QFile::exists(path))
            m_expected << u"提示: "_s + path + u" 文件不存在!"_s;
    }
    const KeyedTree* tree = browser->tvRationContent();
    const QList<KeyedTree::Node*> nodes = tree->nodes();
    if (nodes.isEmpty())
        return;
    KeyedTree::Node* node = nodes[upTo(static_cast<int>(nodes.size()))];
    browser->tvRationContent()->scrollToItem(node);
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(node).center());
}

void RandomUser::useBrowser() {
    auto* browser = frmDekBrowser::shared(m_driver.window());
    if (chance(60) && goToRation()) {
        const QString library = contentLine()[DekName];
        say(u"browse rations of "_s + library);
        m_driver.showPage(m_driver.contents());
        m_driver.contents()->setFocus();
        m_driver.contents()->setCell(m_driver.contents()->row(), u"cont"_s);
        m_driver.key(m_driver.contents(), Qt::Key_F4);
        EXPECT_EQ(browser->isVisible(), browser->isVisible() || !m_prescribed.detailsLocked);
        if (m_prescribed.detailsLocked)
            return;
        EXPECT_EQ(browser->DekID(), library);
        const QString path = m_rations.library(browser->cboDek()->currentData().toString()).browserPath;
        if (!QFile::exists(path))
            m_expected << u"提示: "_s + path + u" 文件不存在!"_s;
    }
    if (!browser->isVisible())
        return;
    EditorDriver::activate(browser);
    chooseInBrowser(browser);
    KeyedGrid* list = browser->grdDEB();
    const int level = contentLevel();
    enum Way { DoubleClick, Enter, Insert, Replace, Hide };
    const Way way = oneOf({DoubleClick, Enter, Insert, Replace, Replace, Hide});
    if (way == Hide || !list->hasRows()) {
        m_driver.key(browser, Qt::Key_Escape);
        EXPECT_FALSE(browser->isVisible());
        m_driver.activate();
        return;
    }
    const int row = upTo(list->rowCount());
    list->setRow(row);
    const QString code = list->text(row, u"DEH"_s);
    const QString library = browser->cboDek()->currentData().toString();
    const bool acts = browser->ParetnForm() == m_driver.editor() && !m_prescribed.detailsLocked &&
                      (way == Replace ? level == 2 : level > 0);
    say(u"%1 ration %2 of %3 from the browser"_s.arg(way == Replace ? u"replace by"_s : u"insert"_s, code, library));
    if (way == DoubleClick) {
        const QRect cell = list->visualRect(list->currentIndex());
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, cell.center());
    } else if (way == Enter) {
        list->setFocus();
        m_driver.key(list, Qt::Key_Return);
    } else {
        browser->CommandBars1()->execute(way == Insert ? 259 : 260);
    }
    m_driver.activate();
    if (!acts)
        return;
    const QString rejection = m_rations.rejection(code, library);
    if (!rejection.isEmpty()) {
        m_expected << rejection;
        return;
    }
    const QStringList line = contentLine();
    EXPECT_EQ(line[Level], u"2"_s);
    // A row that was written has its id by now; only one that was not is still blank.
    if (failed() || line[ContDeID].isEmpty()) {
        if (cannotBeWritten(line, code, library))
            expectError("ModDBOperator.ExecuteDDL");
        return;
    }
    rationWritten(line[ContDeID]);
    if (code != code.toUpper())
        m_prescribed.codeAsItCame[line[ContDeID]] = line[Cont];
}
