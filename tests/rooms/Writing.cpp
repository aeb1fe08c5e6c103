#include "tests/rooms/Writing.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QMap>
#include <QRegularExpression>

#include "app/base/Text.h"
#include "storage/Lookups.h"
#include "tests/support/ModalAnswers.h"

using namespace Qt::StringLiterals;

namespace {

const char* const tables[] = {"tblSYB", "tblBill", "tblParm", "tblCont", "tblContDe", "tblBillSpec", "tblSpecEnum"};

/// The cells of every row as "Column=value", by table and id.
QMap<QString, QStringList> rowsOf(const TemporaryLibrary& library) {
    QMap<QString, QStringList> all;
    OtherProgram file(library.path());
    for (const char* name : tables) {
        const QString table = QString::fromLatin1(name);
        const QStringList columns = file.run("SELECT name FROM pragma_table_info(?)", {table});
        for (QStringList row : file.rows(u"SELECT * FROM "_s + table)) {
            const QString id = row.first().rightJustified(5, u'0');
            for (qsizetype i = 0; i < row.size(); ++i)
                row[i] = columns[i] + u'=' + (row[i].isNull() ? u"NULL"_s : row[i]);
            all.insert(table + u' ' + id, row);
        }
    }
    return all;
}

}  // namespace

DetailedLibrary::DetailedLibrary() {
    run("PRAGMA synchronous=OFF");
    connection()->OpenRecordset("PRAGMA busy_timeout=0");
    const SqlText two = "(SELECT 1 AS n UNION ALL SELECT 2)";
    const SqlText four = "(SELECT 1 AS n,1 AS s UNION ALL SELECT 2,1 UNION ALL SELECT 3,2 UNION ALL SELECT 4,3)";
    for (const SqlText& statement :
         {SqlText("INSERT INTO tblSYB(Code,Name) VALUES('01','章'),('0101','章'),('010101','章'),('010102','章'),"
                  "('02','章')"),
          SqlText("INSERT INTO tblBill(Code,Name) VALUES('010101001','清单'),('010101002','清单'),"
                  "('010101003','清单'),('010101004','清单'),('010101005','清单'),('010102001','清单'),"
                  "('01001','清单')"),
          SqlText("INSERT INTO tblParm(Code,BillID) SELECT Code,ID FROM tblBill"),
          sql("INSERT INTO tblCont(ID,Code,Num,Cont,BillID) SELECT ID*10+n,Code,n,'内容',ID FROM tblBill,", two),
          sql("INSERT INTO tblContDe(ID,ContID,SubNum,SubCont,Deh) SELECT ID*10+n,ID,s,'细目','A1' FROM tblCont,",
              four),
          sql("INSERT INTO tblBillSpec(ID,BillID,Name,Type) SELECT ID*10+n,ID,'特征',2 FROM tblBill,", two),
          sql("INSERT INTO tblSpecEnum(ID,SpecID,IsUse) SELECT ID*10+n,ID,2 FROM tblBillSpec,", two)})
        run(statement);
    for (const char* table : tables)
        run(sql("UPDATE ", QString::fromLatin1(table), " SET LastUpdate='old'"));
}

