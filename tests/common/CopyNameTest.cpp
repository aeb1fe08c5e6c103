#include "editor/common/CopyName.h"

#include <gtest/gtest.h>

#include "tests/support/ModalAnswers.h"
#include "tests/support/TemporaryLibrary.h"

namespace {

QString copyName(const TemporaryLibrary& library, const QString& name) {
    return GetCopyName(library.connection(), name, "tblBillSpec", "Name");
}

void insertName(const TemporaryLibrary& library, const QString& name) {
    library.run(sql("INSERT INTO tblBillSpec(BillID,Name) VALUES(1,'", name, "')"));
}

/// The rule itself: one question per candidate.
QString firstFreeOneByOne(const TemporaryLibrary& library, const QString& name) {
    QString candidate = name;
    for (int counter = 1;
         !library.connection()
              ->OpenRecordset(sql("SELECT Name FROM tblBillSpec WHERE Name='", candidate, "' LIMIT 1 OFFSET 0;"))
              .EndOfFile();
         ++counter)
        candidate = name + QStringLiteral("(%1)").arg(counter);
    return candidate;
}

}  // namespace

TEST(CopyName, IsTheFirstCandidateThatNoRowHas) {
    const TemporaryLibrary library;
    library.run("PRAGMA synchronous=OFF");
    const QStringList bases = {QStringLiteral("新建项目特征"), QStringLiteral("a"),  QStringLiteral("A"),
                               QStringLiteral("a(1)"),         QStringLiteral("x%"), QStringLiteral("x_y"),
                               QStringLiteral("xzy"),          QStringLiteral("("),  QString()};
    library.run("INSERT INTO tblBillSpec(BillID,Name) VALUES(1,NULL),(1,x'61'),(1,7)");
    for (int round = 0; round < 4; ++round) {
        for (const QString& base : bases) {
            EXPECT_EQ(copyName(library, base), firstFreeOneByOne(library, base)) << qPrintable(base);
            insertName(library, copyName(library, base));
        }
        // A gap in the numbering is filled before it is continued; near misses take nothing.
        insertName(library, QStringLiteral("新建项目特征(3)"));
        insertName(library, QStringLiteral("新建项目特征(02)"));
        insertName(library, QStringLiteral("新建项目特征 (2)"));
    }
}

TEST(CopyName, TrimsBlanksAndFailsOnAnApostrophe) {
    const TemporaryLibrary library;
    insertName(library, QStringLiteral("特征"));
    EXPECT_EQ(copyName(library, QStringLiteral("  特征 ")), QStringLiteral("特征(1)"));
    EXPECT_EQ(copyName(library, QStringLiteral("\u3000特征")), QStringLiteral("\u3000特征"));

    ModalAnswers answers;
    answers.closeAnything();
    EXPECT_EQ(copyName(library, QStringLiteral("特'征")), QString());
    EXPECT_EQ(GetCopyName(nullptr, QStringLiteral("特征"), "tblBillSpec", "Name"), QString());
    ASSERT_EQ(answers.seen().size(), 2);
    EXPECT_TRUE(answers.seen().first().contains(QStringLiteral("frmEditor.GetCopyName")));
}
