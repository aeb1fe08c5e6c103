#include "benchmarks/EditorWindow.h"

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QTimer>

#include "benchmarks/Comparison.h"
#include "benchmarks/generator/LibraryGenerator.h"
#include "editor/chapters/ChapterPane.h"
#include "editor/chapters/ChapterTree.h"
#include "editor/chapters/frmEditContent.h"

namespace {

/// Answers questions with Yes, and gives the name that is asked for, while `clock` is set, and starts it then.
class MessageWatch : public QObject {
public:
    using QObject::QObject;
    QElapsedTimer* clock = nullptr;

private:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::Show)
            return false;
        if (auto* box = qobject_cast<QMessageBox*>(watched)) {
            QTimer::singleShot(0, box, [this, box] {
                QAbstractButton* yes = box->button(QMessageBox::Yes);
                if (!clock || !yes)
                    qFatal("%s", qPrintable(box->text()));
                clock->start();
                yes->click();
            });
        } else if (auto* dialog = qobject_cast<frmEditContent*>(watched)) {
            QTimer::singleShot(0, dialog, [this, dialog] {
                auto* name = dialog->findChild<QLineEdit*>();
                name->setText(QLatin1String(givenName));
                clock->start();
                pressKey(name, Qt::Key_Return);
            });
        }
        return false;
    }
};

MessageWatch& messageWatch() {
    static auto* watch = new MessageWatch(qApp);
    return *watch;
}

double elapsedMs(const QElapsedTimer& clock) { return static_cast<double>(clock.nsecsElapsed()) / 1e6; }

}  // namespace

EditorWindow::EditorWindow(const QString& library) : m_editor(&m_mainWindow) {
    m_editor.setDBFilePath(library);
    m_editor.Form_Load();
    m_editor.resize(1366, 700);
    m_editor.show();
    QCoreApplication::processEvents();
}

void EditorWindow::listFullChapter() {
    ChapterPane* chapters = m_editor.chapterPane();
    chapters->tvSYB_NodeClick(chapters->tvSYB()->node(chapterKey(QLatin1String(fullChapter))));
    QCoreApplication::processEvents();
}

double EditorWindow::timed(const std::function<void()>& act) {
    return milliseconds([&] {
        act();
        QCoreApplication::processEvents();
    });
}

double EditorWindow::timedAfterAnswer(const std::function<void()>& act) {
    QElapsedTimer clock;
    messageWatch().clock = &clock;
    act();
    QCoreApplication::processEvents();
    messageWatch().clock = nullptr;
    return clock.isValid() ? elapsedMs(clock) : 0;
}

void pressKey(QWidget* widget, int key) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(widget, &press);
}

void failOnMessages() { qApp->installEventFilter(&messageWatch()); }
