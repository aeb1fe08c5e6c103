#include "tests/walk/RandomUser.h"

QString Deed::story() const {
    static const char* const kinds[] = {"look at", "command", "edit", "choose in", "tick",
                                        "ration",  "reopen",  "undo", "redo"};
    return u"%1 %2%3 row %4 %5 %6 \"%7\" \"%8\""_s.arg(QLatin1String(kinds[static_cast<int>(kind)]))
               .arg(command)
               .arg(place)
               .arg(row)
               .arg(key, dekID, text.left(80), name) +
           (given ? u""_s : u" given up"_s) + (failed ? u" FAILED"_s : u""_s);
}

void RandomUser::step() {
    if (!m_driver.editor())
        return;
    // Without a window manager nobody gives the focus back when a list or a box has closed.
    m_driver.activate();
    ModalAnswers answers;
    answers.otherwise([this](QWidget* window) { answer(window); });
    m_answers = &answers;
    m_halfDone = false;
    auto disturbance = disturb();
    act();
    EditorDriver::settle();
    disturbance.reset();
    EditorDriver::settle();
    const QStringList messages = answers.takePlaces();
    // The command may have done a part of its work: what it had done is not undone.
    if (m_halfDone)
        reopen();
    EditorDriver::settle();
    m_answers = nullptr;
    onStep(messages + answers.takePlaces(), m_disturbed);
    m_disturbed = false;
}

std::unique_ptr<Disturbance> RandomUser::disturb() {
    m_disturbed = m_habits.disturbed && chance(8);
    if (!m_disturbed)
        return nullptr;
    using Kind = Disturbance::Kind;
    const Kind kind = oneOf({Kind::Written, Kind::Read, Kind::Refused});
    m_driver.pragma("PRAGMA busy_timeout=0");
    const QString change = oneOf({u"INSERT ON "_s, u"UPDATE ON "_s, u"DELETE ON "_s}) +
                           oneOf({u"tblSYB"_s, u"tblBill"_s, u"tblCont"_s, u"tblContDe"_s, u"tblBillSpec"_s,
                                  u"tblSpecEnum"_s, u"tblParm"_s});
    m_story << u"(disturbed in way %1: %2)"_s.arg(static_cast<int>(kind)).arg(change);
    return std::make_unique<Disturbance>(m_driver.path(), kind, change, m_driver.editor());
}

/// Brings a modal window to close in one of the user's ways.
void RandomUser::answer(QWidget* window) {
    auto* name = window->findChild<QLineEdit*>(u"txtContent"_s);
    if (const auto* box = qobject_cast<QMessageBox*>(window)) {
        m_deed.yes = chance(80);
        if (auto* button = box->button(m_deed.yes ? QMessageBox::Yes : QMessageBox::No))
            QTest::mouseClick(button, Qt::LeftButton);
        else
            window->close();
    } else if (name) {
        enum Way { Enter, OK, Cancel, Escape, CloseBox };
        const Way way = oneOf({Enter, Enter, Enter, Enter, OK, OK, Cancel, Escape, CloseBox});
        m_deed.preset = name->selectedText() == name->text() ? name->text() : u"not selected"_s;
        m_deed.name = chance(10) ? u"   "_s : anyText().replace(u'\n', u' ');
        m_deed.answer = way == CloseBox ? Deed::Answer::BoxClosed
                        : way <= OK     ? Deed::Answer::Entered
                                        : Deed::Answer::Cancelled;
        EditorDriver::typeOver(name, m_deed.name);
        if (way == CloseBox)
            window->close();
        else if (way == Enter || way == Escape)
            QTest::keyClick(name, way == Enter ? Qt::Key_Return : Qt::Key_Escape);
        else
            QTest::mouseClick(window->findChild<QPushButton*>(way == OK ? u"cmdOK"_s : u"cmdCancel"_s), Qt::LeftButton);
        // A name that is refused leaves the dialog open.
        if (window->isVisible())
            QTest::keyClick(name, Qt::Key_Escape);
    } else {
        window->close();
    }
}

void RandomUser::begin(Deed::Kind kind, const QString& place, int row, const QString& key, const QString& text) {
    m_deed = {.kind = kind, .place = place, .row = row, .key = key, .text = text};
    m_seen = m_answers->seen().size();
    if (onDeed)
        m_deed.before = snapshotOf(*m_driver.editor());
}

void RandomUser::done() {
    const QStringList said = m_answers->seen().mid(m_seen);
    m_deed.failed =
        std::any_of(said.begin(), said.end(), [](const QString& text) { return text.contains(u"错误位置"); });
    const int command = m_deed.kind == Deed::Kind::Command ? m_deed.command : 0;
    const bool isHalved =
        command == 1103 || command == 2400 || command == 2401 || (command == 2403 && m_deed.key == u"2");
    m_halfDone = m_halfDone || (m_disturbed && m_deed.failed && isHalved);
    m_story << m_deed.story();
    if (onDeed)
        onDeed(m_deed);
}
