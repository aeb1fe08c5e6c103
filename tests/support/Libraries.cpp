#include "tests/support/Libraries.h"

#include "storage/LibraryConnection.h"
#include "storage/Schema.h"
#include "tests/support/OtherProgram.h"

namespace {

/// The sample library that the build made.
QString sampleLibrary() {
    const QDir data(joinPath(builtProgramFolder(), u"Data"_s));
    return data.filePath(data.entryList({u"*.bdb"_s}, QDir::Files, QDir::Name).value(0));
}

/// Creates the tables and begins to fill them.
std::unique_ptr<OtherProgram> newLibrary(const QString& path) {
    installSamples();
    QFile::remove(path);
    EXPECT_TRUE(CreateAllBillDBTable(GetOrmConn(path).get()));
    auto library = std::make_unique<OtherProgram>(path);
    library->run("BEGIN");
    return library;
}

void addChapters(OtherProgram& library, const char* codes) {
    for (const QString& code : QString::fromLatin1(codes).split(u' '))
        library.run("INSERT INTO tblSYB(Code,Name,IsDel) VALUES(?1,'章'||(length(?1)/2),0)", {code});
}

void addBill(OtherProgram& library, const QString& code) {
    library.run("INSERT INTO tblBill(Code,Name,Unit,IsDel) VALUES(?,'清单','m',0)", {code});
    const QStringList bill{code, library.run("SELECT last_insert_rowid()").constFirst()};
    library.run("INSERT INTO tblParm(Num,Code,BillID) VALUES(1,?1,?2),(2,?1,?2)", bill);
    library.run(
        "INSERT INTO tblCont(Code,Num,Cont,Prof,BillID) VALUES(?1,1,'First','01',?2),(?1,2,'Both','0102',?2),"
        "(?1,3,'Other','02',?2),(?1,4,'it''s','01',?2),(?1,5,NULL,'',?2)",
        bill);
    library.run(
        "INSERT INTO tblContDe(contID,subNum,subCont,deh,name,unit,dekID) WITH last(n) AS (SELECT max(ID) FROM tblCont)"
        "SELECT n-4,1,'Sub','A1-1','x','m','GD2018ZHDE01' FROM last UNION ALL "
        "SELECT n-4,1,'Sub','a1-2','y','m','GD2018ZHDE01' FROM last UNION ALL "
        "SELECT n-4,2,'Empty',NULL,NULL,NULL,NULL FROM last UNION ALL "
        "SELECT n-4,3,'o''clock','X1','z','m','AWKWARD' FROM last UNION ALL "
        "SELECT n-3,1,'Shared','C1','z','m','GONE' FROM last UNION ALL SELECT n-1,1,'','','','','' FROM last");
    library.run(
        "INSERT INTO tblBillSpec(BillID,Name,Type,Unit,DefVal) VALUES(?2,'特征',2,'m','值'),(?2,NULL,NULL,NULL,NULL),"
        "(?2,'it''s',2,'','')",
        bill);
    library.run(
        "INSERT INTO tblSpecEnum(SpecID,IsUse,EigenValue) WITH last(n) AS (SELECT max(ID) FROM tblBillSpec) "
        "SELECT n-2,1,'值' FROM last UNION ALL SELECT n-2,2,' C30 ' FROM last UNION ALL "
        "SELECT n-2,NULL,NULL FROM last UNION ALL SELECT n,0,'it''s' FROM last UNION ALL SELECT n,1,'b' FROM last");
}

}  // namespace

QString builtProgramFolder() { return qEnvironmentVariable("TESSEL_BUILT"); }

void installSamples() {
    const QDir from(builtProgramFolder()), to(programFolder());
    // Not the program itself.
    QDirIterator files(from.path(), {u"*.*"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString name = from.relativeFilePath(files.next());
        to.mkpath(QFileInfo(name).path());
        EXPECT_TRUE(to.exists(name) || QFile::copy(from.filePath(name), to.filePath(name))) << qPrintable(name);
    }
}

QString copyOfSampleLibrary(const QString& name) {
    installSamples();
    const QString path = dataPath + name;
    QFile::remove(path);
    EXPECT_TRUE(QFile::copy(sampleLibrary(), path)) << "the samples are not built";
    QFile(path).setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    return path;
}

QString sampleCopy() { return copyOfSampleLibrary(QFileInfo(sampleLibrary()).fileName()); }

QString awkwardLibrary() {
    const QString path = dataPath + u"awkward.bdb"_s;
    const auto library = newLibrary(path);
    addChapters(*library, "01 0101 010101 010102 010104 0103 010301 03 0301 030101 030102 05 070101");
    library->run("INSERT INTO tblSYB(Code,Name) VALUES(NULL,'no chapter'),('','no chapter'),('0104','it''s')");
    for (const char* code : {"010101001", "010101002", "010101003", "010101005", "010101009", "010102001", "010102002",
                             "010301001", "030101001", "030101002", "030102001", "070101001"})
        addBill(*library, QString::fromLatin1(code));
    library->run(
        "UPDATE tblBill SET CodePrefix='BJ', Rule='one' || char(13,10) || 'two', Cont='one' || char(10) || "
        "'two' WHERE Code='010101002'");
    library->run("UPDATE tblBill SET Name='it''s', Rule='it''s', Cont=NULL WHERE Code='010101003'");
    library->run("UPDATE tblBill SET Name=NULL, Unit=NULL WHERE Code='010101005'");
    // Neither a chapter's nor a bill's.
    library->run("INSERT INTO tblBill(Code,Name) VALUES('0101010011','longer'),('01010','shorter')");
    library->run("COMMIT");
    return path;
}

QString libraryAtTheLimits() {
    const QString path = dataPath + u"limits.bdb"_s;
    const auto library = newLibrary(path);
    addChapters(*library, "01 0198 0199 019998 019999 02 0201 020101 98 99 9998 9999 999998 999999");
    for (const char* code : {"019998998", "019998999", "019999001", "019999998", "020101001", "020101999", "999998997",
                             "999998999", "999999001"})
        addBill(*library, QString::fromLatin1(code));
    library->run("COMMIT");
    return path;
}
