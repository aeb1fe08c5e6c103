#include "benchmarks/generator/LibraryGenerator.h"

#include <QStringList>
#include <algorithm>
#include <memory>

#include "administration/RationFiles.h"
#include "app/base/Error.h"
#include "app/base/Paths.h"
#include "benchmarks/PlainDatabase.h"
#include "storage/LibraryConnection.h"
#include "storage/Schema.h"

using namespace Qt::StringLiterals;

namespace {

const QStringList materials{u"现浇混凝土"_s, u"预制混凝土"_s, u"砌块"_s, u"钢结构"_s,
                            u"防水卷材"_s,   u"块料面层"_s,   u"金属"_s, u"木质"_s};
const QStringList parts{u"基础"_s, u"矩形柱"_s, u"有梁板"_s, u"墙体"_s, u"楼梯"_s,
                        u"屋面"_s, u"门窗"_s,   u"楼地面"_s, u"天棚"_s};
const QStringList units{u"m3"_s, u"m2"_s, u"m"_s, u"t"_s, u"樘"_s, u"个"_s};
const QStringList steps{u"模板及支架制作、安装、拆除、堆放、运输"_s,
                        u"混凝土制作、运输、浇筑、振捣、养护"_s,
                        u"砂浆制作、运输"_s,
                        u"基层清理、抹找平层"_s,
                        u"面层铺设、磨边、嵌缝"_s,
                        u"刷防护材料、油漆"_s,
                        u"材料场内外运输"_s,
                        u"构件吊装、校正、固定"_s};
const QStringList features{u"混凝土种类"_s, u"混凝土强度等级"_s, u"砂浆强度等级"_s, u"面层材料品种、规格、颜色"_s};

QString oneOf(const QStringList& words, int index) { return words.at(index % static_cast<int>(words.size())); }

QString workName(int index) { return oneOf(materials, index) + oneOf(parts, index / 8); }

/// The same as expressions of SQL.
QString oneOf(const QStringList& words, const QString& index) {
    QString text = u"CASE (%1)%%2"_s.arg(index).arg(words.size());
    for (int i = 0; i < words.size(); ++i)
        text += u" WHEN %1 THEN '%2'"_s.arg(i).arg(words[i]);
    return text + u" END"_s;
}

QString workName(const QString& index) {
    return oneOf(materials, index) + u"||"_s + oneOf(parts, u"(%1)/8"_s.arg(index));
}

/// "(VALUES (0),(1),…)" with `count` rows, named `name`.
QString numbers(const QString& name, int count) {
    QStringList rows;
    for (int i = 0; i < count; ++i)
        rows << u"(%1)"_s.arg(i);
    return u"(SELECT column1 AS %1 FROM (VALUES %2))"_s.arg(name, rows.join(u','));
}

/// Writes chapters and gives the codes of those on the third level.
QStringList writeChapters(PlainDatabase& file, int chapters) {
    PlainStatement insert = file.prepare(
        u"INSERT INTO tblSYB (Code,Name,Note,Version,LastUpdate,IsDel) VALUES (?,?,'',1,'2024-01-01 08:00:00',0)"_s);
    QStringList deepest;
    int written = 0;
    const auto write = [&](int first, int second, int third, const QString& kind) {
        QString code;
        for (const int number : {first, second, third})
            code += number == 0 ? QString() : u"%1"_s.arg(number, 2, 10, QChar(u'0'));
        insert.run(code, workName(written++) + kind);
        if (third > 0)
            deepest << code;
    };
    // A hundred chapters for each on the first level: itself, 9 below it, 10 below each of those.
    for (int first = 1; first <= chapters / 100; ++first) {
        write(first, 0, 0, u"工程"_s);
        for (int second = 1; second <= 9; ++second) {
            write(first, second, 0, u"分部"_s);
            for (int third = 1; third <= 10; ++third)
                write(first, second, third, u"分项"_s);
        }
    }
    return deepest;
}

/// The statements that write bill ?1 with the code ?2, and then its rows in every other table.
QStringList statementsOfBill() {
    const QString bill = u"(?1-1)"_s;
    QStringList allSteps;
    for (int n = 0; n < contentsPerBill; ++n)
        allSteps << u"'%1.'||"_s.arg(n + 1) + oneOf(steps, bill + u"+%1"_s.arg(n));
    const QString code = u"(SELECT Code FROM tblBill WHERE ID=?1)"_s;
    const QString eachContent = numbers(u"n"_s, contentsPerBill);
    const QString eachFeature = numbers(u"n"_s, featuresPerBill);
    // Three rows a content, two for every 48th: a second-level content each, or a second ration in the first one.
    const QString details =
        u"(SELECT c,m,CASE WHEN c&1 AND m>0 THEN m ELSE m+1 END AS sub,c*3+m AS ration FROM "
        "(SELECT %1*%2+n AS c FROM %3),%4 WHERE m<2 OR c/48*48<>c)"_s.arg(bill)
            .arg(contentsPerBill)
            .arg(eachContent, numbers(u"m"_s, 3));
    QStringList statements{
        u"INSERT INTO tblBill (Code,CodePrefix,Name,Unit,Rule,Cont,Version,LastUpdate,IsDel) SELECT ?2,'',"_s +
            workName(bill) + u","_s + oneOf(units, bill) +
            u",'按设计图示尺寸以体积计算。不扣除构件内钢筋、预埋铁件和伸入承台基础的桩头所占体积。',"_s +
            allSteps.join(u"||char(13,10)||"_s) + u",1,@now,0"_s,
        u"INSERT INTO tblParm (Num,Code,Title,Name,Type,Unit,BillID,LastUpdate,IsDel) SELECT 1,"_s + code +
            u",'工程量','V',1,"_s + oneOf(units, bill) + u",?1,@now,0"_s,
        u"INSERT INTO tblCont (Code,Num,Cont,Prof,BillID,LastUpdate,IsDel) SELECT "_s + code + u",n+1,"_s +
            oneOf(steps, bill + u"+n"_s) + u",CASE n%2 WHEN 0 THEN '01' ELSE '0102' END,?1,@now,0 FROM "_s +
            eachContent,
        u"INSERT INTO tblContDe (ContID,Num,SubNum,SubCont,Deh,Name,Unit,DekID,LastUpdate,IsDel) SELECT c+1,m+1,sub,"_s +
            oneOf(steps, u"c+sub"_s) + u",printf('A%d-%d',ration%500+1,ration%40+1),"_s + workName(u"ration"_s) +
            u"||' 泵送商品混凝土C30','10m3','902',@now,0 FROM "_s + details,
        u"INSERT INTO tblBillSpec (BillID,Name,Type,Unit,DefVal,LastUpdate,IsDel) SELECT ?1,"_s +
            oneOf(features, bill + u"+n"_s) + u",2,'','C20',@now,0 FROM "_s + eachFeature,
        u"INSERT INTO tblSpecEnum (SpecID,IsUse,EigenValue,LastUpdate,IsDel) SELECT %1*%2+n+1,min(m,1)+1,"
        "'C'||(20+5*m),@now,0 FROM %3,%4"_s.arg(bill)
            .arg(featuresPerBill)
            .arg(eachFeature, numbers(u"m"_s, valuesPerFeature))};
    return statements.replaceInStrings(u"@now"_s, u"'2024-01-01 08:00:00'"_s);
}

/// Spreads the bills: the first chapter is full, the others share the rest. Bill by bill, so that the tables lie among
/// one another in the file as in one that has grown.
void writeBills(PlainDatabase& file, int bills, const QStringList& chapters) {
    std::vector<PlainStatement> statements;
    for (const QString& text : statementsOfBill())
        statements.push_back(file.prepare(text));
    qint64 written = 0;
    for (int chapter = 0; chapter < chapters.size(); ++chapter) {
        const int left = bills - static_cast<int>(written);
        const int sharing = static_cast<int>(chapters.size()) - chapter;
        const int here = chapter == 0 ? std::min(999, bills / 2) : (left + sharing - 1) / sharing;
        for (int n = 1; n <= here; ++n) {
            statements.front().run(++written, chapters[chapter] + u"%1"_s.arg(n, 3, 10, QChar(u'0')));
            for (std::size_t i = 1; i < statements.size(); ++i)
                statements[i].run(written);
        }
    }
}

/// Fifty chapters for each on the first level: itself, 4 below it, 3 below each of those, 2 below each of those, and
/// one below each of the first 9 on the fourth level.
RationFile rationLibrary(int chapters, int rations) {
    RationFile library;
    const auto add = [&](std::array<int, 5> number) {
        const int index = static_cast<int>(library.chapters.size());
        library.chapters.push_back({index + 1, number, workName(index)});
    };
    for (int first = 1; first <= chapters / 50; ++first) {
        add({first});
        int onFourth = 0;
        for (int second = 1; second <= 4; ++second) {
            add({first, second});
            for (int third = 1; third <= 3; ++third) {
                add({first, second, third});
                for (int fourth = 1; fourth <= 2; ++fourth) {
                    add({first, second, third, fourth});
                    if (++onFourth <= 9)
                        add({first, second, third, fourth, 1});
                }
            }
        }
    }
    for (int n = 0; n < rations; ++n) {
        const int chapter = n * chapters / rations + 1;
        const int first = ((chapter - 1) * rations + chapters - 1) / chapters;
        library.rations.push_back(
            {chapter, u"A%1-%2"_s.arg(chapter).arg(n - first + 1), workName(n) + u" 制作安装"_s, oneOf(units, n)});
    }
    return library;
}

}  // namespace

void generateLibrary(const QString& path, int bills) {
    const std::unique_ptr<Connection> library = GetOrmConn(path);
    if (!CreateAllBillDBTable(library.get()))
        throw Error(91, u"the tables cannot be made"_s);
    library->Close();
    PlainDatabase file(path);
    file.run(u"BEGIN"_s);
    writeBills(file, bills, writeChapters(file, std::clamp(bills / 300 * 100, 200, 2000)));
    file.run(u"COMMIT"_s);
}

void generateProgramFolder(const QString& folder, int rations) {
    const QString region = u"广东省"_s;
    const QString files = joinPath(joinPath(folder, u"Data"_s), region);
    writeRationLibrary(joinPath(files, u"small.db"_s), rationLibrary(50, 20));
    writeRationLibrary(joinPath(files, u"large.db"_s), rationLibrary(chaptersOfLargeLibrary, rations));
    writeSystemDatabase(joinPath(folder, u"tessel.dat"_s),
                        {{QLatin1String(smallRationLibrary), u"小型定额库"_s, u"small.db"_s, region, u"01"_s},
                         {QLatin1String(largeRationLibrary), u"大型定额库"_s, u"large.db"_s, region, u"01"_s}});
}
