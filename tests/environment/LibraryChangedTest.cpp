// The library's file changes under an open window: deleted, moved away, replaced, cut short. No edit may go where
// nobody finds it: it fails and says so, the window keeps what it shows, and nothing is written to another file.

#include <QFile>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QTest>

#include "app/base/Definitions.h"
#include "tests/environment/Workplace.h"
#include "tests/gui/Libraries.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/SampleProgram.h"

namespace {

const QString nameKey = QStringLiteral("Name");

QByteArray bytesOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("no file");
}

class LibraryChanged : public Workplace {
protected:
    LibraryChanged() : Workplace(awkwardLibrary()) { QFile::remove(aside); }
    ~LibraryChanged() override { QFile::remove(aside); }

    void moveAside() { EXPECT_TRUE(QFile::rename(path, aside)); }

    void overwrite(const QString& source) {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::ReadWrite | QIODevice::Truncate));
        file.write(bytesOf(source));
    }

    void cut(qint64 size) { EXPECT_TRUE(QFile::resize(path, size)); }

    /// Everything that writes is tried; each try must be refused with one of the errors in `numbers`.
    void expectThatNothingIsWritten(const QList<int>& numbers);

    const QString path = user.path();
    const QString aside = path + QStringLiteral(".aside");
};

void LibraryChanged::expectThatNothingIsWritten(const QList<int>& numbers) {
    const QByteArray before = bytesOf(path);
    const auto named = [this](int command) {
        return [this, command](ModalAnswers& answers) {
            giveName(answers, QStringLiteral("新"));
            user.run(1, command);
        };
    };
    const auto run = [this](int host, int command) {
        return [this, host, command](ModalAnswers& answers) {
            if (command == 201)
                answers.press(QMessageBox::Yes);
            user.run(host, command);
        };
    };
    const std::vector<std::function<void(ModalAnswers&)>> tries{
        [this](ModalAnswers&) { user.edit(user.bills(), 0, nameKey, QStringLiteral("x")); },
        [this](ModalAnswers&) {
            user.typeInto(user.rule(), QStringLiteral("x"));
            user.key(user.rule(), Qt::Key_Tab);
        },
        named(100),
        named(102),
        run(2, 200),
        run(2, 201),
        run(2, 105),
        run(3, 300),
        run(2, 400),
        run(1, 105),
    };
    const Rows shown = rowsOf(user.bills());
    for (std::size_t i = 0; i < tries.size(); ++i) {
        SCOPED_TRACE(testing::Message() << "try " << i);
        const QStringList said = messagesOf(tries[i]);
        bool recorded = false;
        for (const QString& text : said) {
            for (const int number : numbers)
                recorded = recorded || text.endsWith(QLatin1Char(' ') + QString::number(number));
        }
        EXPECT_TRUE(recorded) << qPrintable(said.join(QLatin1Char('\n')));
    }
    EXPECT_EQ(textOf(rowsOf(user.bills())), textOf(shown));
    EXPECT_EQ(bytesOf(path), before);
    // Closing has nothing left to write.
    const ModalAnswers noMessages;
    user.close();
}

constexpr int readOnly = 8;
constexpr int corrupt = 11;

}  // namespace

TEST_F(LibraryChanged, DeletedIsNotedBeforeAnythingIsWritten) {
    ASSERT_TRUE(QFile::remove(path));
    {
        ModalAnswers answers;
        answers.closeAnything();
        user.edit(user.bills(), 0, nameKey, QStringLiteral("x"));
        EXPECT_TRUE(answers.seen().value(0).contains(QStringLiteral("文件已被删除、移动或替换")));
    }
    expectThatNothingIsWritten({readOnly});
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(LibraryChanged, ReplacedByAnotherLibraryIsNotedBeforeAnythingIsWritten) {
    moveAside();
    ASSERT_TRUE(QFile::copy(copyOfSampleLibrary(QStringLiteral("other.bdb")), path));
    expectThatNothingIsWritten({readOnly});
    user.open();
    click("010101");
    expectThatWorkGoesOn();
}

TEST_F(LibraryChanged, MovedAwayAndBackIsTheSameLibrary) {
    moveAside();
    EXPECT_EQ(messagesOf([this] { user.edit(user.bills(), 0, nameKey, QStringLiteral("x")); }),
              QStringList{QStringLiteral("ModDBOperator.ExecuteDDL 8")});
    ASSERT_TRUE(QFile::rename(aside, path));
    expectThatWorkGoesOn();
    expectWindowIsFile();
}

TEST_F(LibraryChanged, CutShortIsNotWrittenTo) {
    cut(QFile(path).size() / 2);
    expectThatNothingIsWritten({corrupt});
}

TEST_F(LibraryChanged, CutToNothingIsNotWrittenTo) {
    cut(0);
    expectThatNothingIsWritten({1, corrupt});
}

TEST_F(LibraryChanged, OverwrittenInPlaceShowsTheOtherLibraryFromTheNextClick) {
    overwrite(copyOfSampleLibrary(QStringLiteral("other.bdb")));
    EXPECT_EQ(messagesOf([this] { click("010101"); }), QStringList());
    expectThatWorkGoesOn();
    EXPECT_EQ(integrityOf(path), QStringLiteral("ok"));
    reopen();
    click("010101");
    expectWindowIsFile();
}

TEST_F(LibraryChanged, OverwrittenByAForeignFileIsNotWrittenTo) {
    QFile file(aside);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(20'000, 'x'));
    file.close();
    overwrite(aside);
    expectThatNothingIsWritten({corrupt, 26});
}
