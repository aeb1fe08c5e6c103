#include "app/base/ErrorLog.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFile>
#include <QRegularExpression>
#include <stdexcept>

#include "app/base/Definitions.h"
#include "app/base/Error.h"
#include "app/base/Guarded.h"
#include "app/base/Paths.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/TestMain.h"

namespace {

QString logFile() { return joinPath(testProgramFolder(), QStringLiteral("Error.log")); }

QString logged() {
    QFile file(logFile());
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

}  // namespace

TEST(ErrorLog, AppendsRecordsAndShowsEach) {
    QFile::remove(logFile());
    ModalAnswers answers;
    answers.closeAnything();
    EXPECT_FALSE(guarded({"frmEditor", "LoadBill"}, []() -> bool { throw Error(-26, QStringLiteral("坏了")); }));
    EXPECT_EQ(guarded({"modMain", "Main"}, []() -> QString { throw std::runtime_error("plain"); }), QString());

    const QString text = logged();
    const QRegularExpression record(QStringLiteral(
        "^时    间: \\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\r\n计算机名: [^\r\n]*\r\n程序名称: base_tests\r\n"
        "版    本: 1\\.0\\.0\r\n错误位置: frmEditor\\.LoadBill\r\n错误号码: -26\r\n错误描述: 坏了\r\n={80}\r\n\r\n时   "
        " 间"));
    EXPECT_TRUE(record.match(text).hasMatch()) << qPrintable(text);
    EXPECT_TRUE(text.contains(QStringLiteral("错误位置: modMain.Main\r\n错误号码: 5\r\n错误描述: plain\r\n")));
    ASSERT_EQ(answers.seen().size(), 2);
    EXPECT_TRUE(answers.seen()[0].startsWith(QStringLiteral("错误信息: 时    间: ")));
    EXPECT_TRUE(answers.seen()[0].contains(QStringLiteral("错误描述: 坏了")));
}

TEST(ErrorLog, ShowsTheRecordWhenTheFileCannotBeWritten) {
    QFile::remove(logFile());
    ASSERT_TRUE(QFile::rename(testProgramFolder(), testProgramFolder() + QLatin1String("-away")));
    {
        ModalAnswers answers;
        answers.closeAnything();
        guarded({"modMain", "Main"}, [] { throw Error(1, QStringLiteral("x")); });
        EXPECT_EQ(answers.seen().size(), 1);
    }
    ASSERT_TRUE(QFile::rename(testProgramFolder() + QLatin1String("-away"), testProgramFolder()));
}

TEST(Guarded, RecordsBeforeItRollsBack) {
    ModalAnswers answers;
    answers.closeAnything();
    qsizetype seenAtRollBack = 0;
    const int result = guarded(
        {"frmEditor", "X"}, []() -> int { throw Error(1, QStringLiteral("x")); },
        [&] {
            seenAtRollBack = answers.seen().size();
            return 7;
        });
    EXPECT_EQ(result, 7);
    EXPECT_EQ(seenAtRollBack, 1);
}

TEST(UserEvent, IsOverOncePerOutermostProcedure) {
    int over = 0;
    const auto link = QObject::connect(&UserEvent::instance(), &UserEvent::over, qApp, [&] {
        ++over;
        guarded({"m", "at the end"}, [] {});
    });
    guarded({"m", "outer"}, [&] {
        guarded({"m", "inner"}, [] {});
        QCoreApplication::processEvents();
        EXPECT_EQ(over, 0);
    });
    EXPECT_EQ(over, 0);
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    EXPECT_EQ(over, 1);
    QObject::disconnect(link);
}
