// What the user does with contents, second-level contents and rations.

#include <gtest/gtest.h>

#include <QAbstractItemView>
#include <QComboBox>

#include <QMessageBox>

#include "app/base/Text.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/OtherProgram.h"
#include "tests/walk/RandomUser.h"

using namespace Qt::StringLiterals;

using namespace ContentCell;

namespace {

const QString contKey = u"cont"_s;
const QString dekKey = u"dekName"_s;

bool same(const QString& a, const QString& b) { return trimBlanks(a).toLower() == trimBlanks(b).toLower(); }

bool isOf(const QStringList& row, const char* level) { return row[Level] == QLatin1String(level); }

}  // namespace

int RandomUser::contentLevel() const {
    const KeyedGrid* grid = m_driver.contents();
    return grid->row() < 0 ? -1 : grid->level(grid->row());
}

QStringList RandomUser::contentLine() const { return rowsOf(m_driver.contents())[m_driver.contents()->row()]; }

void RandomUser::walkContents() {
    KeyedGrid* grid = m_driver.contents();
    if (!grid->hasRows())
        return;
    if (chance(50)) {
        walk(grid, {Qt::Key_Up, Qt::Key_Down, Qt::Key_Down, Qt::Key_PageDown, Qt::Key_Left, Qt::Key_Right});
        return;
    }
    const QList<int> rows = visibleContentRows(0);
    const int row = rows[upTo(static_cast<int>(rows.size()))];
    say(u"click content row %1"_s.arg(row));
    m_driver.click(grid, row, oneOf({contKey, u"Unit"_s, dekKey}));
    EXPECT_EQ(grid->row(), row);
    // A click on the current cell of a column with a list opens the list.
    if (const auto* choice = grid->findChild<QComboBox*>(u"cellEditor"_s))
        m_driver.key(choice->view(), Qt::Key_Escape);
}

QList<int> RandomUser::visibleContentRows(int level) const {
    const KeyedGrid* grid = m_driver.contents();
    QList<int> rows;
    for (int row = 0; row < grid->rowCount(); ++row)
        if (!grid->isRowHidden(row) && grid->level(row) >= level)
            rows << row;
    return rows;
}

/// Clicks a ration when the current row is none; false when there is none to click.
bool RandomUser::goToRation() {
    const QList<int> rations = visibleContentRows(2);
    if (contentLevel() != 2 && !rations.isEmpty())
        m_driver.click(m_driver.contents(), rations[upTo(static_cast<int>(rations.size()))], contKey);
    return contentLevel() == 2;
}

void RandomUser::addContent() {
    const KeyedGrid* bills = m_driver.bills();
    const int row = bills->row();
    say(u"add a content"_s);
    const bool enabled = m_driver.isEnabled(2, 400);
    EXPECT_EQ(enabled, row >= 0);
    run(2, 400);
    if (!enabled)
        return;
    // What was done before an error is not undone.
    if (failed())
        expectHalfDone();
    else
        m_codes.addContent(bills->text(row, u"id"_s), bills->text(row, u"Code"_s));
}

void RandomUser::addSubContent() {
    const int level = contentLevel();
    say(u"add a second-level content on level %1"_s.arg(level));
    EXPECT_EQ(m_driver.isEnabled(2, 401), (level == 0 || level == 1) && !m_prescribed.detailsLocked);
    run(2, 401);
    if (failed())
        expectHalfDone();
}

void RandomUser::addRation() {
    const int level = contentLevel();
    say(u"add a ration on level %1"_s.arg(level));
    EXPECT_EQ(m_driver.isEnabled(2, 402), level > 0 && !m_prescribed.detailsLocked);
    run(2, 402);
    if (level > 0 && !m_prescribed.detailsLocked) {
        EXPECT_TRUE(isOf(contentLine(), "2") && contentLine()[ContDeID].isEmpty());
    }
}

void RandomUser::deleteContentRow() {
    const int level = contentLevel();
    say(u"delete content row %1 of level %2"_s.arg(m_driver.contents()->row()).arg(level));
    const bool enabled = m_driver.isEnabled(2, 403);
    EXPECT_EQ(enabled, level >= 0 && !m_prescribed.detailsLocked);
    if (!enabled) {
        run(2, 403);
        return;
    }
    const Rows before = rowsOf(m_driver.contents());
    const int row = m_driver.contents()->row();
    const QStringList& line = before[row];
    const bool yes = chance(80);
    m_answers->press(yes ? QMessageBox::Yes : QMessageBox::No);
    m_expected << (level == 2 ? u"清单库编辑器: 确认删除定额 "_s : u"清单库编辑器: 确认删工作内容指引 "_s) +
                      line[Cont] + u" ？"_s;
    const SqlText itsRows =
        sql("SELECT ID FROM tblContDe WHERE contID='", line[ContID], "' AND subNum='", line[SubNum], "'");
    const bool hadRows = inFile(itsRows);
    run(2, 403);
    if (!yes)
        return;
    if (failed()) {
        // Contents and second-level contents are rolled back, rations are not.
        if (level == 2)
            expectHalfDone();
        return;
    }
    if (level == 0) {
        m_codes.deleteContent(line[ContID]);

    } else if (level == 1) {
        if (!hadRows)
            --m_prescribed.emptied[line[ContID]];
    } else {
        const bool beforeSubContent = row + 1 < before.size() && isOf(before[row + 1], "1");
        if (hadRows && !inFile(itsRows)) {
            EXPECT_TRUE(isOf(before[row - 1], "1") && beforeSubContent);
            ++m_prescribed.emptied[line[ContID]];
        }
    }
}

