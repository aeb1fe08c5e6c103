#include "app/base/ErrorLog.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFile>
#include <QRegularExpression>
#include <stdexcept>

#include "app/base/Error.h"
#include "app/base/Guarded.h"
#include "app/base/Paths.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/TestMain.h"

using namespace Qt::StringLiterals;

TEST(ErrorLog, AppendsRecordsShowsEachAndThenRollsBack) {
    QFile log(joinPath(testProgramFolder(), u"Error.log"_s));
    log.remove();
    ModalAnswers answers;
    answers.closeAnything();
    const auto answered = [&] { return answers.seen().size(); };
    EXPECT_EQ(guarded(
                  {"frmEditor", "LoadBill"}, []() -> qsizetype { throw Error(-26, u"坏了"_s); }, answered),
              1);
    EXPECT_EQ(guarded({"modMain", "Main"}, []() -> QString { throw std::runtime_error("plain"); }), QString());

    ASSERT_TRUE(log.open(QIODevice::ReadOnly));
    const QString text = QString::fromUtf8(log.readAll());
    log.close();
    const QRegularExpression record(
        u"^时    间: \\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\r\n计算机名: [^\r\n]*\r\n程序名称: base_tests\r\n"
        "版    本: 1\\.0\\.0\r\n错误位置: frmEditor\\.LoadBill\r\n错误号码: -26\r\n错误描述: 坏了\r\n={80}\r\n\r\n时   "
        " 间"_s);
    EXPECT_TRUE(record.match(text).hasMatch()) << qPrintable(text);
    EXPECT_TRUE(
        text.contains(u"错误位置: modMain.Main\r\n错误号码: 5\r\n错误描述: 程序出错，操作没有完成（plain）\r\n"_s));
    EXPECT_TRUE(answers.seen().value(0).startsWith(u"错误信息: 时    间: "_s));
    EXPECT_EQ(answers.takePlaces().join(u' '), u"frmEditor.LoadBill modMain.Main"_s);
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
