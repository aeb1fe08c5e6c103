#include "editor/contents/RationLookup.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>

#include "app/base/Definitions.h"
#include "app/base/Paths.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/RationLibraries.h"

using namespace Qt::StringLiterals;

TEST(RationLookup, ThePathComesFromRegionAndFileName) {
    const RationLibraries libraries;
    libraries.list({{"HN01", "", "湖南.db", "", "湖南省"}, {"HN01", "", "second.db", "", "second"}});
    EXPECT_EQ(GetDekFilePath(u"HN01"_s), joinPath(joinPath(dataPath, u"湖南省"_s), u"湖南.db"_s));
    EXPECT_EQ(GetDekFilePath(u"hn01"_s), QString()) << "ids are compared exactly";

    QFile::remove(RationLibraries::systemDatabasePath());
    ModalAnswers answers;
    answers.closeAnything();
    EXPECT_EQ(GetDekFilePath(u"HN01"_s), QString());
    EXPECT_EQ(answers.takePlaces(), QStringList{u"frmEditor.GetDekFilePath"_s});
    EXPECT_FALSE(QFile::exists(RationLibraries::systemDatabasePath()));
}

TEST(RationLookup, FindsTheFirstRationOfThatCodeIgnoringCase) {
    const RationLibraries libraries;
    const QString path =
        libraries.make("a.db", {"1,1,'A1-1','人工挖土方','100m3'", "2,1,'a1-1','second',''", "3,1,' A2','blank',NULL"});
    const QString damaged = libraries.makeDamaged("text.db");
    struct Case {
        const char* code;
        QString path, found, error;
    } const cases[] = {{"a1-1", path, u"人工挖土方|100m3"_s, {}},
                       {" a2", path, u"blank|"_s, {}},
                       {"A2", path, {}, {}},
                       {"A1-", path, {}, {}},
                       {"", path, {}, {}},
                       // Each of these is an error that is shown, not a quiet miss.
                       {"x' OR '1'='1", path, {}, u"frmEditor.GetDeData"_s},
                       {"A1-1", damaged, {}, u"frmEditor.GetDeData"_s},
                       {"A1-1", dataPath, {}, u"frmEditor.GetDeData"_s}};
    ModalAnswers answers;
    answers.closeAnything();
    for (const auto& [code, file, found, error] : cases) {
        SCOPED_TRACE(code);
        QString name = u"untouched"_s, unit = u"too"_s;
        EXPECT_EQ(GetDeData(QString::fromLatin1(code), file, name, unit), !found.isNull());
        EXPECT_EQ(name + u'|' + unit, found.isNull() ? u"untouched|too"_s : found);
        EXPECT_EQ(answers.takePlaces().join(u' '), error);
    }
    EXPECT_EQ(QDir(QFileInfo(path).path()).entryList(QDir::Files).size(), 2) << "no side files";
}
