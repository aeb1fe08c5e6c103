#include "tests/walk/Judge.h"

#include <gtest/gtest.h>

#include <QRegularExpression>
#include <algorithm>

#include "editor/common/LibraryDocument.h"

using namespace Qt::StringLiterals;

Judge::Judge(EditorDriver& driver, RandomUser& user) : m_driver(driver) {
    user.onDeed = [this](const Deed& deed) { see(deed); };
    user.onStep = [this](const QStringList& messages, bool disturbed) { endOfStep(messages, disturbed); };
    m_library.load(driver.path());
    m_prescribed.follow(driver.editor()->library());
    m_led.nodes = Nodes::AsLoaded;
    checkWindow();
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
    } else if (deed.kind == Refused) {
        m_expected << (deed.text.isEmpty() ? u"frmEditor.LoadBill"_s : u"frmEditor.mnuQueryBill_Click"_s);
        EXPECT_TRUE(deed.possible) << "what could not be listed is shown";
        m_query = deed.text;
    } else if (deed.kind == Reopened) {
        m_query.clear();
        m_led.nodes = Nodes::AsLoaded;
        m_prescribed.everythingLoaded();
        m_prescribed.follow(m_driver.editor()->library());
        if (!deed.text.isEmpty())
            m_library.load(m_driver.path());
        m_library.forgetStates();
    } else if (deed.kind == Undone || deed.kind == Redone) {
        return goBackOrForth(deed);
    } else {
        edit(deed);
    }
    m_library.remember();
}

void Judge::goBackOrForth(const Deed& deed) {
    const bool back = deed.kind == Deed::Kind::Undone;
    // The ration row that the window alone has goes first.
    const bool hasBlankRation = std::any_of(
        deed.before.contents.begin(), deed.before.contents.end(),
        [](const auto& row) { return row[ContentCell::Level] == u"2" && row[ContentCell::ContDeID].isEmpty(); });
    if (deed.failed || !((back && hasBlankRation) || m_library.go(back ? -1 : 1)))
        return;
    m_prescribed.tree.reset();
    m_query = m_driver.editor()->library().listing().text;
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
