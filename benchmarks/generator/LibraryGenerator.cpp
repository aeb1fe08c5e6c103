#include "benchmarks/generator/LibraryGenerator.h"

#include <QDir>
#include <QStringList>
#include <algorithm>
#include <memory>

#include "app/base/Error.h"
#include "app/base/Paths.h"
#include "benchmarks/PlainDatabase.h"
#include "storage/LibraryConnection.h"
#include "storage/Schema.h"
#include "storage/SystemDatabase.h"

using namespace Qt::StringLiterals;

namespace {

const QString stamp = u"2024-01-01 08:00:00"_s;

QString twoDigits(int number) { return u"%1"_s.arg(number, 2, 10, QChar(u'0')); }

QString oneOf(const QStringList& words, int index) { return words.at(index % static_cast<int>(words.size())); }

QString workName(int index) {
    static const QStringList materials{u"现浇混凝土"_s, u"预制混凝土"_s, u"砌块"_s, u"钢结构"_s,
                                       u"防水卷材"_s,   u"块料面层"_s,   u"金属"_s, u"木质"_s};
    static const QStringList parts{u"基础"_s, u"矩形柱"_s, u"有梁板"_s, u"墙体"_s, u"楼梯"_s,
                                   u"屋面"_s, u"门窗"_s,   u"楼地面"_s, u"天棚"_s};
    return oneOf(materials, index) + oneOf(parts, index / 8);
}

QString workStep(int index) {
    static const QStringList steps{u"模板及支架制作、安装、拆除、堆放、运输"_s,
                                   u"混凝土制作、运输、浇筑、振捣、养护"_s,
                                   u"砂浆制作、运输"_s,
                                   u"基层清理、抹找平层"_s,
                                   u"面层铺设、磨边、嵌缝"_s,
                                   u"刷防护材料、油漆"_s,
                                   u"材料场内外运输"_s,
                                   u"构件吊装、校正、固定"_s};
    return oneOf(steps, index);
}

QString unitOf(int index) {
    static const QStringList units{u"m3"_s, u"m2"_s, u"m"_s, u"t"_s, u"樘"_s, u"个"_s};
    return oneOf(units, index);
}

/// Writes chapters and gives the codes of those on the third level.
QStringList writeChapters(PlainDatabase& file, int chapters) {
    PlainStatement insert =
        file.prepare("INSERT INTO tblSYB (Code,Name,Note,Version,LastUpdate,IsDel) VALUES (?,?,'',1,?,0)");
    QStringList deepest;
    int written = 0;
    const auto write = [&](const QString& code, const QString& kind) {
        insert.run(code, workName(written++) + kind, stamp);
    };
    // A hundred chapters for each on the first level: itself, 9 below it, 10 below each of those.
    for (int first = 1; first <= chapters / 100; ++first) {
        write(twoDigits(first), u"工程"_s);
        for (int second = 1; second <= 9; ++second) {
            const QString parent = twoDigits(first) + twoDigits(second);
            write(parent, u"分部"_s);
            for (int third = 1; third <= 10; ++third) {
                deepest << parent + twoDigits(third);
                write(deepest.last(), u"分项"_s);
            }
        }
    }
    return deepest;
}

/// Writes bills with everything that belongs to them.
class BillWriter {
public:
    BillWriter(PlainDatabase& file, const LibraryShape& shape)
        : m_file(file),
          m_shape(shape),
          m_bill(file.prepare("INSERT INTO tblBill (Code,CodePrefix,Name,Unit,Rule,Cont,Version,LastUpdate,IsDel) "
                              "VALUES (?,'',?,?,?,?,1,?,0)")),
          m_parameter(file.prepare("INSERT INTO tblParm (Num,Code,Title,Name,Type,Unit,BillID,LastUpdate,IsDel) "
                                   "VALUES (1,?,'工程量','V',1,?,?,?,0)")),
          m_content(file.prepare("INSERT INTO tblCont (Code,Num,Cont,Prof,BillID,LastUpdate,IsDel) "
                                 "VALUES (?,?,?,?,?,?,0)")),
          m_detail(
              file.prepare("INSERT INTO tblContDe (ContID,Num,SubNum,SubCont,Deh,Name,Unit,DekID,LastUpdate,IsDel) "
                           "VALUES (?,?,?,?,?,?,?,'902',?,0)")),
          m_feature(file.prepare("INSERT INTO tblBillSpec (BillID,Name,Type,Unit,DefVal,LastUpdate,IsDel) "
                                 "VALUES (?,?,2,?,?,?,0)")),
          m_value(file.prepare("INSERT INTO tblSpecEnum (SpecID,IsUse,EigenValue,LastUpdate,IsDel) "
                               "VALUES (?,?,?,?,0)")) {}

