#include "editor/RationLibraries.h"

#include <gtest/gtest.h>

#include <QFile>

#include "editor/chapters/ChapterPane.h"
#include "editor/frmEditor.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/RationLibraries.h"
#include "tests/support/SampleProgram.h"

using namespace Qt::StringLiterals;

TEST(RationLibraries, AreListedByNameAndTheFirstOfTheFileNameIsTheDefault) {
    const RationLibraries files;
    files.list({});
    EXPECT_EQ(GetDekComboList(), QString());
    files.list(
        {{"B1", "乙", "", "", "", "a.bdb"}, {"A1", "丙", "", "", "", "a.bdb"}, {"C1", "丁", "", "", "", "c.bdb"}});
    EXPECT_EQ(GetDekComboList(), u"#C1;丁|#A1;丙|#B1;乙"_s);
    EXPECT_EQ(GetDefDekID(u"a.bdb"_s), u"B1"_s);
    EXPECT_EQ(GetDefDekID(u"A.bdb"_s), QString());
    ModalAnswers answers;
    answers.closeAnything();
    EXPECT_EQ(GetDefDekID(u"it's.bdb"_s), QString());
    EXPECT_EQ(answers.takePlaces(), QStringList{u"frmEditor.GetDefDekID"_s});
}

TEST(RationLibraries, WithoutTheirListTheEditorWorksAllTheSame) {
    frmEditor editor(nullptr);
    editor.setDBFilePath(copyOfSampleLibrary());
    QFile::remove(RationLibraries::systemDatabasePath());
    ModalAnswers answers;
    answers.closeAnything();
    EXPECT_TRUE(editor.Form_Load());
    EXPECT_TRUE(answers.seen().value(0).contains(u"错误号码: 14"_s));
    EXPECT_EQ(answers.takePlaces().join(u' '), u"frmEditor.GetDefDekID frmEditor.GetDekComboList"_s);
    EXPECT_EQ(editor.DekID(), QString());
    EXPECT_GT(editor.chapterPane()->tvSYB()->nodeCount(), 0);
    EXPECT_FALSE(QFile::exists(RationLibraries::systemDatabasePath()));
}
