#include "editor/contents/RationLookup.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "app/base/Definitions.h"
#include "app/base/Paths.h"
#include "tests/contents/RationLibraries.h"
#include "tests/support/ModalAnswers.h"

namespace {

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool finds(const QString& deh, const QString& path, const QString& expected) {
    QString name = QStringLiteral("untouched");
    QString unit = name;
    const bool found = GetDeData(deh, path, name, unit);
    EXPECT_EQ(name + QLatin1Char('|') + unit, found ? expected : QStringLiteral("untouched|untouched"));
    return found;
}

}  // namespace

TEST(RationLookup, PathComesFromRegionAndFileName) {
    RationLibraries libraries;
    libraries.list(QStringLiteral("HN01"), QStringLiteral("湖南省"), QStringLiteral("湖南.db"));
    libraries.list(QStringLiteral("HN01"), QStringLiteral("second"), QStringLiteral("second.db"));
    EXPECT_EQ(GetDekFilePath(QStringLiteral("HN01")),
              joinPath(joinPath(dataPath, QStringLiteral("湖南省")), QStringLiteral("湖南.db")));
    EXPECT_EQ(GetDekFilePath(QStringLiteral("hn01")), QString()) << "ids are compared exactly";
    EXPECT_EQ(GetDekFilePath(QString()), QString());
}

TEST(RationLookup, MissingSystemDatabaseIsReportedAndNotLeftBehind) {
    ModalAnswers answers;
    answers.closeAnything();
    EXPECT_EQ(GetDekFilePath(QStringLiteral("HN01")), QString());
    ASSERT_EQ(answers.seen().size(), 1);
    EXPECT_TRUE(answers.seen().first().contains(QLatin1String("frmEditor.GetDekFilePath")));
    EXPECT_FALSE(QFile::exists(RationLibraries::systemDatabasePath()));
}

TEST(RationLookup, FindsTheFirstRationOfThatCodeIgnoringCase) {
    RationLibraries libraries;
    const QString path = libraries.add(QStringLiteral("GD01"), QStringLiteral("广东省"), QStringLiteral("a.db"),
                                       {{QStringLiteral("A1-1"), QStringLiteral("人工挖土方"), QStringLiteral("100m3")},
                                        {QStringLiteral("a1-1"), QStringLiteral("the second"), QString()},
                                        {QStringLiteral(" A2"), QStringLiteral("leading blank"), QString()}});
    const QByteArray before = contentOf(path);
    ModalAnswers answers;
    EXPECT_TRUE(finds(QStringLiteral("a1-1"), path, QStringLiteral("人工挖土方|100m3")));
    EXPECT_FALSE(finds(QStringLiteral("A2"), path, {}));
    EXPECT_TRUE(finds(QStringLiteral(" a2"), path, QStringLiteral("leading blank|")));
    EXPECT_FALSE(finds(QString(), path, {}));
    answers.closeAnything();
    EXPECT_FALSE(finds(QStringLiteral("A1-1'"), path, {}));
    EXPECT_FALSE(finds(QStringLiteral("x' OR '1'='1"), path, {}));
    EXPECT_EQ(answers.seen().size(), 2) << "an apostrophe is an error, not a quiet miss";
    EXPECT_EQ(contentOf(path), before);
    EXPECT_EQ(QDir(QFileInfo(path).path()).entryList(QDir::Files).size(), 1) << "no side files";
}

TEST(RationLookup, DamagedAndForeignLibrariesAreErrors) {
    RationLibraries libraries;
    const QString foreign = libraries.add(QStringLiteral("F"), QStringLiteral("r"), QStringLiteral("f.db"), {});
    const QString noDatabase = joinPath(dataPath, QStringLiteral("text.db"));
    QFile text(noDatabase);
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write(QByteArray(4096, 'x'));
    text.close();
    ModalAnswers answers;
    answers.closeAnything();
    EXPECT_FALSE(finds(QStringLiteral("A1"), noDatabase, {}));
    EXPECT_FALSE(finds(QStringLiteral("A1"), dataPath, {}));
    ASSERT_EQ(answers.seen().size(), 2);
    EXPECT_TRUE(answers.seen().first().contains(QLatin1String("frmEditor.GetDeData")));
    EXPECT_FALSE(finds(QStringLiteral("A1"), foreign, {})) << "an empty library just has no such ration";
    EXPECT_EQ(answers.seen().size(), 2);
}
