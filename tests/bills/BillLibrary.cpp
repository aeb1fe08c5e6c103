#include "tests/bills/BillLibrary.h"

#include <QRegularExpression>

#include "tests/support/ModalAnswers.h"

BillLibrary::BillLibrary() { run("PRAGMA synchronous=OFF"); }

void BillLibrary::addBill(qint64 id, const QString& code) const {
    run(sql("INSERT INTO tblBill(ID,Code,Name,LastUpdate,IsDel) VALUES(", id, ",'", Doubled{code}, "','清单", id,
            "','old',0)"));
}

void BillLibrary::addBillWithDetails(qint64 id, const QString& code) const {
    addBill(id, code);
    const SqlText two = "(SELECT 1 AS n UNION ALL SELECT 2)";
    run(sql("INSERT INTO tblParm(Num,Code,BillID,LastUpdate) SELECT n,'", code, "',", id, ",'old' FROM ", two));
    run(sql("INSERT INTO tblCont(ID,Code,Num,Cont,BillID,LastUpdate) SELECT ", id, "*10+n,'", code, "',n,'内容',", id,
            ",'old' FROM ", two));
    run(sql("INSERT INTO tblContDe(ContID,Num,SubNum,Name,LastUpdate) SELECT ID,1,n,'", id,
            "','old' FROM tblCont, (SELECT 1 AS n UNION ALL SELECT 2 UNION ALL SELECT 3) WHERE BillID=", id));
    run(sql("INSERT INTO tblBillSpec(ID,BillID,Name,Type,DefVal,LastUpdate) SELECT ", id, "*10+n,", id,
            ",'特征'||n,2,'','old' FROM ", two));
    run(sql("INSERT INTO tblSpecEnum(SpecID,IsUse,EigenValue,LastUpdate) SELECT ID,2,'", id,
            "','old' FROM tblBillSpec, ", two, " WHERE BillID=", id));
}

void BillLibrary::dontWait() const { connection()->OpenRecordset("PRAGMA busy_timeout=0"); }

QStringList BillLibrary::contents() const {
    QStringList all;
    for (const SqlText& table : {SqlText("tblSYB"), SqlText("tblBill"), SqlText("tblParm"), SqlText("tblCont"),
                                 SqlText("tblContDe"), SqlText("tblBillSpec"), SqlText("tblSpecEnum")})
        all += rowsInFile(sql("SELECT * FROM ", table, " ORDER BY ID"));
    return all;
}

QStringList errorPlaces(ModalAnswers& answers) {
    static const QRegularExpression place(QStringLiteral("错误位置: (\\S+)"));
    QStringList places = answers.takeSeen();
    for (QString& text : places) {
        const QRegularExpressionMatch match = place.match(text);
        if (match.hasMatch())
            text = match.captured(1);
    }
    return places;
}
