#include "samples/builder/Writers.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include "app/base/Error.h"
#include "samples/builder/BillSource.h"
#include "samples/builder/RationSource.h"
#include "storage/Connection.h"
#include "storage/Schema.h"
#include "storage/SystemDatabase.h"

using namespace Qt::StringLiterals;

namespace {

/// The same for every run, so that the same sources give the same rows.
const QString stamp = u"2024-01-01 00:00:00"_s;

// Where the header of an SQLite file holds them, as big-endian numbers of 32 bits.
constexpr qsizetype headerLength = 100;
constexpr qsizetype changeCounterOffset = 24;
constexpr qsizetype applicationIdOffset = 68;

/// Marks a bill library as one of ours: "TSmp".
constexpr quint32 applicationId = 0x54536D70;

[[noreturn]] void failOn(const QString& path, const QString& what) {
    throw Error(1, u"%1: %2"_s.arg(QDir::toNativeSeparators(path), what));
}

/// Makes the file at `path` from what `fill` writes into an empty database.
template <typename Fill>
void makeDatabase(const QString& path, const char* key, Fill&& fill) {
    const QString fresh = path + u".new"_s;
    if (!QDir().mkpath(QFileInfo(path).path()))
        failOn(path, u"the folder cannot be made"_s);
    QFile::remove(fresh);
    Connection connection;
    connection.Open(fresh, QString::fromLatin1(key), Connection::readWriteCreate);
    connection.Execute("BEGIN;");
    fill(connection);
    connection.Execute("COMMIT;");
    connection.Close();
    QFile::remove(path);
    if (!QFile::rename(fresh, path)) {
        QFile::remove(fresh);
        failOn(path, u"cannot be replaced"_s);
    }
}

void writeFeatures(Connection& connection, const Bill& bill, qint64 billId) {
    for (const Feature& feature : bill.features) {
        connection.Execute(sql("INSERT INTO tblBillSpec (BillID,Name,Type,Unit,DefVal,LastUpdate,IsDel) VALUES ('",
                               billId, "','", feature.name, "','", feature.type, "','", feature.unit, "','",
                               feature.values.value(feature.used), "','", stamp, "','0');"));
        const qint64 featureId = connection.LastInsertId();
        for (int i = 0; i < feature.values.size(); ++i) {
            // 1 and 2 are the check states with which values are stored.
            connection.Execute(sql("INSERT INTO tblSpecEnum (SpecID,IsUse,EigenValue,LastUpdate,IsDel) VALUES ('",
                                   featureId, "','", i == feature.used ? 1 : 2, "','", feature.values[i], "','", stamp,
                                   "','0');"));
        }
    }
}

void writeContents(Connection& connection, const Bill& bill, qint64 billId) {
    int number = 0;
    for (const Content& content : bill.contents) {
        connection.Execute(sql("INSERT INTO tblCont (Code,Num,Cont,Prof,BillID,LastUpdate,IsDel) VALUES ('", bill.code,
                               "','", ++number, "','", content.text, "','", content.professions, "','", billId, "','",
                               stamp, "','0');"));
        const qint64 contentId = connection.LastInsertId();
        int subNumber = 0;
        for (const SubContent& part : content.parts) {
            ++subNumber;
            for (const AttachedRation& attached : part.rations) {
                const Ration none;
                const Ration& ration = attached.ration ? *attached.ration : none;
                connection.Execute(sql(
                    "INSERT INTO tblContDe (ContID,SubNum,SubCont,Deh,Name,Unit,DekID,LastUpdate,IsDel) VALUES ('",
                    contentId, "','", subNumber, "','", part.text, "','", ration.code, "','", ration.name, "','",
                    ration.unit, "','", attached.ration ? attached.library->id : QString(), "','", stamp, "','0');"));
            }
        }
    }
}

/// The work contents as the text of the bill, numbered, one a line.
QString contentText(const Bill& bill) {
    QStringList lines;
    for (const Content& content : bill.contents)
        lines << u"%1.%2"_s.arg(lines.size() + 1).arg(content.text);
    return lines.join(u"\r\n"_s);
}

}  // namespace