QString DetailedLibrary::changes(const std::function<void()>& act) const {
    const QMap<QString, QStringList> before = rowsOf(*this);
    const QString start = nowText();
    act();
    const QMap<QString, QStringList> after = rowsOf(*this);
    QStringList lines;
    QMap<QString, QString> ids;  // of a line that is being put together
    const auto note = [&](const QString& row, QChar kind, const QString& change) {
        const QString line = row.section(u' ', 0, 0) + kind + change;
        if (!ids.contains(line))
            lines << line;
        ids[line] += u' ' + kind + QString::number(row.section(u' ', 1).toInt());
    };
    for (auto row = before.begin(); row != before.end(); ++row)
        if (!after.contains(row.key()))
            note(row.key(), u'-', {});
    const QString stamp = u"LastUpdate="_s, end = nowText();
    for (auto row = after.begin(); row != after.end(); ++row) {
        const QStringList old = before.value(row.key());
        QString change;
        for (qsizetype i = 1; i < row->size(); ++i) {
            const QString& cell = row->at(i);
            const bool now = cell >= stamp + start && cell <= stamp + end;
            if (old.isEmpty() ? !cell.endsWith(u"=NULL"_s) : cell != old[i])
                change += u' ' + (now ? stamp + u"now"_s : cell);
        }
        if (!change.isEmpty())
            note(row.key(), QLatin1Char(old.isEmpty() ? '+' : '~'), change);
    }
    for (QString& line : lines) {
        const auto table = line.indexOf(QRegularExpression(u"[-~+]"_s));
        line = line.first(table) + ids[line] + line.mid(table + 1);
    }
    return lines.join(u'\n');
}

namespace {

void expectWriting(const Writing& writing, bool lookedUp) {
    using enum Writing::Failing;
    const QString place =
        QString::fromLatin1(writing.failing == Statement ? "ModDBOperator.ExecuteDDL" : writing.place);
    const bool inSavepoint = writing.failing == RolledBack || writing.failing == LeftOpen;
    enum Disturbance { NoLibrary, Locked, Read, Refused, Nothing };
    auto library = std::make_unique<DetailedLibrary>();
    while (lookedUp && library->connection()->lookups().fillSlice()) {
    }
    for (const Disturbance disturbance : {NoLibrary, Locked, Read, Refused, Nothing}) {
        SCOPED_TRACE(testing::Message() << writing.place << ", disturbance " << disturbance << ", looked up "
                                        << lookedUp);
        QString expected = QString::fromUtf8(disturbance == Nothing ? writing.changes : "");
        QStringList places{place};
        if (disturbance == Nothing || (disturbance == NoLibrary && writing.failing == Statement))
            places.clear();
        if (disturbance == NoLibrary && inSavepoint)
            places = QStringList{u"ModDBOperator.SetSP"_s};
        if (disturbance == Read && inSavepoint)
            places = QStringList{u"ModDBOperator.ReleaseSP"_s};
        if (disturbance == Read && writing.failing == LeftOpen)
            expected = QString::fromUtf8(writing.changes);
        if (disturbance == Refused)
            expected = QString::fromUtf8(writing.left);
        ModalAnswers answers;
        answers.closeAnything();
        const QString changes = library->changes([&] {
            {
                OtherProgram other(library->path());
                if (disturbance == Locked)
                    other.run("BEGIN EXCLUSIVE");
                else if (disturbance == Read)
                    other.keepReading();
                else if (disturbance == Refused)
                    library->run(sql("CREATE TEMP TRIGGER refuse BEFORE ", writing.refused,
                                     " BEGIN SELECT RAISE(ABORT,'refused'); END"));
                EXPECT_EQ(writing.runs(disturbance == NoLibrary ? nullptr : library->connection()),
                          disturbance == Nothing);
            }
            QCoreApplication::processEvents();
        });
        EXPECT_EQ(changes.toStdString(), expected.toStdString());
        EXPECT_EQ(answers.takePlaces(), places);
        if (disturbance == Refused)
            library->run("DROP TRIGGER refuse");
        library->run("INSERT INTO tblImage(Name) VALUES('next')");
        EXPECT_FALSE(library->rowsInFile("SELECT ID FROM tblImage").isEmpty());
        EXPECT_EQ(library->rowsInFile("SELECT name FROM sqlite_schema WHERE type<>'table'"), QStringList());
        if (writing.failing == LeftOpen)
            library = std::make_unique<DetailedLibrary>();
    }
}

}  // namespace

void expectWriting(const Writing& writing) {
    for (const bool lookedUp : {false, true})
        expectWriting(writing, lookedUp);
}
