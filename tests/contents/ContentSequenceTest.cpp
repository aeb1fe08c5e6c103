// Long random sequences of everything an estimator does with contents; after each step the window is compared with a
// fresh load of the file. Where a step may leave a difference by rule, it names the rule and states the difference.

#include <gtest/gtest.h>

#include <QComboBox>
#include <QCoreApplication>
#include <QMap>
#include <QMessageBox>
#include <QTest>
#include <algorithm>
#include <random>

#include "tests/contents/ContentWindow.h"
#include "tests/support/ModalAnswers.h"

namespace {

enum Column { Level, Cont, Unit, DekName, ContID, ContDeID, ContNum, SubNum };

using Line = QStringList;
using Lines = std::vector<Line>;

Lines split(const QStringList& texts) {
    Lines lines;
    for (const QString& text : texts)
        lines.push_back(text.split(QLatin1Char('|')));
    return lines;
}

std::string joined(const Lines& lines) {
    QStringList texts;
    for (const Line& line : lines)
        texts << line.join(QLatin1Char('|'));
    return texts.join(QLatin1Char('\n')).toStdString();
}

bool isBlankRation(const Line& line) { return line[Level] == QLatin1String("2") && line[ContDeID].isEmpty(); }

class Estimator {
public:
    explicit Estimator(unsigned seed) : m_random(seed) {
        window.library.run(
            "INSERT INTO tblCont(ID,num,cont,prof,billID) VALUES(1,1,'First','01',7),(2,2,'Both','0102',7),"
            "(3,3,'Other','02',7),(4,4,'Last','01',7),(5,1,'another bill','01',8)");
        window.library.run(
            "INSERT INTO tblContDe(contID,subNum,subCont,deh,name,unit,dekID) VALUES"
            "(1,1,'Sub','A1-1','x','m','GD2018ZHDE01'),(1,1,'Sub','A1-2','y','m','GD2018ZHDE01'),"
            "(1,2,'Empty',NULL,NULL,NULL,NULL),(2,1,'Shared','A1-3','z','m','GD2018ZHDE01')");
        reload();
    }

    void step() {
        struct Choice {
            int weight;
            void (Estimator::*act)();
        };
        static constexpr Choice choices[] = {
            {20, &Estimator::moveAround},   {6, &Estimator::addContent},       {10, &Estimator::addSubContent},
            {14, &Estimator::addRation},    {10, &Estimator::deleteRow},       {8, &Estimator::rename},
            {2, &Estimator::renameByCase},  {20, &Estimator::typeCode},        {6, &Estimator::chooseLibrary},
            {12, &Estimator::fromBrowser},  {3, &Estimator::changeProfession}, {1, &Estimator::reload},
            {1, &Estimator::refusedCommand}};
        int total = 0;
        for (const Choice& choice : choices)
            total += choice.weight;
        int drawn = upTo(total);
        const Choice* choice = choices;
        while (drawn >= choice->weight)
            drawn -= (choice++)->weight;
        if (window.grid().rowCount() > 60)
            choice = &choices[4];
        expected.clear();
        changedByRule = {};
        {
            ModalAnswers answers;
            answers.closeAnything();
            m_answers = &answers;
            (this->*choice->act)();
            QCoreApplication::processEvents();
            EXPECT_EQ(answers.seen(), expected);
        }
        compare();
        if (changedByRule)
            reload();
    }

    ContentWindow window;

private:
    int upTo(int count) { return std::uniform_int_distribution<int>(0, count - 1)(m_random); }
    bool chance(int percent) { return upTo(100) < percent; }
    QString oneOf(std::initializer_list<const char*> texts) {
        return QString::fromLatin1(*(texts.begin() + upTo(static_cast<int>(texts.size()))));
    }

    KeyedGrid& grid() { return window.grid(); }
    int row() { return grid().row(); }
    int level() { return row() < 0 ? -1 : grid().level(row()); }
    Line current() { return split(window.shown())[static_cast<std::size_t>(row())]; }

    void compare() {
        Lines file = split(window.fresh());
        // Rule: a library chosen in the list is written with the next code only.
        for (Line& line : file)
            if (const auto chosen = m_chosen.constFind(line[ContDeID]); chosen != m_chosen.constEnd())
                line[DekName] = *chosen;
        if (changedByRule)
            changedByRule(file);
        Lines shown = split(window.shown());
        // Rule: one ration row without a ration lives in the window alone, below its second-level content.
        int blanks = 0;
        for (std::size_t i = shown.size(); i-- > 0;) {
            if (!isBlankRation(shown[i]))
                continue;
            ++blanks;
            ASSERT_GT(i, 0U);
            EXPECT_NE(shown[i - 1][Level], QLatin1String("0"));
            EXPECT_EQ(shown[i - 1][ContID], shown[i][ContID]);
            EXPECT_EQ(shown[i - 1][SubNum], shown[i][SubNum]);
            shown.erase(shown.begin() + static_cast<std::ptrdiff_t>(i));
        }
        EXPECT_LE(blanks, 1);
        EXPECT_EQ(joined(shown), joined(file));
        EXPECT_EQ(row() >= 0, grid().hasRows());
        EXPECT_FALSE(grid().isEditing());
    }

