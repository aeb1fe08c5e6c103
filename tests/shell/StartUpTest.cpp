#include <gtest/gtest.h>

#include <QDir>
#include <QProcess>
#include <QTest>

#include "app/base/Paths.h"
#include "tests/support/SampleProgram.h"

using namespace Qt::StringLiterals;

namespace {

/// The real program in a program folder of its own.
class Program {
public:
    explicit Program(const QString& home) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"TESSEL_HOME"_s, home);
        environment.insert(u"XDG_CONFIG_HOME"_s, joinPath(home, u"config"_s));
        environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
        process.setProcessEnvironment(environment);
        process.start(joinPath(builtProgramFolder(), u"tessel"_s), {});
    }
    ~Program() {
        process.kill();
        process.waitForFinished();
    }

    QProcess process;
};

}  // namespace

TEST(StartUp, ASecondCopyEndsAndACrashedOneDoesNotBlock) {
    const QTemporaryDir home;
    const QString data = joinPath(home.path(), u"Data"_s);
    {
        const Program first(home.path());
        ASSERT_TRUE(QTest::qWaitFor([&] { return QDir(data).exists(); }, 20000));
        Program second(home.path());
        EXPECT_TRUE(second.process.waitForFinished(20000));
        EXPECT_EQ(second.process.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(second.process.exitCode(), 0);
        EXPECT_EQ(first.process.state(), QProcess::Running);

        const QTemporaryDir elsewhere;
        const Program third(elsewhere.path());
        const QDir itsData(joinPath(elsewhere.path(), u"Data"_s));
        EXPECT_TRUE(QTest::qWaitFor([&] { return itsData.exists(); }, 20000)) << "another folder is another program";
    }
    // The first copy was killed just now.
    ASSERT_TRUE(QDir(data).removeRecursively());
    const Program next(home.path());
    EXPECT_TRUE(QTest::qWaitFor([&] { return QDir(data).exists(); }, 20000));
}
