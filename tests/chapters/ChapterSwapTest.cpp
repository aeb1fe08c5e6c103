#include <gtest/gtest.h>

#include <QCoreApplication>
#include <random>

#include "editor/chapters/ChapterData.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/TemporaryLibrary.h"

using namespace Qt::StringLiterals;

namespace {

/// What a swap does to one code, told without statements.
QString swapped(const QString& code, const QString& a, const QString& b) {
    const QString rest = code.mid(b.size());
    // Codes that start with the stand-in of the swap are swept along with those of b.
    if (code.startsWith(b) || code.startsWith(QString(b.size(), u'0')))
        return a + rest;
    return code.startsWith(a) ? b + rest : code;
}

}  // namespace

TEST(ExchangeSYBNode, AgreesWithAModelOnRandomCodes) {
    const TemporaryLibrary library;
    library.run("PRAGMA synchronous=OFF");
    std::mt19937 random(20240501);
    const auto below = [&random](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    QStringList model;
    for (const SqlText& columns : {SqlText("tblSYB(name"), SqlText("tblBill(name"), SqlText("tblCont(billID")}) {
        for (int i = 0; i < 150; ++i) {
            // Few different digits, so that prefixes meet often; lengths of chapters, bills and of neither.
            QString code;
            for (int length = below(11); code.size() < length;)
                code += QString::number(below(3));
            library.run(sql("INSERT INTO ", columns, ",code,lastUpdate) VALUES(1,'", code, "','2020')"));
            model << code;
        }
    }
    for (int i = 0; i < 60; ++i) {
        const QString parent = u"0102"_s.left(2 * below(3));
        const int first = 1 + below(3);
        const QString a = parent + u'0' + QString::number(first);
        const QString b = parent + u'0' + QString::number(1 + (first + below(2)) % 3);
        ASSERT_TRUE(ExchangeSYBNode(library.connection(), a, b));
        for (QString& code : model)
            code = swapped(code, a, b);
        ASSERT_EQ(library.rowsInFile("SELECT code FROM (SELECT 1 AS t,id,code FROM tblSYB UNION ALL "
                                     "SELECT 2,id,code FROM tblBill UNION ALL SELECT 3,id,code FROM tblCont) "
                                     "ORDER BY t,id"),
                  model)
            << qPrintable(a) << " and " << qPrintable(b);
    }
    EXPECT_EQ(library.rowsInFile("SELECT DISTINCT lastUpdate FROM (SELECT lastUpdate FROM tblSYB UNION ALL "
                                 "SELECT lastUpdate FROM tblBill UNION ALL SELECT lastUpdate FROM tblCont)"),
              QStringList{u"2020"_s});
}

TEST(ExchangeSYBNode, AnErrorUndoesEverythingAndLeavesTheSavepointOpen) {
    const TemporaryLibrary library;
    library.run("INSERT INTO tblSYB(code,name) VALUES('01','x'),('02','x')");
    library.run("INSERT INTO tblBill(code) VALUES('010101001'),('020101001')");
    // The fifth statement fails, after both tables were changed.
    library.run(
        "CREATE TRIGGER trip BEFORE UPDATE ON tblBill WHEN new.code LIKE '02%' "
        "BEGIN SELECT raise(ABORT,'tripped'); END");
    ModalAnswers answers;
    answers.closeAnything();
    EXPECT_FALSE(ExchangeSYBNode(library.connection(), u"01"_s, u"02"_s));
    ASSERT_EQ(answers.seen().size(), 1);
    EXPECT_TRUE(answers.seen()[0].contains(u"frmEditor.ExchangeSYBNode"_s));
    EXPECT_TRUE(answers.seen()[0].contains(u"tripped"_s));
    library.run("DROP TRIGGER trip");
    library.run("INSERT INTO tblSYB(code,name) VALUES('03','x')");
    EXPECT_NO_THROW(library.connection()->Execute("ROLLBACK TO ExchangeSYBNode"));
    library.run("INSERT INTO tblSYB(code,name) VALUES('04','x')");
    QCoreApplication::processEvents();
    EXPECT_EQ(library.rowsInFile("SELECT group_concat(code) FROM tblSYB UNION ALL "
                                 "SELECT group_concat(code) FROM tblBill"),
              (QStringList{u"01,02,04"_s, u"010101001,020101001"_s}));
}
