#include "tests/support/EditorDriver.h"

#include "app/base/UserEvent.h"
#include "tests/support/Typing.h"

EditorDriver::EditorDriver(const QString& path) : m_path(path) {
    makeWindow();
    if (!path.isEmpty())
        open();
}

void EditorDriver::makeWindow() {
    m_own = std::make_unique<frmMain>();
    m_main = m_own.get();
    m_main->MDIForm_Load();
    m_main->resize(1366, 768);
    m_main->show();
    activate();
}

void EditorDriver::open() {
    m_main->LoadBillDB(m_path);
    settle();
    ASSERT_TRUE(editor());
    if (m_own)
        pragma("PRAGMA synchronous=OFF");
}

bool EditorDriver::close(Closing way) {
    if (way == Closing::Command) {
        m_main->commandBars()->execute(260);
    } else if (way == Closing::Key) {
        QWidget* focus = QApplication::focusWidget();
        QTest::keyClick(focus ? focus : m_main, Qt::Key_W, Qt::ControlModifier);
    } else if (way == Closing::Child) {
        editor()->parentWidget()->close();
    } else {
        m_main->close();
        // Closing it has ended the program: nothing modal would open any more until the event loop is entered anew.
        QTimer::singleShot(0, qApp, &QCoreApplication::quit);
        QApplication::exec();
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    settle();
    const bool closed = std::ranges::none_of(
        m_main->editors(), [this](const QString& left) { return left == m_path; }, &frmEditor::DBFilePath);
    if (way == Closing::Main)
        makeWindow();
    return closed;
}

void EditorDriver::showPage(QWidget* pane) const {
    auto* tabs = editor()->findChild<QTabWidget*>(u"tabBillDetail"_s);
    for (int page = 0; page < tabs->count(); ++page)
        if (page != tabs->currentIndex() && (tabs->widget(page) == pane || tabs->widget(page)->isAncestorOf(pane)))
            QTest::mouseClick(tabs->tabBar(), Qt::LeftButton, {}, tabs->tabBar()->tabRect(page).center());
}

void EditorDriver::clickItem(QAbstractItemView* view, const QModelIndex& item, Qt::MouseButton button) {
    view->scrollTo(item);
    QTest::mouseClick(view->viewport(), button, {}, view->visualRect(item).center());
}

void EditorDriver::click(KeyedGrid* grid, int row, const QString& key, Qt::MouseButton button) const {
    showPage(grid);
    clickItem(grid, grid->model()->index(row, grid->column(key)), button);
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
    if (text.contains(u'\n'))
        return pasteOver(editor, text);
    QTest::keySequence(editor, u"Ctrl+A, Del"_s);
    typeText(editor, text);
}

void EditorDriver::pasteOver(QWidget* editor, const QString& text) {
    QApplication::clipboard()->setText(text);
    QTest::keySequence(editor, u"Ctrl+A, Del, Ctrl+V"_s);
}

bool EditorDriver::edit(KeyedGrid* grid, int row, const QString& key, const QString& text, int end) const {
    QWidget* box = openEditor(grid, row, key);
    if (!box)
        return false;
    typeOver(box, text);
    QTest::keyClick(box, static_cast<Qt::Key>(end));
    return true;
}

QComboBox* EditorDriver::openList(KeyedGrid* grid, int row, const QString& key, bool byMouse) const {
    if (!byMouse)
        return qobject_cast<QComboBox*>(openEditor(grid, row, key));
    click(grid, row, key);
    // On the arrow of the cell the click has opened it already.
    if (!grid->isEditing())
        QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, grid->visualRect(grid->currentIndex()).center());
    return grid->findChild<QComboBox*>(u"cellEditor"_s);
}

void EditorDriver::choose(QComboBox* choice, int entry, bool byMouse) {
    QAbstractItemView* list = choice->view();
    const QModelIndex wanted = choice->model()->index(entry, 0);
    EXPECT_TRUE(list->isVisible());
    if (byMouse) {
        clickItem(list, wanted);
    } else {
        list->setCurrentIndex(wanted);
        QTest::keyClick(list, Qt::Key_Return);
    }
}

void EditorDriver::runByMouse(int host, int id) const {
    const QAction* command = editor()->commandBars(host)->action(id);
    for (auto* button : editor()->findChildren<QToolButton*>())
        if (button->defaultAction() == command && button->isVisible())
            return QTest::mouseClick(button, Qt::LeftButton);
    QAbstractItemView* const panes[] = {tree(), id < 400 ? bills() : contents(), features(), values()};
    QAbstractItemView* pane = panes[host - 1];
    showPage(pane);
    clickItem(pane, pane->currentIndex(), Qt::RightButton);
    QCoreApplication::processEvents();
    auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
    for (QAction* entry : menu ? menu->actions() : QList<QAction*>())
        if (entry->objectName().endsWith(u".%1"_s.arg(id)))
            return QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(entry).center());
    // What stands in no menu is run as its key would.
    if (menu)
        QTest::keyClick(menu, Qt::Key_Escape);
    run(host, id);
}

void EditorDriver::typeInto(QWidget* box, const QString& text) const {
    showPage(box);
    box->setFocus();
    EXPECT_TRUE(box->hasFocus());
    typeOver(box, text);
}

std::function<void(QWidget*)> EditorDriver::entering(const QString& box, const QStringList& texts) {
    return [=](QWidget* dialog) {
        auto* line = dialog->findChild<QLineEdit*>(box);
        ASSERT_TRUE(line);
        for (const QString& text : texts) {
            activate(dialog);
            line->setFocus();
            typeOver(line, text);
            QTest::keyClick(line, Qt::Key_Return);
        }
        if (dialog->isVisible())
            QTest::keyClick(line, Qt::Key_Escape);
    };
}

void EditorDriver::activate(QWidget* window) {
    // What a closed box or list has still to tell comes first.
    QCoreApplication::processEvents();
    EXPECT_TRUE(makeActive(window));
}

void EditorDriver::comeBack() {
    QWidget other;
    other.show();
    activate(&other);
    activate();
    settle();
}

Snapshot EditorDriver::shownAfresh() const {
    frmEditor fresh(m_main);
    fresh.setDBFilePath(m_path);
    EXPECT_TRUE(fresh.Form_Load());
    fresh.contentPane()->cboProfession()->setCurrentIndex(profession()->currentIndex());
    fresh.chapterPane()->tvSYB_NodeClick(fresh.chapterPane()->tvSYB()->node(u'K' + chapter()));
    fresh.billPane()->grdBillList()->setRow(bills()->row());
    fresh.featurePane()->grdSpec()->setRow(features()->row());
    return snapshotOf(fresh);
}

void EditorDriver::settle() {
    { const UserEvent::Scope event; }
    QCoreApplication::processEvents();
}
