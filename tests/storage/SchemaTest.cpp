#include "storage/Schema.h"

#include <gtest/gtest.h>

#include "storage/LibraryConnection.h"
#include "tests/support/ModalAnswers.h"
#include "tests/support/TemporaryLibrary.h"

using namespace Qt::StringLiterals;

TEST(Schema, ALibraryHoldsTheNineTablesAndNothingElse) {
    EXPECT_TRUE(GetCreateTableSQL(u"tblsyb"_s).isEmpty()) << "names are compared exactly";
    const TemporaryLibrary library;
    // Every table with its columns: names, declared types, defaults, and what may not be empty.
    EXPECT_EQ(
        library
            .rowsInFile("SELECT t.name||':'||group_concat(c.name||' '||substr(c.type,1,1)||ifnull(c.dflt_value,'')||"
                        "iif(c.\"notnull\",'!',''),',') FROM sqlite_master t, pragma_table_info(t.name) c WHERE "
                        "t.name NOT LIKE 'sqlite%' GROUP BY t.name ORDER BY t.name")
            .join(u'\n'),
        uR"(tblBill:ID I,Code t!,CodePrefix t,addmark t,Name t,Spec T,Unit t,Rule T,macro T,Cont T,Version I,LastUpdate D,IsDel B,Borg B,ImgID I
tblBillSpec:ID I,BillID I,Name t,Type I,Unit t,DefVal T,Version I1,LastUpdate D,IsDel B
tblCont:ID I,Code t,Num S,Cont t,Prof t,BillID I!,Version I1,LastUpdate D,IsDel B0,Borg B
tblContDe:ID I,ContID I,Num S,SubNum S,SubCont t,Deh t,Name t,Unit t,DekID t,Version I1,LastUpdate D,IsDel B,Borg B
tblDekInfo:id I,DEKID I!,Name t!,Declare t!,Profession t!,Version I1,LastUpdate D,IsDel B,Borg B
tblImage:ID I,Name t,Size I,pic B,Time D,Note T
tblParm:ID I,Num I,Code t,Title t,Name t,Type S,Unit t,List T,default t,BillID I,Version I1,LastUpdate D,IsDel B,Borg B
tblSpecEnum:ID I,SpecID I,IsUse B,EigenValue T,Version I1,LastUpdate D,IsDel B
tblsyb:ID I,Code t,Name t!,Note T,Version I,LastUpdate D,IsDel B0,Borg B)"_s);
    library.run("INSERT INTO tblBill(code) VALUES('010101001')");
    EXPECT_TRUE(CreateAllBillDBTable(library.connection()));
    EXPECT_EQ(library.rowsInFile("SELECT code FROM tblBill"), QStringList{u"010101001"_s});
    EXPECT_FALSE(CreateAllBillDBTable(nullptr));
}
