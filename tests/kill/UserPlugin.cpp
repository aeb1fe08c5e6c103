#include <cstdio>
#include <cstdlib>

#include "tests/kill/Orders.h"
#include "tests/support/FaultyDisk.h"
#include "tests/walk/Judge.h"

namespace {

/// Waits for the main window with its library, does what was ordered, one step each time the program is idle, and
/// closes the program.
class User : public QObject {
public:
    explicit User(Orders orders) : m_orders(std::move(orders)), m_journal(m_orders.journal) {
        // It does not wait for locks; two users must.
        if (m_orders.go.isEmpty())
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
        if (!m_driver)
            return QTimer::singleShot(5, this, &User::begin);
        // Nothing under the mouse takes part.
        QCursor::setPos(QPoint(0, 0));
        const bool alone = m_orders.go.isEmpty();
        m_user = std::make_unique<RandomUser>(*m_driver, m_orders.seed, RandomUser::Habits{alone, alone});
        if (!alone) {
            connect(&m_driver->editor()->library(), &LibraryDocument::said, this,
                    [this](const QString& text) { note(u"said "_s + text); });
            return rest();
        }
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
        if (m_done == m_orders.steps)
            return m_orders.go.isEmpty() ? next(&User::leave) : rest();
        ++m_done;
        note(u"begin"_s);
        m_orders.go.isEmpty() ? m_user->step() : stepBesideAnother();
        if (m_orders.checked)
            noteContent();
        endIfWrong();
        note(u"end"_s);
        next(&User::step);
    }

    void endIfWrong() {
        if (::testing::UnitTest::GetInstance()->Failed()) {
            note(u"wrong at step %1: %2"_s.arg(m_done).arg(m_user->story().replace(u'\n', u';')));
            std::fflush(nullptr);
            std::_Exit(1);
        }
    }

    /// Waits, between the parts of the work, for what Orders::go says.
    void rest() {
        note(u"rest"_s);
        wait();
    }

    void wait() {
        if (!QFile::exists(m_orders.go + QString::number(m_part)))
            return QTimer::singleShot(5, this, &User::wait);
        m_done = 0;
        next(++m_part == 3 ? &User::compare : &User::step);
    }

    /// First anything at random; then names are given to bills that the other leaves alone, while both go on adding and
    /// moving them.
    void stepBesideAnother() {
        const LibraryDocument& library = m_driver->editor()->library();
        // Not among results: a delete there steps bills of other chapters back, and codes meet.
        if (m_part == 1 && upTo(3) > 0 && !library.listsQuery())
            return m_user->step();
        ModalAnswers answers;
        answers.otherwise([](QWidget* box) { QTest::keyClick(box, Qt::Key_Return); });
        m_driver->activate();
        // Both work in the first chapter that has bills.
        for (KeyedTree::Node* node : m_driver->tree()->nodes())
            if (KeyedTree::tag(node).size() == 6) {
                if (node != m_driver->tree()->selectedNode() || library.listsQuery())
                    m_driver->click(node);
                break;
            }
        const KeyedGrid* bills = m_driver->bills();
        // What is done at the end of the list meets no row that another step has touched.
        const int row = upTo(2) == 0 ? bills->rowCount() - 1 : upTo(bills->rowCount());
        const QString id = bills->text(row, u"id"_s);
        if (m_part == 1 || upTo(3) == 0) {
            m_driver->click(m_driver->bills(), row, u"Code"_s);
            const int ids[] = {104, 105, 200, 201};
            m_driver->run(2, ids[upTo(m_part == 1 ? 4 : 3)]);
        } else if (id.toLongLong() % 2 == m_orders.seed % 2) {
            const QString text = u"%1号%2"_s.arg(m_orders.seed).arg(m_done);
            m_driver->edit(m_driver->bills(), row, u"Name"_s, text);
            EditorDriver::settle();
            for (const QStringList& bill : rowsOf(bills))
                if (bill[BillCell::Id] == id && bill[BillCell::Name] == text)
                    note(u"named %1 %2"_s.arg(id, text));
        }
        EditorDriver::settle();
    }

    /// A window that comes to the front shows what the file holds, as another does that is opened on it now.
    void compare() {
        {
            ModalAnswers answers;
            answers.closeAnything();
            m_driver->comeBack();
        }
        EXPECT_EQ(textOf(snapshotOf(*m_driver->editor())), textOf(m_driver->shownAfresh()));
        endIfWrong();
        next(&User::leave);
    }

    int upTo(int count) { return static_cast<int>(m_random() % static_cast<unsigned>(qMax(count, 1))); }

    void leave() {
        if (m_orders.go.isEmpty())
            note(u"changes %1"_s.arg(disk().counts().changes));
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
    std::mt19937 m_random{m_orders.seed};
    int m_part = 0, m_done = 0;
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