    /// States what one line of the file reads as in the window.
    void differs(int column, const QString& value, const Line& of, int key) {
        changedByRule = [=](Lines& file) {
            for (Line& line : file)
                if (line[key] == of[key] && line[Level] == of[Level] && line[ContID] == of[ContID])
                    line[column] = value;
        };
    }

    void reload() {
        window.pane.LoadBillContent(7);
        m_chosen.clear();
    }

    void moveAround() {
        if (!grid().hasRows())
            return;
        if (chance(50)) {
            grid().setCell(upTo(grid().rowCount()), oneOf({"cont", "cont", "Unit", "dekName"}));
            return;
        }
        window.activate();
        grid().setFocus();
        const Qt::Key keys[] = {Qt::Key_Up,    Qt::Key_Down,  Qt::Key_PageDown, Qt::Key_Left,
                                Qt::Key_Right, Qt::Key_Minus, Qt::Key_Plus,     Qt::Key_Home};
        for (int i = upTo(6); i >= 0; --i)
            QTest::keyClick(&grid(), keys[upTo(8)]);
        // A sign typed where nothing opens or closes begins an edit.
        if (grid().isEditing())
            window.key(Qt::Key_Escape);
    }

    void addContent() { window.pane.munAddBillCont_Click(); }

    void addSubContent() {
        if (level() == 0 || level() == 1)
            window.pane.munAddBillSubCont_Click();
    }

    void addRation() {
        if (level() > 0)
            window.pane.munAddBillContDe_Click();
    }

    void deleteRow() {
        if (level() < 0)
            return;
        const Line line = current();
        const bool yes = chance(85);
        m_answers->press(yes ? QMessageBox::Yes : QMessageBox::No);
        expected << (level() == 2 ? QStringLiteral("清单库编辑器: 确认删除定额 ")
                                  : QStringLiteral("清单库编辑器: 确认删工作内容指引 ")) +
                        line[Cont] + QStringLiteral(" ？");
        if (level() == 0) {
            window.pane.mnuDelBillCont_Click();
        } else if (level() == 1) {
            window.pane.munDelBillSubCont_Click();
        } else {
            const int at = row() - 1;
            const Lines before = split(window.shown());
            const auto levelAt = [&](int i) { return i < grid().rowCount() ? grid().level(i) : -1; };
            const bool onlyOne = levelAt(at) == 1 && levelAt(at + 2) == 1;
            window.pane.munDelBillContDe_Click();
            // Rule: an only ration before the next second-level content takes its row along; what it stood for is
            // shown until the next load.
            if (yes && onlyOne && rowsOf(line) == QStringList{QStringLiteral("0")}) {
                const auto place = at - std::count_if(before.begin(), before.begin() + at, isBlankRation);
                changedByRule = [subContent = before[static_cast<std::size_t>(at)], place](Lines& file) {
                    file.insert(file.begin() + place, subContent);
                };
            }
        }
    }

    QStringList rowsOf(const Line& line) {
        return window.library.rowsInFile(
            sql("SELECT count(*) FROM tblContDe WHERE contID='", line[ContID], "' AND subNum='", line[SubNum], "'"));
    }

    void rename() {
        if (level() != 0 && level() != 1)
            return;
        const bool broken = chance(10);
        window.type(row(), broken ? QStringLiteral("it's") : QStringLiteral(" Name %1 ").arg(++m_names));
        if (broken)
            expected = errorsFrom("ModDBOperator.ExecuteDDL");
    }

    /// Rule: a text that differs by letter case and outer blanks alone is accepted and not written.
    void renameByCase() {
        if (level() != 0 && level() != 1)
            return;
        const Line line = current();
        const QString typed = QStringLiteral(" ") + line[Cont].toUpper();
        window.type(row(), typed);
        differs(Cont, typed, line, level() == 0 ? ContNum : SubNum);
    }

    bool listed(const QString& code, const QString& library) {
        if (library == QLatin1String("GD2018ZHDE01"))
            return QStringList{QStringLiteral("A1-1"), QStringLiteral("A1-2"), QStringLiteral("A1-3"),
                               QStringLiteral("BAD")}
                .contains(code.toUpper());
        return library == QLatin1String("GD2018ZHDE03") && code.toUpper() == QLatin1String("C1-1");
    }

    /// The message with which a code is rejected; empty when it is accepted.
    QStringList rejection(const QString& code, const QString& library) {
        if (library.isEmpty())
            return {QStringLiteral("提示: 定额库文件不存在!")};
        if (library == QLatin1String("GONE"))
            return {QStringLiteral("提示: 定额库") + window.missingLibrary() + QStringLiteral("文件不存在!")};
        if (!listed(code, library))
            return {QStringLiteral("提示: 定额 [") + code + QStringLiteral("] 不存在, 请重新输入!")};
        return {};
    }

