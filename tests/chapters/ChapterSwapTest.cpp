#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QMap>
#include <random>

#include "editor/chapters/ChapterData.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/TemporaryLibrary.h"

namespace {

const SqlText allCodes =
    "SELECT 's'||id, code FROM tblSYB UNION ALL SELECT 'b'||id, code FROM tblBill "
    "UNION ALL SELECT 'c'||id, code FROM tblCont ORDER BY 1";

/// What a swap does to one code, told without statements.
QString swapped(const QString& code, const QString& a, const QString& b) {
    const QString rest = code.mid(b.size());
    // Codes that start with the stand-in of the swap are swept along with those of b.
    if (code.startsWith(b) || code.startsWith(QString(b.size(), QLatin1Char('0'))))
        return a + rest;
    return code.startsWith(a) ? b + rest : code;
}

class Model {
public:
    explicit Model(const TemporaryLibrary& library) : m_library(library) {}

    void add(const SqlText& table, QChar letter, const QString& code) {
        m_library.run(sql("INSERT INTO ", table, "(code,name,lastUpdate) VALUES('", code, "','x','2020')"));
        m_codes[letter + QString::number(m_library.connection()->LastInsertId())] = code;
    }

    void addContent(const QString& code) {
        m_library.run(sql("INSERT INTO tblCont(code,billID,lastUpdate) VALUES('", code, "',1,'2020')"));
        m_codes[QLatin1Char('c') + QString::number(m_library.connection()->LastInsertId())] = code;
    }

    void swap(const QString& a, const QString& b) {
        for (QString& code : m_codes)
            code = swapped(code, a, b);
    }

    QStringList rows() const {
        QStringList rows;
        for (auto entry = m_codes.begin(); entry != m_codes.end(); ++entry)
            rows << entry.key() + QLatin1Char('|') + entry.value();
        return rows;
    }

private:
    const TemporaryLibrary& m_library;
    QMap<QString, QString> m_codes;
};

}  // namespace

TEST(ExchangeSYBNode, AgreesWithAModelOnRandomCodes) {
    const TemporaryLibrary library;
    library.run("PRAGMA synchronous=OFF");
    Model model(library);
    std::mt19937 random(20240501);
    const auto below = [&random](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    // Few different digits, so that prefixes meet often; lengths of chapters, bills and of neither.
    const auto randomCode = [&] {
        QString code;
        for (int length = below(11); code.size() < length;)
            code += QString::number(below(3));
        return code;
    };
    for (int i = 0; i < 150; ++i) {
        model.add("tblSYB", QLatin1Char('s'), randomCode());
        model.add("tblBill", QLatin1Char('b'), randomCode());
        model.addContent(randomCode());
    }
    ASSERT_EQ(library.rowsInFile(allCodes), model.rows());
    for (int i = 0; i < 60; ++i) {
        const QString parent = QStringLiteral("0102").left(2 * below(3));
        const int first = 1 + below(3);
        const int second = 1 + (first + below(2)) % 3;
        const QString a = parent + QLatin1Char('0') + QString::number(first);
        const QString b = parent + QLatin1Char('0') + QString::number(second);
        ASSERT_TRUE(ExchangeSYBNode(library.connection(), a, b));
        model.swap(a, b);
        ASSERT_EQ(library.rowsInFile(allCodes), model.rows()) << qPrintable(a) << " and " << qPrintable(b);
    }
    EXPECT_EQ(library.rowsInFile("SELECT count(*) FROM tblSYB WHERE lastUpdate='2020' UNION ALL "
                                 "SELECT count(*) FROM tblBill WHERE lastUpdate='2020' UNION ALL "
                                 "SELECT count(*) FROM tblCont WHERE lastUpdate='2020'"),
              QStringList(3, QStringLiteral("150")));
}

TEST(ExchangeSYBNode, AnErrorUndoesEverythingAndLeavesTheSavepointOpen) {
    const TemporaryLibrary library;
    Model model(library);
    model.add("tblSYB", QLatin1Char('s'), QStringLiteral("01"));
    model.add("tblSYB", QLatin1Char('s'), QStringLiteral("02"));
    model.add("tblBill", QLatin1Char('b'), QStringLiteral("010101001"));
    model.add("tblBill", QLatin1Char('b'), QStringLiteral("020101001"));
    // The fifth statement fails, after both tables were changed.
    library.run(
        "CREATE TRIGGER trip BEFORE UPDATE ON tblBill WHEN new.code LIKE '02%' "
        "BEGIN SELECT raise(ABORT,'tripped'); END");
    {
        ModalAnswers answers;
        answers.closeAnything();
        EXPECT_FALSE(ExchangeSYBNode(library.connection(), QStringLiteral("01"), QStringLiteral("02")));
        ASSERT_EQ(answers.seen().size(), 1);
        EXPECT_TRUE(answers.seen()[0].contains(QStringLiteral("frmEditor.ExchangeSYBNode")));
        EXPECT_TRUE(answers.seen()[0].contains(QStringLiteral("tripped")));
    }
    library.run("DROP TRIGGER trip");
    model.add("tblSYB", QLatin1Char('s'), QStringLiteral("03"));
    EXPECT_NO_THROW(library.connection()->Execute("ROLLBACK TO ExchangeSYBNode"));
    model.add("tblSYB", QLatin1Char('s'), QStringLiteral("04"));
    QCoreApplication::processEvents();
    EXPECT_EQ(library.rowsInFile("SELECT code FROM tblSYB ORDER BY code"),
              (QStringList{QStringLiteral("01"), QStringLiteral("02"), QStringLiteral("04")}));
    EXPECT_EQ(library.rowsInFile("SELECT code FROM tblBill ORDER BY id"),
              (QStringList{QStringLiteral("010101001"), QStringLiteral("020101001")}));
}
