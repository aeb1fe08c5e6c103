#include "tests/walk/RandomUser.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QComboBox>
#include <QRegularExpression>

#include "editor/common/LibraryDocument.h"

#include "storage/LibraryConnection.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/OtherProgram.h"

using namespace Qt::StringLiterals;

namespace {

const QRegularExpression errorPlace(u"错误位置: (\\S+)"_s);

}  // namespace

const std::vector<RandomUser::Choice>& RandomUser::choices() {
    using enum Room;
    static const std::vector<Choice> all{
        {Chapters, 22, &RandomUser::clickChapter},
        {Chapters, 8, &RandomUser::walkTree},
        {Chapters, 6, &RandomUser::addChapter},
        {Chapters, 6, &RandomUser::addSubChapter},
        {Chapters, 5, &RandomUser::renameChapter},
        {Chapters, 4, &RandomUser::deleteChapter},
        {Chapters, 9, &RandomUser::moveChapter},
        {Chapters, 2, &RandomUser::openOrCloseNodes},
        {Chapters, 1, &RandomUser::reopen},
        {Bills, 12, &RandomUser::clickBill},
        {Bills, 6, &RandomUser::walkBills},
        {Bills, 10, &RandomUser::editBill},
        {Bills, 9, &RandomUser::addBill},
        {Bills, 6, &RandomUser::deleteBill},
        {Bills, 9, &RandomUser::moveBill},
        {Bills, 4, &RandomUser::query},
        {Bills, 2, &RandomUser::listWhileLocked},
        {Bills, 8, &RandomUser::clickAwayFromAnEdit},

        {Bills, 7, &RandomUser::typeIntoBox},
        {Features, 8, &RandomUser::clickFeature},
        {Features, 8, &RandomUser::editFeature},
        {Features, 8, &RandomUser::chooseType},
        {Features, 6, &RandomUser::addFeature},
        {Features, 4, &RandomUser::deleteFeature},
        {Features, 8, &RandomUser::tickValue},
        {Features, 10, &RandomUser::editValue},
        {Features, 9, &RandomUser::addValue},
        {Features, 4, &RandomUser::deleteValue},
        {Contents, 16, &RandomUser::walkContents},
        {Contents, 4, &RandomUser::addContent},
        {Contents, 6, &RandomUser::addSubContent},
        {Contents, 9, &RandomUser::addRation},
        {Contents, 7, &RandomUser::deleteContentRow},
        {Contents, 7, &RandomUser::renameContent},
        {Contents, 20, &RandomUser::typeCode},
        {Contents, 5, &RandomUser::chooseLibrary},
        {Contents, 2, &RandomUser::changeProfession},
        {Contents, 9, &RandomUser::useBrowser},
    };
    return all;
}

const RandomUser::Choice& RandomUser::choose() {
    if (chance(4))
        m_room = oneOf({Room::Chapters, Room::Bills, Room::Features, Room::Contents, Room::Contents});
    // An empty list is soon left.
    if (!m_driver.bills()->hasRows() && chance(40))
        return choices().front();
    constexpr int moreOften = 8;
    const auto weight = [this](const Choice& choice) {
        return choice.weight * (choice.room == m_room ? moreOften : 1);
    };
    int total = 0;
    for (const Choice& choice : choices())
        total += weight(choice);
    int drawn = upTo(total);
    auto choice = choices().begin();
    while (drawn >= weight(*choice))
        drawn -= weight(*choice++);
    return *choice;
}

RandomUser::RandomUser(EditorDriver& driver, unsigned seed, Check check)
    : m_random(seed), m_driver(driver), m_check(check), m_comparison(driver, m_prescribed), m_codes(driver.path()) {
    m_prescribed.follow(m_driver.editor()->library());
    if (m_check == Check::EveryStep)
        m_comparison.check(m_query);
}

void RandomUser::step() {
    const Choice& choice = choose();
    // Without a window manager nobody gives the focus back when a list or a box has closed.
    m_driver.activate();
    m_expected.clear();
    m_after = After::Nothing;
    {
        ModalAnswers answers;
        answers.closeAnything();
        m_answers = &answers;
        auto disturbance = disturb();
        (this->*choice.act)();
        EditorDriver::settle();
        disturbance.reset();
        EditorDriver::settle();
        expectMessages();
        m_answers = nullptr;
    }
    if (m_after == After::Relist)
        relist();
    else if (m_after == After::Reopen)
        reopen();
    EditorDriver::settle();
    if (m_check == Check::EveryStep) {
        m_codes.check();
        m_comparison.check(m_query);
    } else {
        m_comparison.look();
    }
}