    QStringList errorsFrom(const char* place) {
        const QStringList seen = m_answers->seen();
        EXPECT_EQ(seen.size(), 1);
        EXPECT_TRUE(seen.value(0).contains(QLatin1String(place)));
        return seen;
    }

    void typeCode() {
        if (level() != 2)
            return;
        const Line line = current();
        const QString code = oneOf({"a1-1", "A1-2", "a1-3", "c1-1", "zz", "bad"});
        const bool same = code == line[Cont];
        window.type(row(), code);
        if (same)
            return;
        expected = rejection(code.toUpper(), line[DekName]);
        if (!expected.isEmpty()) {
            EXPECT_TRUE(grid().isEditing());
            window.activate();
            window.key(Qt::Key_Escape);
        } else if (code == QLatin1String("bad")) {
            // Rule: a ration that cannot be written leaves the typed code.
            expected = errorsFrom("ModDBOperator.ExecuteDDL");
            if (!line[ContDeID].isEmpty())
                differs(Cont, code, line, ContDeID);
        } else {
            m_chosen.remove(line[ContDeID]);
        }
    }

    void chooseLibrary() {
        if (level() != 2)
            return;
        const QString library = oneOf({"GD2018ZHDE01", "GD2018ZHDE01", "GD2018ZHDE03", "GONE"});
        const QString id = current()[ContDeID];
        window.chooseLibrary(row(), library);
        if (!id.isEmpty())
            m_chosen[id] = library;
    }

    void fromBrowser() {
        const short mode = static_cast<short>(upTo(3));
        const QString library = oneOf({"GD2018ZHDE01", "GD2018ZHDE01", "GD2018ZHDE03", "GONE"});
        const QString code = oneOf({"A1-1", "a1-2", "A1-3", "C1-1", "ZZ", "BAD"});
        const bool acts = mode == 0 ? level() > 0 : mode == 1 && level() == 2;
        window.pane.WinCommand(mode, code, library);
        if (!acts)
            return;
        expected = rejection(code, library);
        if (!expected.isEmpty())
            return;
        if (code == QLatin1String("BAD")) {
            expected = errorsFrom("ModDBOperator.ExecuteDDL");
            return;
        }
        const Line line = current();
        m_chosen.remove(line[ContDeID]);
        // Rule: a code from the browser is shown as it came; a fresh load shows capitals.
        if (code != code.toUpper())
            differs(Cont, line[Cont], line, ContDeID);
    }

    void changeProfession() {
        window.pane.cboProfession()->setCurrentIndex(chance(70) ? 0 : 1);
        reload();
    }

    void refusedCommand() {
        const bool adds = chance(50);
        window.library.run(adds ? SqlText("CREATE TRIGGER refuse BEFORE INSERT ON tblCont BEGIN "
                                          "SELECT RAISE(ABORT,'refused'); END")
                                : SqlText("CREATE TRIGGER refuse BEFORE DELETE ON tblCont BEGIN "
                                          "SELECT RAISE(ABORT,'refused'); END"));
        const QStringList before = window.shown();
        if (adds) {
            window.pane.munAddBillCont_Click();
            expected = errorsFrom("frmEditor.munAddBillCont_Click");
        } else if (level() == 0) {
            m_answers->press(QMessageBox::Yes);
            window.pane.mnuDelBillCont_Click();
            expected = m_answers->seen();
            EXPECT_EQ(expected.size(), 2);
        }
        EXPECT_EQ(window.shown(), before);
        QCoreApplication::processEvents();
        window.library.run("DROP TRIGGER refuse");
        // Rule: adding does not roll back, so its renumbering stays in the file.
        if (adds)
            reload();
    }

    std::mt19937 m_random;
    int m_names = 0;
    ModalAnswers* m_answers = nullptr;
    /// Ration libraries chosen and not written yet, by row id.
    QMap<QString, QString> m_chosen;
    /// Messages that the step must have shown.
    QStringList expected;
    /// What the step changes in the window alone, by rule; it is loaded anew afterwards.
    std::function<void(Lines&)> changedByRule;
};

}  // namespace

class ContentSequence : public ::testing::TestWithParam<unsigned> {};

TEST_P(ContentSequence, TheWindowIsTheFile) {
    Estimator estimator(GetParam());
    for (int step = 1; step <= 1000; ++step) {
        estimator.step();
        ASSERT_FALSE(HasFailure()) << "at step " << step << " of seed " << GetParam();
    }
    EXPECT_EQ(estimator.window.library.rowsInFile("PRAGMA integrity_check"), QStringList{QStringLiteral("ok")});
    EXPECT_EQ(
        estimator.window.library.rowsInFile("SELECT * FROM tblCont WHERE billID<>7 OR IsDel IS NOT NULL AND IsDel<>0")
            .size(),
        1);
}

INSTANTIATE_TEST_SUITE_P(Seeds, ContentSequence, ::testing::Values(1U, 2U, 3U));