    void write(const QString& code) {
        const QString rule = u"按设计图示尺寸以体积计算。不扣除构件内钢筋、预埋铁件和伸入承台基础的桩头所占体积。"_s;
        m_bill.run(code, workName(m_bills), unitOf(m_bills), rule, allSteps(), stamp);
        const qint64 id = m_file.lastInsertId();
        m_parameter.run(code, unitOf(m_bills), id, stamp);
        writeContents(code, id);
        writeFeatures(id);
        ++m_bills;
    }

private:
    QString allSteps() const {
        QStringList lines;
        for (int n = 0; n < m_shape.contentsPerBill; ++n)
            lines << u"%1.%2"_s.arg(n + 1).arg(workStep(m_bills + n));
        return lines.join(u"\r\n"_s);
    }

    void writeContents(const QString& code, qint64 bill) {
        for (int n = 0; n < m_shape.contentsPerBill; ++n, ++m_contents) {
            m_content.run(code, n + 1, workStep(m_bills + n), n % 2 ? u"0102"_s : u"01"_s, bill, stamp);
            writeDetails(m_file.lastInsertId());
        }
    }

    /// Three rows a content, two for every 48th: a second-level content each, or a second ration in the first one.
    void writeDetails(qint64 content) {
        const int rows = m_contents % 48 == 0 ? 2 : 3;
        for (int n = 0; n < rows; ++n) {
            const int subNum = m_contents % 2 && n > 0 ? n : n + 1;
            const int ration = m_contents * 3 + n;
            m_detail.run(content, n + 1, subNum, workStep(m_contents + subNum),
                         u"A%1-%2"_s.arg(ration % 500 + 1).arg(ration % 40 + 1),
                         workName(ration) + u" 泵送商品混凝土C30"_s, u"10m3"_s, stamp);
        }
    }

    void writeFeatures(qint64 bill) {
        static const QStringList names{u"混凝土种类"_s, u"混凝土强度等级"_s, u"砂浆强度等级"_s,
                                       u"面层材料品种、规格、颜色"_s};
        for (int n = 0; n < m_shape.featuresPerBill; ++n) {
            m_feature.run(bill, oneOf(names, m_bills + n), QString(), u"C20"_s, stamp);
            const qint64 feature = m_file.lastInsertId();
            for (int value = 0; value < m_shape.valuesPerFeature; ++value)
                m_value.run(feature, value == 0 ? 1 : 2, u"C%1"_s.arg(20 + 5 * value), stamp);
        }
    }

    PlainDatabase& m_file;
    const LibraryShape& m_shape;
    PlainStatement m_bill, m_parameter, m_content, m_detail, m_feature, m_value;
    int m_bills = 0;
    int m_contents = 0;
};

/// Spreads the bills: the first chapter is full, the others share the rest.
void writeBills(PlainDatabase& file, const LibraryShape& shape, const QStringList& chapters) {
    BillWriter writer(file, shape);
    int left = shape.bills;
    for (int chapter = 0; chapter < chapters.size(); ++chapter) {
        const int sharing = static_cast<int>(chapters.size()) - chapter;
        const int here = chapter == 0 ? billsInFullChapter(shape) : (left + sharing - 1) / sharing;
        for (int n = 1; n <= here; ++n)
            writer.write(chapters[chapter] + u"%1"_s.arg(n, 3, 10, QChar(u'0')));
        left -= here;
    }
}

/// Fifty chapters for each on the first level: itself, 4 below it, 3 below each of those, 2 below each of those, and
/// one below each of the first 9 on the fourth level.
void writeRationChapters(PlainDatabase& file, int chapters) {
    PlainStatement insert = file.prepare("INSERT INTO DeSYB (CH,ZH,JH,XH,MH,BTM) VALUES (?,?,?,?,?,?)");
    int written = 0;
    const auto write = [&](int first, int second, int third, int fourth, int fifth) {
        insert.run(first, second, third, fourth, fifth, workName(written++));
    };
    for (int first = 1; first <= chapters / 50; ++first) {
        write(first, 0, 0, 0, 0);
        int onFourth = 0;
        for (int second = 1; second <= 4; ++second) {
            write(first, second, 0, 0, 0);
            for (int third = 1; third <= 3; ++third) {
                write(first, second, third, 0, 0);
                for (int fourth = 1; fourth <= 2; ++fourth) {
                    write(first, second, third, fourth, 0);
                    if (++onFourth <= 9)
                        write(first, second, third, fourth, 1);
                }
            }
        }
    }
}

}  // namespace