void RandomUser::renameContent() {
    const int level = contentLevel();
    if (level != 0 && level != 1)
        return;
    const QStringList line = contentLine();
    const QString text = chance(20) ? u" "_s + line[Cont].toUpper() + u' ' : anyText();
    const int end = oneOf<int>({Qt::Key_Return, Qt::Key_Return, Qt::Key_Escape});
    const int row = m_driver.contents()->row();
    say(u"rename content row %1 to \"%2\""_s.arg(row).arg(text));
    const bool editable = m_driver.edit(m_driver.contents(), row, contKey, text, end);
    EXPECT_EQ(editable, !m_prescribed.detailsLocked);
    if (!editable || end == Qt::Key_Escape)
        return;
    if (same(text, line[Cont])) {
        m_prescribed.onlyCaseChanged[Prescribed::nodeKey(line)] = text.left(50);
        // The next ration below a second-level content would carry what the cell shows into the file.
        if (level == 1)
            m_after = After::Relist;
    } else if (text.contains(u'\'')) {
        expectError("ModDBOperator.ExecuteDDL");
        leaveRefusedEdit();
    } else if (failed()) {
        leaveRefusedEdit();
    } else if (!failed()) {
        m_prescribed.onlyCaseChanged.remove(Prescribed::nodeKey(line));
    }
}

/// What was typed stays in the editor, to be put right or given up.
void RandomUser::leaveRefusedEdit() {
    EXPECT_TRUE(m_driver.contents()->isEditing());
    if (auto* box = m_driver.contents()->findChild<QWidget*>(u"cellEditor"_s))
        m_driver.key(box, Qt::Key_Escape);
}

/// Whether the ration, or the second-level content that a new row repeats, holds an apostrophe.
bool RandomUser::cannotBeWritten(const QStringList& line, const QString& code, const QString& library) const {
    const QChar apostrophe = u'\'';
    if (m_rations.library(library).names.value(code.toUpper()).contains(apostrophe))
        return true;
    const Rows rows = rowsOf(m_driver.contents());
    int above = m_driver.contents()->row() - 1;
    if (!line[ContDeID].isEmpty() || isOf(rows[above], "1"))
        return false;
    while (!isOf(rows[above], "1"))
        --above;
    return rows[above][Cont].contains(apostrophe);
}

/// The row holds what is in the file now.
void RandomUser::rationWritten(const QString& contDeID) {
    m_prescribed.libraryChosen.remove(contDeID);
    m_prescribed.codeKept.remove(contDeID);
    m_prescribed.codeAsItCame.remove(contDeID);
    m_prescribed.onlyCaseChanged.remove(u'r' + contDeID);
}

void RandomUser::typeCode() {
    if (!goToRation())
        return;
    const QStringList line = contentLine();
    const QStringList codes = m_rations.library(line[DekName]).codes;
    QString code = oneOf({u"zz"_s, u" A1-1 "_s, QString(), u"a'"_s, line[Cont]});
    if (!codes.isEmpty() && chance(80))
        code = codes[upTo(static_cast<int>(codes.size()))];
    if (chance(40))
        code = code.toLower();
    const QString capital = trimBlanks(code).toUpper();
    const int row = m_driver.contents()->row();
    say(u"type the code \"%1\" into content row %2 of library %3"_s.arg(code).arg(row).arg(line[DekName]));
    const bool broken = cannotBeWritten(line, capital, line[DekName]);
    const bool editable = m_driver.edit(m_driver.contents(), row, contKey, code);
    EXPECT_EQ(editable, !m_prescribed.detailsLocked);
    if (!editable)
        return;
    if (same(code, line[Cont])) {
        if (code != line[Cont])
            m_prescribed.onlyCaseChanged[Prescribed::nodeKey(line)] = code;
        return;
    }
    if (capital.contains(u'\'') && m_rations.library(line[DekName]).codes.size() > 0)
        expectError("frmEditor.GetDeData");
    const QString rejection = m_rations.rejection(capital, line[DekName]);
    if (!rejection.isEmpty()) {
        // The code can be typed again.
        m_expected << rejection;
        leaveRefusedEdit();
        return;
    }
    if (broken)
        expectError("ModDBOperator.ExecuteDDL");
    if (!failed()) {
        rationWritten(contentLine()[ContDeID]);
    } else if (!line[ContDeID].isEmpty()) {
        m_prescribed.codeKept[line[ContDeID]] = trimBlanks(code);
        m_prescribed.onlyCaseChanged.remove(Prescribed::nodeKey(line));
    }
}

void RandomUser::chooseLibrary() {
    if (!goToRation())
        return;
    const QStringList ids = m_rations.ids();
    const QString& library = ids[upTo(static_cast<int>(ids.size()))];
    const QString id = contentLine()[ContDeID];
    say(u"choose library %1 in content row %2"_s.arg(library).arg(m_driver.contents()->row()));
    const bool editable = m_driver.choose(m_driver.contents(), m_driver.contents()->row(), dekKey, library, chance(50));
    EXPECT_EQ(editable, !m_prescribed.detailsLocked);
    if (editable && !id.isEmpty())
        m_prescribed.libraryChosen[id] = library;
}

void RandomUser::changeProfession() {
    QComboBox* combo = m_driver.profession();
    const int before = combo->currentIndex();
    m_driver.showPage(combo);
    combo->setFocus();
    m_driver.key(combo, chance(35) ? Qt::Key_Home : oneOf({Qt::Key_Up, Qt::Key_Down}));
    say(u"choose profession %1"_s.arg(combo->currentText()));
    if (combo->currentIndex() == before)
        return;
    const Prescribed kept = m_prescribed;
    m_prescribed.detailsLoaded(kept.detailsOf);
    m_prescribed.detailsLocked = kept.detailsLocked;
    m_prescribed.contentsEmptied = m_driver.bills()->row() < 0;
}