std::unique_ptr<Disturbance> RandomUser::disturb() {
    m_disturbed.reset();
    if (!chance(8))
        return nullptr;
    using Kind = Disturbance::Kind;
    m_disturbed = oneOf({Kind::Written, Kind::Read, Kind::Refused});
    m_driver.pragma("PRAGMA busy_timeout=0");
    const QString change = oneOf({u"INSERT ON "_s, u"UPDATE ON "_s, u"DELETE ON "_s}) +
                           oneOf({u"tblSYB"_s, u"tblBill"_s, u"tblCont"_s, u"tblContDe"_s, u"tblBillSpec"_s,
                                  u"tblSpecEnum"_s, u"tblParm"_s});
    say(*m_disturbed == Kind::Written ? u"(another program writes)"_s
        : *m_disturbed == Kind::Read  ? u"(another program reads)"_s
                                      : u"(refused is %1)"_s.arg(change));
    return std::make_unique<Disturbance>(m_driver.path(), *m_disturbed, change, m_driver.editor());
}

void RandomUser::expectMessages() {
    QStringList seen = m_answers->takeSeen();
    for (QString& text : seen) {
        const auto record = errorPlace.match(text);
        if (record.hasMatch())
            text = u'@' + record.captured(1);
    }
    // When writing fails there may be errors, and what would have been said after the writing is not.
    if (m_disturbed)
        seen.removeIf([this](const QString& text) { return text.startsWith(u'@') && !m_expected.contains(text); });
    EXPECT_EQ(seen, m_expected);
}

bool RandomUser::failed() const {
    for (const QString& text : m_answers->seen())
        if (errorPlace.match(text).hasMatch())
            return true;
    return false;
}

void RandomUser::expectHalfDone() {
    EXPECT_TRUE(m_disturbed);
    if (m_disturbed.value_or(Disturbance::Kind::Written) != Disturbance::Kind::Written)
        m_after = After::Reopen;
}

void RandomUser::reopen() {
    say(u"close and open"_s);
    const bool unknown = m_after == After::Reopen;
    m_driver.close();
    // Codes that have overflowed cut every tree short from now on; somebody puts that right.
    const bool tidied = chance(50) && !m_disturbed && inFile(overflowedChapters);
    if (tidied)
        GetOrmConn(m_driver.path())->Execute("DELETE FROM tblSYB WHERE length(Code)%2=1 OR length(Code)>6");
    m_driver.open();
    m_prescribed.everythingLoaded();
    m_query.clear();
    m_prescribed.follow(m_driver.editor()->library());
    if (unknown || tidied)
        m_codes.load();
}

/// Lists the bills anew, as the user does: by a click on the chapter, or by the query again.
void RandomUser::relist() {
    if (m_driver.chapter().size() == 6) {
        say(u"click the chapter again"_s);
        m_driver.click(m_driver.tree()->selectedNode());
    } else {
        reopen();
    }
}

bool RandomUser::inFile(const SqlText& query) const { return !rowsInFile(m_driver.path(), query).isEmpty(); }

/// Text as people type it, and some as they should not.
QString RandomUser::anyText() {
    switch (upTo(20)) {
        case 0:
            return {};
        case 1:
            return u"it's"_s;
        case 2:
            return u"x'--"_s;
        case 3:
            return u"  两边空白  "_s;
        case 4:
            return u"　全角空白　"_s;
        case 5:
            return u"50%_\"q\";#1;a|b\\"_s;
        case 6:
            return QString(60, u'w');
        case 7:
            return u"两行\n名称%1"_s.arg(++m_names);

        default:
            return u"名称%1"_s.arg(++m_names);
    }
}

void RandomUser::say(const QString& what) {
    m_story << what;
    constexpr qsizetype remembered = 12;
    if (m_story.size() > remembered)
        m_story.removeFirst();
}

QString RandomUser::story() const { return m_story.join(u"\n  "_s); }

void RandomUser::run(int host, int id) {
    if (chance(50) && m_driver.isEnabled(host, id))
        m_driver.runByMouse(host, id);
    else
        m_driver.run(host, id);
}

void RandomUser::walk(QWidget* view, std::initializer_list<QKeyCombination> keys) {
    m_driver.showPage(view);
    view->setFocus();
    const QKeyCombination key = oneOf(keys);
    say(u"key %1 in %2"_s.arg(QKeySequence(key).toString(), view->objectName()));
    m_driver.key(view, key.key(), key.keyboardModifiers());
}