LibraryShape shapeOf(int bills) {
    LibraryShape shape;
    shape.bills = bills;
    shape.chapters = std::clamp(bills / 300 * 100, 200, 2000);
    return shape;
}

int billsInFullChapter(const LibraryShape& shape) { return std::min(999, shape.bills / 2); }

void generateLibrary(const QString& path, const LibraryShape& shape) {
    const std::unique_ptr<Connection> library = GetOrmConn(path);
    if (!CreateAllBillDBTable(library.get()))
        throw Error(91, u"the tables cannot be made"_s);
    library->Close();
    PlainDatabase file(path);
    file.run("BEGIN");
    writeBills(file, shape, writeChapters(file, shape.chapters));
    file.run("COMMIT");
}

void generateRationLibrary(const QString& path, const RationShape& shape) {
    PlainDatabase file(path);
    file.run(
        "BEGIN;"
        "CREATE TABLE DeSYB (sybID Integer PRIMARY KEY ,CH Integer ,ZH Integer ,JH Integer ,XH Integer ,MH Integer "
        ",BTM "
        "text(100) ,isdel Integer DEFAULT 0);"
        "CREATE TABLE DEB (ID Integer PRIMARY KEY ,sybID Integer ,DEH text(100) ,MC text(150) ,DW text(25));");
    writeRationChapters(file, shape.chapters);
    PlainStatement insert = file.prepare("INSERT INTO DEB (sybID,DEH,MC,DW) VALUES (?,?,?,?)");
    for (int n = 0; n < shape.rations; ++n) {
        const int chapter = static_cast<int>(qint64(n) * shape.chapters / shape.rations) + 1;
        const int first = static_cast<int>((qint64(chapter - 1) * shape.rations + shape.chapters - 1) / shape.chapters);
        insert.run(chapter, u"A%1-%2"_s.arg(chapter).arg(n - first + 1), workName(n) + u" 制作安装"_s, unitOf(n));
    }
    file.run("COMMIT");
}

void generateProgramFolder(const QString& folder, const RationShape& large) {
    const QString region = u"广东省"_s;
    const QString rations = joinPath(joinPath(folder, u"Data"_s), region);
    QDir().mkpath(rations);
    generateRationLibrary(joinPath(rations, u"small.db"_s), {20, 50});
    generateRationLibrary(joinPath(rations, u"large.db"_s), large);

    Connection system;
    system.Open(joinPath(folder, u"tessel.dat"_s), QString::fromLatin1(systemKey), Connection::readWriteCreate);
    system.Execute(
        "CREATE TABLE SysBaseData (DekId text ,DekName text ,QdkFileName text ,DekFilename text ,rgnName text ,Prof "
        "text);");
    const auto list = [&](const char* id, const QString& name, const QString& fileName) {
        system.Execute(sql("INSERT INTO SysBaseData VALUES ('", QString::fromLatin1(id), "','", name, "','','",
                           fileName, "','", region, "','01');"));
    };
    list(smallRationLibrary, u"小型定额库"_s, u"small.db"_s);
    list(largeRationLibrary, u"大型定额库"_s, u"large.db"_s);
}
