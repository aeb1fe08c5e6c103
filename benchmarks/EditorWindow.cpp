#include "benchmarks/EditorWindow.h"

#include <QAbstractButton>
#include <QApplication>
#include <QLineEdit>
#include <QMessageBox>
#include <QMouseEvent>
#include <QTimer>

#include "app/controls/KeyedGrid.h"
#include "app/controls/KeyedTree.h"
#include "benchmarks/generator/LibraryGenerator.h"
#include "editor/chapters/ChapterPane.h"
#include "editor/frmEditor.h"
#include "storage/Connection.h"
#include "storage/Lookups.h"

using namespace Qt::StringLiterals;

namespace {

void pressKey(QWidget* widget, int key) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &press);
}

/// Answers questions with Yes, and gives the name that is asked for, while `clock` is set, and starts it again then.
class MessageWatch : public QObject {
public:
    using QObject::QObject;
    QElapsedTimer* clock = nullptr;

private:
    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* dialog = event->type() == QEvent::Show ? qobject_cast<QDialog*>(watched) : nullptr;
        if (!dialog || !dialog->isModal())
            return false;
        // When the dialog is shown it has an event loop of its own.
        QTimer::singleShot(0, dialog, [this, dialog] {
            const auto* box = qobject_cast<QMessageBox*>(dialog);
            QAbstractButton* yes = box ? box->button(QMessageBox::Yes) : nullptr;
            auto* name = box ? nullptr : dialog->findChild<QLineEdit*>();
            if (!clock || (!yes && !name))
                qFatal("%s", qPrintable(box ? box->text() : dialog->windowTitle()));
            if (name)
                name->setText(QLatin1String(givenName));
            clock->start();
            yes ? yes->click() : pressKey(name, Qt::Key_Return);
        });
        return false;
    }
};

MessageWatch& messageWatch() {
    static auto* watch = new MessageWatch(qApp);
    return *watch;
}

}  // namespace

EditorWindow::EditorWindow(const QString& library) : m_editor(std::make_unique<frmEditor>(&m_mainWindow)) {
    m_editor->setDBFilePath(library);
    m_editor->Form_Load();
    m_editor->resize(1366, 700);
    m_editor->show();
    settle();
    // What a user's pause does.
    while (m_editor->ormConn()->lookups().fillSlice())
        settle();
}

EditorWindow::~EditorWindow() = default;

void EditorWindow::clickNode(QTreeWidgetItem* node) {
    auto* tree = m_editor->findChild<KeyedTree*>(u"tvSYB"_s);
    tree->scrollToItem(node);
    const QPointF place = tree->visualItemRect(node).center();
    for (const auto type : {QEvent::MouseButtonPress, QEvent::MouseButtonRelease}) {
        const Qt::MouseButtons held = type == QEvent::MouseButtonPress ? Qt::LeftButton : Qt::NoButton;
        QMouseEvent event(type, place, tree->viewport()->mapToGlobal(place), Qt::LeftButton, held, Qt::NoModifier);
        QCoreApplication::sendEvent(tree->viewport(), &event);
    }
}

void EditorWindow::clickChapter(const QString& code) {
    const auto* tree = m_editor->findChild<KeyedTree*>(u"tvSYB"_s);
    clickNode(code.isEmpty() ? tree->firstNode() : tree->node(u'K' + code));
}

void EditorWindow::listFullChapter() {
    clickChapter(QLatin1String(fullChapter));
    settle();
}

void EditorWindow::clickChapters(int count) {
    const auto nodes = m_editor->findChild<KeyedTree*>(u"tvSYB"_s)->nodes();
    for (QTreeWidgetItem* node : nodes.first(std::min<qsizetype>(count, nodes.size()))) {
        clickNode(node);
        settle();
    }
}

void EditorWindow::rebuildTree() { m_editor->chapterPane()->CreateTvwSYB(); }

void EditorWindow::press(const char* control, int key) {
    pressKey(m_editor->findChild<QWidget*>(QLatin1String(control)), key);
}

void EditorWindow::edit(KeyedGrid* grid, int row, const QString& key, const QString& text) {
    grid->setCell(row, key);
    pressKey(grid, Qt::Key_F2);
    auto* editor = grid->findChild<QLineEdit*>(u"cellEditor"_s);
    editor->setText(text);
    pressKey(editor, Qt::Key_Return);
}

void EditorWindow::search(const QString& text) {
    auto* box = m_editor->findChild<QLineEdit*>(u"CommandBars2.203"_s);
    box->setText(text);
    pressKey(box, Qt::Key_Return);
}

void EditorWindow::command(int host, int id) { m_editor->commandBars(host)->execute(id); }

void EditorWindow::undo() { m_editor->undo(); }

void EditorWindow::redo() { m_editor->redo(); }

KeyedGrid* EditorWindow::grid(const char* name) const { return m_editor->findChild<KeyedGrid*>(QLatin1String(name)); }

double EditorWindow::timed(const std::function<void()>& act) {
    QElapsedTimer clock;
    messageWatch().clock = &clock;
    clock.start();
    act();
    settle();
    messageWatch().clock = nullptr;
    return static_cast<double>(clock.nsecsElapsed()) / 1e6;
}

void EditorWindow::settle() { QCoreApplication::processEvents(); }

void failOnMessages() { qApp->installEventFilter(&messageWatch()); }
