#include "tests/support/EditorDriver.h"

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>

#include <QComboBox>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>

#include <QPlainTextEdit>
#include <QTabBar>
#include <QTabWidget>
#include <QTest>
#include <QToolButton>

#include "app/base/UserEvent.h"
#include "editor/bills/BillPane.h"
#include "editor/bills/FeaturePane.h"
#include "editor/chapters/ChapterPane.h"
#include "editor/contents/ContentPane.h"
#include "tests/support/Typing.h"

using namespace Qt::StringLiterals;

EditorDriver::EditorDriver(const QString& path)
    : m_path(path), m_own(std::make_unique<frmMain>()), m_main(m_own.get()) {
    m_main->MDIForm_Load();
    m_main->resize(1366, 768);
    m_main->show();
    activate();
    open();
}

EditorDriver::EditorDriver(frmMain* window, const QString& path) : m_path(path), m_main(window) {}

void EditorDriver::open() {
    m_main->LoadBillDB(m_path);
    settle();
    ASSERT_TRUE(editor());
    if (m_own)
        pragma("PRAGMA synchronous=OFF");
}

void EditorDriver::close() {
    m_main->commandBars()->execute(260);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    settle();
    for (const frmEditor* left : m_main->editors())
        EXPECT_NE(left->DBFilePath(), m_path);
}

void EditorDriver::bringToFront() const {
    for (QMdiSubWindow* child : m_main->findChildren<QMdiSubWindow*>()) {
        const auto* shown = qobject_cast<frmEditor*>(child->widget());
        if (shown && shown->DBFilePath() == m_path)
            child->mdiArea()->setActiveSubWindow(child);
    }
    settle();
}

KeyedTree* EditorDriver::tree() const { return editor()->chapterPane()->tvSYB(); }
KeyedGrid* EditorDriver::bills() const { return editor()->billPane()->grdBillList(); }
KeyedGrid* EditorDriver::features() const { return editor()->featurePane()->grdSpec(); }
KeyedGrid* EditorDriver::values() const { return editor()->featurePane()->grdSpecEnum(); }
KeyedGrid* EditorDriver::contents() const { return editor()->contentPane()->grdConcent(); }
QPlainTextEdit* EditorDriver::rule() const { return editor()->billPane()->txtRule(); }
QPlainTextEdit* EditorDriver::content() const { return editor()->billPane()->txtContent(); }
QComboBox* EditorDriver::profession() const { return editor()->contentPane()->cboProfession(); }

QLineEdit* EditorDriver::search() const { return editor()->findChild<QLineEdit*>(u"CommandBars2.203"_s); }

QString EditorDriver::chapter() const { return KeyedTree::tag(tree()->selectedNode()); }

void EditorDriver::showPage(QWidget* pane) const {
    auto* tabs = editor()->findChild<QTabWidget*>(u"tabBillDetail"_s);
    int page = 0;
    while (page < tabs->count() && tabs->widget(page) != pane && !tabs->widget(page)->isAncestorOf(pane))
        ++page;
    if (page < tabs->count() && page != tabs->currentIndex())
        QTest::mouseClick(tabs->tabBar(), Qt::LeftButton, {}, tabs->tabBar()->tabRect(page).center());
}

void EditorDriver::click(KeyedTree::Node* node, Qt::MouseButton button) const {
    tree()->scrollToItem(node);
    QTest::mouseClick(tree()->viewport(), button, {}, tree()->visualItemRect(node).center());
}

void EditorDriver::click(KeyedGrid* grid, int row, const QString& key, Qt::MouseButton button) const {
    showPage(grid);
    const QModelIndex cell = grid->model()->index(row, grid->column(key));
    grid->scrollTo(cell);
    QTest::mouseClick(grid->viewport(), button, {}, grid->visualRect(cell).center());
}

void EditorDriver::key(QWidget* widget, int key, Qt::KeyboardModifiers modifiers) const {
    QTest::keyClick(widget, static_cast<Qt::Key>(key), modifiers);
}

