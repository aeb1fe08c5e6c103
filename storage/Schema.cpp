#include "storage/Schema.h"

#include "app/base/Guarded.h"
#include "storage/LibraryConnection.h"
#include "storage/Savepoint.h"

using namespace Qt::StringLiterals;

namespace {

struct TableStatement {
    const char* name;
    SqlText statement;
};

// Fixed texts of the file format, spacing and letter case included; don't correct.
// clang-format off
const TableStatement tables[] = {
    {"tblSyb", "CREATE TABLE if not exists tblsyb (ID Integer PRIMARY KEY AUTOINCREMENT,Code text(9) ,Name text(50) NOT NULL,Note text ,Version Integer ,LastUpdate Datetime ,IsDel Boolean DEFAULT 0,Borg Boolean) ; "},
    {"tblBill", "CREATE TABLE IF NOT EXISTS tblBill  (ID Integer PRIMARY KEY AUTOINCREMENT,Code text(50) NOT NULL,CodePrefix text(8) ,addmark text(10) ,Name text(50) ,Spec text ,Unit text(12) ,Rule text ,macro text ,Cont text ,Version Integer ,LastUpdate Datetime ,IsDel Boolean ,Borg Boolean ,ImgID Integer) ; "},
    {"tblParm", "CREATE TABLE IF NOT EXISTS tblParm ( ID Integer PRIMARY KEY AUTOINCREMENT ,Num Integer ,Code text(12) ,Title text(50) ,Name text(50) ,Type SmallInt ,Unit text(12) ,List text ,[default] text(50) ,BillID Integer ,Version Integer DEFAULT 1,LastUpdate Datetime ,IsDel Boolean ,Borg Boolean) ;"},
    {"tblCont", "CREATE TABLE IF NOT EXISTS tblCont ( ID Integer PRIMARY KEY AUTOINCREMENT ,Code text(50) ,Num SmallInt ,Cont text(50) ,Prof text(20) ,BillID Integer NOT NULL,Version Integer DEFAULT 1,LastUpdate Datetime ,IsDel Boolean DEFAULT 0,Borg Boolean) ;"},
    {"tblContDe", "CREATE TABLE IF NOT EXISTS tblContDe ( ID Integer PRIMARY KEY AUTOINCREMENT ,ContID Integer ,Num SmallInt ,SubNum SmallInt ,SubCont text(50) ,Deh text(100) ,Name text(150) ,Unit text(25) ,DekID text(12) ,Version Integer DEFAULT 1,LastUpdate Datetime ,IsDel Boolean ,Borg Boolean) ;"},
    {"tblDekInfo", "CREATE TABLE IF NOT EXISTS tblDekInfo ( id Integer PRIMARY KEY AUTOINCREMENT  ,DEKID Integer NOT NULL ,Name text(50) NOT NULL ,Declare text(16) NOT NULL ,Profession text(50) NOT NULL ,Version Integer DEFAULT 1 ,LastUpdate Datetime ,IsDel Boolean ,Borg Boolean) ;"},
    {"tblImage", "CREATE TABLE IF NOT EXISTS tblImage ( ID Integer PRIMARY KEY AUTOINCREMENT ,Name text(100) ,Size Integer ,pic blob ,Time Datetime ,Note Text) ;"},
    {"tblBillSpec", "CREATE TABLE IF NOT EXISTS tblBillSpec ( ID Integer PRIMARY KEY AUTOINCREMENT , BillID Integer , Name text(100) , Type Integer , Unit text(12) , DefVal text , Version Integer DEFAULT 1 , LastUpdate Datetime , IsDel Boolean  ) ;"},
    {"tblSpecEnum", "CREATE TABLE IF NOT EXISTS tblSpecEnum ( ID Integer PRIMARY KEY AUTOINCREMENT , SpecID Integer , IsUse Boolean , EigenValue text , Version Integer DEFAULT 1, LastUpdate Datetime , IsDel Boolean  ) ;"},
};
// clang-format on

}  // namespace

SqlText GetCreateTableSQL(const QString& name) {
    for (const TableStatement& table : tables) {
        if (name == QLatin1String(table.name))
            return table.statement;
    }
    return "";
}

bool CreateAllBillDBTable(Connection* connection) {
    return guarded({"ModDBOperator", "CreateAllBillDBTable"}, [&] {
        if (!connection)
            return false;
        const QString savepoint = u"CreateAllBillDBTable"_s;
        const bool started = SetSP(savepoint, connection);
        bool created = true;
        for (const TableStatement& table : tables) {
            created = ExecuteDDL(connection, GetCreateTableSQL(QString::fromLatin1(table.name)));
            if (!created)
                break;
        }
        if (created && ReleaseSP(savepoint, connection, started))
            return true;
        RollBackSP(savepoint, connection, started);
        return false;
    });
}
