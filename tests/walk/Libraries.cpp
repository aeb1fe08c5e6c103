#include "tests/walk/Libraries.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QStringList>

#include "app/base/Definitions.h"
#include "storage/LibraryConnection.h"
#include "storage/Schema.h"
#include "tests/support/SampleProgram.h"

using namespace Qt::StringLiterals;

namespace {

std::unique_ptr<Connection> newLibrary(const QString& path) {
    installSamples();
    QFile::remove(path);
    auto library = GetOrmConn(path);
    EXPECT_TRUE(CreateAllBillDBTable(library.get()));
    library->Execute("BEGIN");
    return library;
}

void addChapters(Connection& library, const char* codes) {
    for (const QString& code : QString::fromLatin1(codes).split(u' '))
        library.Execute(sql("INSERT INTO tblSYB(Code,Name,IsDel) VALUES('", code, "','章",
                            QString::number(code.size() / 2), "',0)"));
}

void addBill(Connection& library, const QString& code) {
    library.Execute(sql("INSERT INTO tblBill(Code,Name,Unit,IsDel) VALUES('", code, "','清单','m',0)"));
    const qint64 id = library.LastInsertId();
    library.Execute(
        sql("INSERT INTO tblParm(Num,Code,BillID) VALUES(1,'", code, "',", id, "),(2,'", code, "',", id, ")"));
    library.Execute(sql("INSERT INTO tblCont(Code,Num,Cont,Prof,BillID) VALUES('", code, "',1,'First','01',", id,
                        "),('", code, "',2,'Both','0102',", id, "),('", code, "',3,'Other','02',", id, "),('", code,
                        "',4,'it''s','01',", id, "),('", code, "',5,NULL,'',", id, ")"));
    const qint64 last = library.LastInsertId();
    library.Execute(sql("INSERT INTO tblContDe(contID,subNum,subCont,deh,name,unit,dekID) VALUES(", last - 4,
                        ",1,'Sub','A1-1','x','m','GD2018ZHDE01'),(", last - 4,
                        ",1,'Sub','a1-2','y','m','GD2018ZHDE01'),(", last - 4, ",2,'Empty',NULL,NULL,NULL,NULL),(",
                        last - 4, ",3,'o''clock','X1','z','m','AWKWARD'),(", last - 3,
                        ",1,'Shared','C1','z','m','GONE'),(", last - 1, ",1,'','','','','')"));
    library.Execute(sql("INSERT INTO tblBillSpec(BillID,Name,Type,Unit,DefVal) VALUES(", id, ",'特征',2,'m','值'),(",
                        id, ",NULL,NULL,NULL,NULL),(", id, ",'it''s',2,'','')"));
    const qint64 feature = library.LastInsertId();
    library.Execute(sql("INSERT INTO tblSpecEnum(SpecID,IsUse,EigenValue) VALUES(", feature - 2, ",1,'值'),(",
                        feature - 2, ",2,' C30 '),(", feature - 2, ",NULL,NULL),(", feature, ",0,'it''s'),(", feature,
                        ",1,'b')"));
}

}  // namespace

QString sampleCopy() { return copyOfSampleLibrary(sampleLibraryName()); }

QString awkwardLibrary() {
    const QString path = dataPath + u"awkward.bdb"_s;
    const auto library = newLibrary(path);
    addChapters(*library, "01 0101 010101 010102 010104 0103 010301 03 0301 030101 030102 05 070101");
    library->Execute("INSERT INTO tblSYB(Code,Name) VALUES(NULL,'no chapter'),('','no chapter'),('0104','it''s')");
    for (const char* code : {"010101001", "010101002", "010101003", "010101005", "010101009", "010102001", "010102002",
                             "010301001", "030101001", "030101002", "030102001", "070101001"})
        addBill(*library, QString::fromLatin1(code));
    library->Execute(
        "UPDATE tblBill SET CodePrefix='BJ', Rule='one' || char(13,10) || 'two', Cont='one' || char(10) || "
        "'two' WHERE Code='010101002'");
    library->Execute("UPDATE tblBill SET Name='it''s', Rule='it''s', Cont=NULL WHERE Code='010101003'");
    library->Execute("UPDATE tblBill SET Name=NULL, Unit=NULL WHERE Code='010101005'");
    // Neither a chapter's nor a bill's.
    library->Execute("INSERT INTO tblBill(Code,Name) VALUES('0101010011','longer'),('01010','shorter')");
    library->Execute("COMMIT");
    return path;
}

QString libraryAtTheLimits() {
    const QString path = dataPath + u"limits.bdb"_s;
    const auto library = newLibrary(path);
    addChapters(*library, "01 0198 0199 019998 019999 02 0201 020101 98 99 9998 9999 999998 999999");
    for (const char* code : {"019998998", "019998999", "019999001", "019999998", "020101001", "020101999", "999998997",
                             "999998999", "999999001"})
        addBill(*library, QString::fromLatin1(code));
    library->Execute("COMMIT");
    return path;
}
