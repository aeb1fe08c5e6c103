#include <gtest/gtest.h>

#include <QApplication>
#include <QCursor>
#include <QFile>
#include <QGenericPlugin>
#include <QMessageBox>
#include <QTimer>
#include <cstdio>
#include <cstdlib>

#include "tests/kill/Orders.h"
#include "tests/support/FaultyDisk.h"
#include "tests/support/ModalAnswers.h"
#include "tests/walk/Judge.h"

namespace {

/// Waits for the main window with its library, does what was ordered, one step each time the program is idle, and
/// closes the program.
class User : public QObject {
public:
    explicit User(Orders orders) : m_orders(std::move(orders)), m_journal(m_orders.journal) {
        disk();
        m_journal.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered);
        if (m_orders.checked)
            disk().whenChanged([this] { noteContent(); });
        next(&User::begin);
    }

private:
    /// Below every file that is opened, to the end of the process.
    static FaultyDisk& disk() {
        static auto* const one = new FaultyDisk;
        return *one;
    }

    void next(void (User::*act)()) { QTimer::singleShot(0, this, act); }

    void note(const QString& line) { m_journal.write(line.toUtf8() + '\n'); }

    void noteContent() {
        // While something is uncommitted the file holds what it held before.
        if (QFile::exists(m_orders.library + u"-journal"_s))
            return;
        const QString content = digestOf(m_orders.library);
        if (content != m_content && !content.isEmpty())
            note(u"content "_s + content);
        m_content = content;
    }

    void begin() {
        for (QWidget* window : QApplication::topLevelWidgets()) {
            auto* main = qobject_cast<frmMain*>(window);
            if (main && main->isVisible() && main->activeEditor())
                m_driver = std::make_unique<EditorDriver>(main, m_orders.library);
        }
        if (!m_driver) {
            QTimer::singleShot(5, this, &User::begin);
            return;
        }
        // Nothing under the mouse takes part.
        QCursor::setPos(QPoint(0, 0));
        m_user = std::make_unique<RandomUser>(*m_driver, m_orders.seed, RandomUser::Habits());
        if (m_orders.checked) {
            m_judge = std::make_unique<Judge>(*m_driver, *m_user);
            noteContent();
        }
        disk().set({.kinds = FaultyDisk::Changes,
                    .at = m_orders.endAt,
                    .lasting = true,
                    .endsProcess = true,
                    .halfWritten = m_orders.endAt % 2 == 0});
        next(&User::step);
    }

    void step() {
        if (m_done == m_orders.steps) {
            next(&User::leave);
            return;
        }
        ++m_done;
        note(u"begin"_s);
        m_user->step();
        if (m_orders.checked)
            noteContent();
        if (::testing::UnitTest::GetInstance()->Failed()) {
            note(u"wrong at step %1: %2"_s.arg(m_done).arg(m_user->story().replace(u'\n', u';')));
            std::fflush(nullptr);
            std::_Exit(1);
        }
        note(u"end"_s);
        next(&User::step);
    }

    void leave() {
        note(u"changes %1"_s.arg(disk().operations()));
        m_judge.reset();
        m_user.reset();
        ModalAnswers answers;
        answers.press(QMessageBox::Yes);
        m_driver->window()->commandBars()->execute(262);
        note(u"done"_s);
    }

    const Orders m_orders;
    QFile m_journal;
    QString m_content;
    int m_done = 0;
    std::unique_ptr<EditorDriver> m_driver;
    std::unique_ptr<RandomUser> m_user;
    std::unique_ptr<Judge> m_judge;
};

}  // namespace

/// Brings the random user into the unmodified program, as a plugin of its toolkit that QT_QPA_GENERIC_PLUGINS names.
class UserPlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "UserPlugin.json")

public:
    QObject* create(const QString&, const QString&) override {
        return new User(Orders::fromText(qEnvironmentVariable(Orders::variable)));
    }
};

#include "UserPlugin.moc"
