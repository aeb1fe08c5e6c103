#include "editor/common/CopyName.h"

#include <gtest/gtest.h>

#include "tests/support/ModalAnswers.h"
#include "tests/support/TemporaryLibrary.h"

using namespace Qt::StringLiterals;

namespace {

/// The rule itself: one question per candidate.
QString firstFreeOneByOne(const TemporaryLibrary& library, const QString& name) {
    QString candidate = name;
    for (int counter = 1;
         !library.rowsInFile(sql("SELECT Name FROM tblBillSpec WHERE Name='", candidate, "'")).isEmpty(); ++counter)
        candidate = name + u"(%1)"_s.arg(counter);
    return candidate;
}

}  // namespace

TEST(CopyName, IsTheFirstCandidateThatNoRowHas) {
    const TemporaryLibrary library;
    library.run("PRAGMA synchronous=OFF");
    const auto copyName = [&](const QString& name) {
        return GetCopyName(library.connection(), name, "tblBillSpec", "Name");
    };
    const auto insert = [&](const QString& name) {
        library.run(sql("INSERT INTO tblBillSpec(BillID,Name) VALUES(1,'", name, "')"));
    };
    library.run("INSERT INTO tblBillSpec(BillID,Name) VALUES(1,NULL),(1,x'61'),(1,7)");
    for (int round = 0; round < 4; ++round) {
        for (const QString& base : {u"特征"_s, u"a"_s, u"A"_s, u"a(1)"_s, u"x%"_s, u"x_y"_s, u"xzy"_s, u"("_s, u""_s}) {
            const QString name = copyName(base);
            EXPECT_EQ(name, firstFreeOneByOne(library, base)) << qPrintable(base);
            insert(name);
        }
        // A gap in the numbering is filled before it is continued; near misses take nothing.
        for (const QString& name : {u"特征(3)"_s, u"特征(02)"_s, u"特征 (2)"_s})
            insert(name);
    }
    EXPECT_EQ(copyName(u"  b "_s) + copyName(u"\u3000b"_s), u"b\u3000b"_s) << "trims blanks";

    ModalAnswers answers;
    answers.closeAnything();
    EXPECT_EQ(copyName(u"特'征"_s), QString());
    EXPECT_EQ(GetCopyName(nullptr, u"特征"_s, "tblBillSpec", "Name"), QString());
    EXPECT_EQ(answers.takePlaces(), QStringList(2, u"frmEditor.GetCopyName"_s));
}
