#include "tests/damage/Visitor.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <ctime>

#include "ration_browser/frmDekBrowser.h"

using namespace Qt::StringLiterals;

namespace {

/// Of the processor's time: how long a machine with other work takes tells nothing.
constexpr qint64 longestEventMs = TESSEL_SANITIZED ? 40'000 : 10'000;

}  // namespace

void Visitor::event(const char* what, const std::function<void()>& act) {
    EditorDriver::activate(m_window);
    const std::clock_t begin = std::clock();
    act();
    EditorDriver::settle();
    const qint64 taken = (std::clock() - begin) * 1000 / CLOCKS_PER_SEC;
    EXPECT_LT(taken, longestEventMs) << what;
    if (taken > m_slowest) {
        m_slowest = taken;
        m_slowestEvent = what;
    }
}

void Visitor::answer(QWidget* window) {
    if (auto* box = qobject_cast<QMessageBox*>(window)) {
        auto* yes = box->button(QMessageBox::Yes);
        if (yes && upTo(4) > 0) {
            QTest::mouseClick(yes, Qt::LeftButton);
            return;
        }
    } else if (auto* name = window->findChild<QLineEdit*>(u"txtContent"_s)) {
        EditorDriver::typeOver(name, u"新的'"_s.left(2 + upTo(2)));
        QTest::keyClick(name, Qt::Key_Return);
        return;
    }
    window->close();
}

void Visitor::walk(KeyedGrid* grid) {
    if (!grid->hasRows())
        return;
    event("click a row",
          [&] { m_driver.click(grid, grid->rowCount() - 1, grid->key(grid->model()->columnCount() - 1)); });
    for (const int key : {Qt::Key_Home, Qt::Key_Down, Qt::Key_PageDown, Qt::Key_Right})
        event("walk", [&] { m_driver.key(grid, key); });
}

void Visitor::lookAtDetails() {
    walk(m_driver.features());
    walk(m_driver.values());
    walk(m_driver.contents());
    for (QWidget* page : {static_cast<QWidget*>(m_driver.rule()), static_cast<QWidget*>(m_driver.content())})
        event("show a text", [&] { m_driver.showPage(page); });
}

void Visitor::look() {
    event("open all chapters", [&] { m_driver.run(1, 108); });
    const QList<KeyedTree::Node*> all = m_driver.tree()->nodes();
    const int nodes = static_cast<int>(all.size());
    int deepest = 0;
    while (deepest < nodes && KeyedTree::tag(all[deepest]).size() < 6)
        ++deepest;
    for (const int at : {0, upTo(qMax(nodes, 1)), nodes - 1, deepest}) {
        // What an earlier step showed may be gone.
        const QList<KeyedTree::Node*> now = m_driver.tree()->nodes();
        if (at < 0 || at >= now.size())
            continue;
        event("click a chapter", [&] { m_driver.click(now[at]); });
        if (at == deepest || upTo(2) > 0)
            walk(m_driver.bills());
    }
    lookAtDetails();
    const QString codes[] = {u"0"_s, u"01"_s, u"%"_s, u"'"_s};
    for (const QString& code : {QString(), codes[upTo(4)]}) {
        event("ask for bills", [&] {
            m_driver.typeQuery(code);
            m_driver.run(2, 202);
        });
        walk(m_driver.bills());
    }
    event("choose a profession", [&] {
        m_driver.showPage(m_driver.profession());
        m_driver.key(m_driver.profession(), upTo(2) > 0 ? Qt::Key_Down : Qt::Key_Home);
    });
    event("close all chapters", [&] { m_driver.run(1, 109); });
}

void Visitor::edit(KeyedGrid* grid) {
    if (!grid->hasRows())
        return;
    const int row = qMax(0, grid->row());
    const QString key = grid->key(upTo(grid->model()->columnCount()));
    const QString texts[] = {u"新"_s, QString(), u"a1-1"_s, u"1"_s, u"x'"_s};
    if (!key.isEmpty())
        m_driver.edit(grid, row, key, texts[upTo(5)]);
    // A rejected edit stays open.
    if (QWidget* box = grid->findChild<QWidget*>(u"cellEditor"_s); box && grid->isEditing())
        m_driver.key(box, Qt::Key_Escape);
}

void Visitor::work(int count) {
    struct Command {
        int host;
        int id;
    };
    static constexpr Command commands[] = {{1, 100}, {1, 101}, {1, 102}, {1, 103}, {1, 104}, {1, 105},
                                           {2, 104}, {2, 105}, {2, 200}, {2, 201}, {2, 400}, {2, 401},
                                           {2, 402}, {2, 403}, {3, 300}, {3, 301}, {4, 300}, {4, 301}};
    for (int i = 0; i < count && !isGone(); ++i) {
        ++m_worked;
        const int kind = upTo(static_cast<int>(std::size(commands)) + 8);
        if (kind < static_cast<int>(std::size(commands))) {
            event("command", [&] { m_driver.run(commands[kind].host, commands[kind].id); });
        } else if (kind % 2 > 0) {
            KeyedGrid* const grids[] = {m_driver.bills(), m_driver.features(), m_driver.values(), m_driver.contents()};
            event("edit a cell", [&] { edit(grids[upTo(4)]); });
        } else {
            QPlainTextEdit* box = upTo(2) > 0 ? m_driver.rule() : m_driver.content();
            event("edit a text", [&] {
                m_driver.typeInto(box, u"新的规则"_s);
                m_driver.key(box, Qt::Key_Tab);
            });
        }
        const int nodes = static_cast<int>(m_driver.tree()->nodes().size());
        if (nodes > 0 && upTo(3) == 0)
            event("click a chapter", [&] { m_driver.click(m_driver.tree()->nodes()[upTo(nodes)]); });
    }
}

void Visitor::browse() {
    auto* browser = frmDekBrowser::shared(m_driver.window());
    event("open the browser", [&] {
        KeyedGrid* grid = m_driver.contents();
        for (int row = 0; row < grid->rowCount() && grid->level(qMax(0, grid->row())) != 2; ++row)
            if (grid->level(row) == 2)
                grid->setCell(row, u"cont"_s);
        m_driver.showPage(grid);
        grid->setFocus();
        m_driver.key(grid, Qt::Key_F4);
        if (browser->isVisible())
            return;
        // There is no ration whose cell could open it.
        browser->setParetnForm(m_driver.editor());
        browser->setDekID(u"GD2018ZHDE01"_s);
        browser->show();
    });
    m_window = browser;
    for (const int key : {Qt::Key_Home, Qt::Key_Down}) {
        event("choose a ration library", [&] { m_driver.key(browser->cboDek(), key); });
        KeyedTree* tree = browser->tvRationContent();
        const QList<KeyedTree::Node*> nodes = tree->nodes();
        for (int i = 0; i < 3 && !nodes.isEmpty(); ++i) {
            KeyedTree::Node* node = nodes[upTo(static_cast<int>(nodes.size()))];
            event("click a ration chapter", [&] {
                tree->scrollToItem(node);
                QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, tree->visualItemRect(node).center());
            });
        }
        KeyedGrid* list = browser->grdDEB();
        if (list->hasRows())
            event("take a ration over", [&] {
                QTest::mouseDClick(list->viewport(), Qt::LeftButton, {},
                                   list->visualRect(list->model()->index(0, 1)).center());
            });
    }
    event("close the browser", [&] { m_driver.key(browser, Qt::Key_Escape); });
    m_window = m_driver.window();
}