QWidget* EditorDriver::openEditor(KeyedGrid* grid, int row, const QString& key) const {
    showPage(grid);
    grid->setFocus();
    // A click would open or close a node or tick a check box; the keyboard only goes there.
    grid->setCell(row, key);
    QTest::keyClick(grid, Qt::Key_F2);
    return grid->isEditing() ? grid->findChild<QWidget*>(u"cellEditor"_s) : nullptr;
}

void EditorDriver::typeOver(QWidget* editor, const QString& text) {
    QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
    if (text.contains(u'\n')) {
        QApplication::clipboard()->setText(text);
        QTest::keyClick(editor, Qt::Key_V, Qt::ControlModifier);
        return;
    }
    QTest::keyClick(editor, Qt::Key_Delete);
    typeText(editor, text);
}

bool EditorDriver::edit(KeyedGrid* grid, int row, const QString& key, const QString& text, int end) const {
    QWidget* box = openEditor(grid, row, key);
    if (!box)
        return false;
    typeOver(box, text);
    QTest::keyClick(box, static_cast<Qt::Key>(end));
    return true;
}

bool EditorDriver::choose(KeyedGrid* grid, int row, const QString& key, const QString& value, bool byMouse) const {
    if (byMouse) {
        click(grid, row, key);
        QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, grid->visualRect(grid->currentIndex()).center());
    }
    auto* choice =
        byMouse ? grid->findChild<QComboBox*>(u"cellEditor"_s) : qobject_cast<QComboBox*>(openEditor(grid, row, key));
    if (!choice)
        return false;
    QAbstractItemView* list = choice->view();
    const QModelIndex entry = choice->model()->index(choice->findData(value), 0);
    EXPECT_TRUE(list->isVisible());
    if (byMouse) {
        list->scrollTo(entry);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(entry).center());
    } else {
        list->setCurrentIndex(entry);
        QTest::keyClick(list, Qt::Key_Return);
    }

    EXPECT_FALSE(grid->isEditing());
    return true;
}

void EditorDriver::runByMouse(int host, int id) const {
    const QAction* command = editor()->commandBars(host)->action(id);
    for (auto* button : editor()->findChildren<QToolButton*>())
        if (button->defaultAction() == command && button->isVisible())
            return QTest::mouseClick(button, Qt::LeftButton);
    QAbstractItemView* const panes[] = {tree(), id < 400 ? bills() : contents(), features(), values()};
    QAbstractItemView* pane = panes[host - 1];
    showPage(pane);
    pane->scrollTo(pane->currentIndex());
    const QRect row = pane->visualRect(pane->currentIndex());
    QTest::mouseClick(pane->viewport(), Qt::RightButton, {}, row.isValid() ? row.center() : QPoint(5, 5));
    QCoreApplication::processEvents();
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    ASSERT_TRUE(menu) << host << ' ' << id;
    for (QAction* entry : menu->actions())
        if (entry->objectName().endsWith(u".%1"_s.arg(id)))
            return QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(entry).center());
    // What stands in no menu is run as its key would.
    QTest::keyClick(menu, Qt::Key_Escape);
    run(host, id);
}

void EditorDriver::typeInto(QPlainTextEdit* box, const QString& text) const {
    showPage(box);
    box->setFocus();
    EXPECT_TRUE(box->hasFocus());
    typeOver(box, text);
}

void EditorDriver::typeQuery(const QString& text) const {
    search()->setFocus();
    typeOver(search(), text);
}

bool EditorDriver::closeMenu() {
    // The menu must have become the active window before it can stop being it.
    QCoreApplication::processEvents();
    QWidget* menu = QApplication::activePopupWidget();
    if (!menu)
        return false;
    QTest::keyClick(menu, Qt::Key_Escape);
    EXPECT_FALSE(menu->isVisible());
    activate();
    return true;
}

void EditorDriver::activate(QWidget* window) {
    // What a closed box or list has still to tell comes first.
    QCoreApplication::processEvents();
    EXPECT_TRUE(makeActive(window));
}

void EditorDriver::settle() {
    { const UserEvent::Scope event; }
    QCoreApplication::processEvents();
}

void EditorDriver::pragma(const SqlText& statement) const { editor()->ormConn()->OpenRecordset(statement); }
