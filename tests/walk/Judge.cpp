#include "tests/walk/Judge.h"

namespace {

/// Without the times of changes; a missing text looks like an empty one.
QStringList asSeen(QStringList content) {
    static const QRegularExpression unseen(u"\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d|␀"_s);
    return content.replaceInStrings(unseen, QString());
}

}  // namespace

Judge::Judge(EditorDriver& driver, RandomUser& user) : m_driver(driver) {
    user.onDeed = [this](const Deed& deed) { see(deed); };
    user.onStep = [this](const QStringList& messages, bool disturbed) { endOfStep(messages, disturbed); };
    m_library.load(driver.path());
    follow();
    m_led.nodes = Nodes::AsLoaded;
    checkWindow();
}

void Judge::follow() {
    m_prescribed.follow(m_driver.editor()->library());
    m_states = {contentOf(m_driver.path())};
    m_state = 0;
    LibraryHistory* history = m_driver.editor()->library().history();
    const Connection* connection = m_driver.editor()->ormConn();
    QObject::connect(history, &LibraryHistory::said, history, [=, this](const QString& text, auto offer) {
        m_said = text;
        const bool back = text.startsWith(u"已撤消："_s);
        EXPECT_FALSE(text.startsWith(u"不能"_s)) << qPrintable(text);
        EXPECT_TRUE(!text.startsWith(u"没有"_s) || m_state == (text.contains(u"撤消") ? 0 : m_states.size() - 1));
        if (offer == LibraryHistory::Offer::Nothing)
            return;
        // Behind a command that failed it is not in the file before the event is over.
        const bool isOpen = connection->isInTransaction();
        const QStringList content = isOpen ? QStringList() : contentOf(m_driver.path());
        if (back || text.startsWith(u"已重做："_s)) {
            m_state += back ? -1 : 1;
            EXPECT_TRUE(m_states.value(m_state).isEmpty() || content == m_states[m_state]) << qPrintable(text);
            m_library.load(m_driver.path());
            m_prescribed.tree.reset();
        } else {
            EXPECT_TRUE(isOpen || asSeen(content) != asSeen(m_states[m_state])) << "nobody sees that step";
            m_states.resize(++m_state);
            m_states << content;
        }
    });
}

void Judge::goBackAndForth() {
    LibraryHistory* history = m_driver.editor()->library().history();
    for (qsizetype left = m_states.size(); left > 0; --left)
        history->undo();
    EXPECT_EQ(m_state, 0);
    for (qsizetype left = m_states.size(); left > 0; --left)
        history->redo();
    EXPECT_EQ(m_state, m_states.size() - 1);
}

void Judge::see(const Deed& deed) {
    using enum Deed::Kind;
    m_led = {};
    if (deed.kind == Look) {
        look(deed);
    } else if (deed.kind == Command) {
        command(deed);
    } else if (deed.kind == Ration) {
        rationFromBrowser(deed);
    } else if (deed.kind == Reopened) {
        m_query.clear();
        m_led.nodes = Nodes::AsLoaded;
        m_prescribed.everythingLoaded();
        follow();
        if (!deed.text.isEmpty())
            m_library.load(m_driver.path());
    } else if (deed.kind == Undone || deed.kind == Redone) {
        EXPECT_FALSE(m_said.startsWith(deed.kind == Undone ? u"已重做"_s : u"已撤消"_s));
        // The ration row that the window alone has goes first.
        const bool hadBlankRation = std::ranges::any_of(deed.before.contents, [](const QStringList& row) {
            return row[ContentCell::Level] == u"2" && row[ContentCell::ContDeID].isEmpty();
        });
        EXPECT_TRUE(!hadBlankRation || !m_said.startsWith(u"已撤消"_s) || m_said == u"已撤消：添加定额"_s);
        m_query = m_driver.editor()->library().listing().text;
    } else {
        edit(deed);
    }
    m_said.clear();
}

void Judge::look(const Deed& deed) {
    if (deed.row >= 0)
        m_led.rows[deed.place] = deed.row;
    EXPECT_TRUE(deed.place != u"browser" || deed.possible || m_prescribed.detailsLocked);
    if (deed.place == u"cboProfession" && deed.before.profession != snapshotOf(*m_driver.editor()).profession) {
        const bool locked = m_prescribed.detailsLocked;
        m_prescribed.detailsLoaded();
        m_prescribed.detailsLocked = locked;
        m_prescribed.contentsEmptied = deed.before.bill < 0;
    }
    const QString path = m_rations.library(deed.dekID).browserPath;
    if (!deed.dekID.isEmpty() && !QFile::exists(path) && !m_prescribed.detailsLocked)
        m_expected << u"提示: "_s + path + u" 文件不存在!"_s;
}

bool Judge::isWritten(const Deed& deed, bool broken, const char* place) {
    if (broken)
        m_expected << QLatin1String(place);
    return !broken && !deed.failed;
}

void Judge::endOfStep(const QStringList& messages, bool disturbed) {
    QStringList seen = messages;
    static const QRegularExpression errorPlace(u"^\\w+\\.\\w*$"_s);
    // When writing fails there may be errors, each of which has been seen with its deed.
    if (disturbed)
        seen.removeIf(
            [this](const QString& text) { return errorPlace.match(text).hasMatch() && !m_expected.contains(text); });
    EXPECT_EQ(seen, m_expected);
    m_expected.clear();
    m_library.expectFile(m_driver.path());
    checkWindow();
    m_led = {};
}

void Judge::command(const Deed& deed) {
    if (!enabled(deed.before).value(deed.command, true))
        return;
    if (deed.command < 2000)
        chapterCommand(deed);
    else if (deed.command > 3000)
        featureCommand(deed);
    else if (deed.command >= 2400)
        contentCommand(deed);
    else
        billCommand(deed);
}
