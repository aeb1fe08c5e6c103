#include "editor/contents/RationLookup.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "app/base/Definitions.h"
#include "app/base/Paths.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/RationLibraries.h"

namespace {

/// "name|unit" of a ration, or of what stays untouched when there is none.
QString found(const char* deh, const QString& path) {
    QString name = QStringLiteral("untouched");
    QString unit = QStringLiteral("too");
    const bool exists = GetDeData(QString::fromLatin1(deh), path, name, unit);
    EXPECT_NE(exists, name == QLatin1String("untouched") && unit == QLatin1String("too"));
    return name + QLatin1Char('|') + unit;
}

const QString nothing = QStringLiteral("untouched|too");

}  // namespace

TEST(RationLookup, ThePathComesFromRegionAndFileName) {
    const RationLibraries libraries;
    libraries.list({{"HN01", "", "湖南.db", "", "湖南省"}, {"HN01", "", "second.db", "", "second"}});
    EXPECT_EQ(GetDekFilePath(QStringLiteral("HN01")),
              joinPath(joinPath(dataPath, QStringLiteral("湖南省")), QStringLiteral("湖南.db")));
    EXPECT_EQ(GetDekFilePath(QStringLiteral("hn01")), QString()) << "ids are compared exactly";

    QFile::remove(RationLibraries::systemDatabasePath());
    ModalAnswers answers;
    answers.closeAnything();
    EXPECT_EQ(GetDekFilePath(QStringLiteral("HN01")), QString());
    ASSERT_EQ(answers.seen().size(), 1);
    EXPECT_TRUE(answers.seen().first().contains(QLatin1String("frmEditor.GetDekFilePath")));
    EXPECT_FALSE(QFile::exists(RationLibraries::systemDatabasePath()));
}

TEST(RationLookup, FindsTheFirstRationOfThatCodeIgnoringCase) {
    const RationLibraries libraries;
    const QString path =
        libraries.make("a.db", {"1,1,'A1-1','人工挖土方','100m3'", "2,1,'a1-1','second',''", "3,1,' A2','blank',NULL"});
    EXPECT_EQ(found("a1-1", path), QStringLiteral("人工挖土方|100m3"));
    EXPECT_EQ(found(" a2", path), QStringLiteral("blank|"));
    for (const char* unknown : {"A2", "", "A1-"})
        EXPECT_EQ(found(unknown, path), nothing) << unknown;

    // Each of these is an error that is shown, not a quiet miss.
    ModalAnswers answers;
    answers.closeAnything();
    for (const char* hostile : {"A1-1'", "x' OR '1'='1"})
        EXPECT_EQ(found(hostile, path), nothing);
    EXPECT_EQ(found("A1-1", libraries.makeDamaged("text.db")), nothing);
    EXPECT_EQ(found("A1-1", dataPath), nothing);
    ASSERT_EQ(answers.seen().size(), 4);
    EXPECT_TRUE(answers.seen().last().contains(QLatin1String("frmEditor.GetDeData")));
    EXPECT_EQ(QDir(QFileInfo(path).path()).entryList(QDir::Files).size(), 2) << "no side files";
}