void writeBillLibrary(const BillLibrary& library, const QString& path) {
    makeDatabase(path, "", [&](Connection& connection) {
        if (!CreateAllBillDBTable(&connection))
            failOn(path, u"the tables cannot be made"_s);
        connection.Execute(sql("PRAGMA application_id=", applicationId, ";"));
        for (const Chapter& chapter : library.chapters) {
            connection.Execute(sql("INSERT INTO tblSYB (Code,Name,Note,Version,LastUpdate,IsDel) VALUES ('",
                                   chapter.code, "','", chapter.name, "','", chapter.note, "','1','", stamp,
                                   "','0');"));
        }
        for (const Bill& bill : library.bills) {
            connection.Execute(
                sql("INSERT INTO tblBill (Code,CodePrefix,Name,Unit,Rule,Cont,Version,LastUpdate,IsDel) VALUES ('",
                    bill.code, "','", bill.prefix, "','", bill.name, "','", bill.unit, "','",
                    bill.rules.join(u"\r\n"_s), "','", contentText(bill), "','1','", stamp, "','0');"));
            const qint64 billId = connection.LastInsertId();
            writeFeatures(connection, bill, billId);
            writeContents(connection, bill, billId);
        }
    });
}

void writeCompanion(const BillLibrary& library, const QString& path) {
    makeDatabase(path, systemKey, [&](Connection& connection) {
        connection.Execute("CREATE TABLE tblExplain (ID Integer PRIMARY KEY AUTOINCREMENT ,Code text(9) ,Note text);");
        for (const Chapter& explanation : library.explanations) {
            connection.Execute(
                sql("INSERT INTO tblExplain (Code,Note) VALUES ('", explanation.code, "','", explanation.note, "');"));
        }
    });
}

void writeRationLibrary(const RationLibrary& library, const QString& path) {
    makeDatabase(path, "", [&](Connection& connection) {
        connection.Execute(
            "CREATE TABLE DeSYB (sybID Integer PRIMARY KEY ,CH Integer ,ZH Integer ,JH Integer ,XH Integer ,MH Integer "
            ",BTM text(100) ,isdel Integer DEFAULT 0);");
        connection.Execute(
            "CREATE TABLE DEB (ID Integer PRIMARY KEY ,sybID Integer ,DEH text(100) ,MC text(150) ,DW text(25));");
        int chapterId = 0;
        for (const RationChapter& chapter : library.chapters) {
            const std::array<int, 5>& number = chapter.number;
            connection.Execute(sql("INSERT INTO DeSYB VALUES (", ++chapterId, ",", number[0], ",", number[1], ",",
                                   number[2], ",", number[3], ",", number[4], ",'", chapter.title, "',",
                                   chapter.removed ? 1 : 0, ");"));
        }
        int rationId = 0;
        for (const Ration& ration : library.rations) {
            connection.Execute(sql("INSERT INTO DEB VALUES (", ++rationId, ",", ration.chapter + 1, ",'", ration.code,
                                   "','", ration.name, "','", ration.unit, "');"));
        }
    });
}

void writeSystemDatabase(const std::vector<RationLibrary>& libraries, const QString& path) {
    makeDatabase(path, systemKey, [&](Connection& connection) {
        connection.Execute(
            "CREATE TABLE SysBaseData (DekId text ,DekName text ,QdkFileName text ,DekFilename text ,rgnName text "
            ",Prof text);");
        for (const RationLibrary& library : libraries) {
            connection.Execute(sql("INSERT INTO SysBaseData VALUES ('", library.id, "','", library.name, "','",
                                   library.defaultFor, "','", library.fileName, "','", library.region, "','",
                                   library.profession, "');"));
        }
    });
}

bool isAsWritten(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray header = file.read(headerLength);
    const auto number = [&](qsizetype offset) { return qFromBigEndian<quint32>(header.constData() + offset); };
    return header.size() == headerLength && number(applicationIdOffset) == applicationId &&
           number(changeCounterOffset) == 1;
}
