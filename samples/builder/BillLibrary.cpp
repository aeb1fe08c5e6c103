#include "samples/builder/BillLibrary.h"

#include <QFile>
#include <QtEndian>

#include "app/base/Error.h"
#include "app/base/Paths.h"
#include "storage/Schema.h"

using namespace Qt::StringLiterals;

namespace {

/// The same for every run, so that the same sources give the same rows.
const QString stamp = u"2024-01-01 00:00:00"_s;

/// Marks a bill library as one of ours: "TSmp".
constexpr quint32 applicationId = 0x54536D70;

constexpr int textWidth = 2000;
constexpr int chapterCodeWidth = 6;
constexpr int billCodeWidth = 9;

bool isDigits(const QString& text) {
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

class Filler {
public:
    Filler(Connection& file, Complaints& complaints) : m_file(file), m_complaints(complaints) {}

    void addChapter(const CsvRow& row) {
        const QString& code = row[0];
        if (!isDigits(code) || code.size() % 2 != 0 || m_chapters.contains(code))
            m_complaints.add(row, u"目录的编码是 2、4 或 6 位数字，不能重复"_s);
        if (code.size() > 2 && !m_chapters.contains(code.chopped(2)))
            m_complaints.add(row, u"没有上级目录"_s);
        m_chapters << code;
        m_file.Execute(sql("INSERT INTO tblSYB (Code,Name,Note,Version,LastUpdate,IsDel) VALUES ('", code, "','",
                           row[1], "','", row[2], "','1','", stamp, "','0');"));
    }

    void addBill(const CsvRow& row) {
        const QString& code = row[0];
        const QString chapter = code.left(chapterCodeWidth);
        const int number = code.mid(chapterCodeWidth).toInt();
        if (!isDigits(code) || code.size() != billCodeWidth || number != ++m_lastInChapter[chapter])
            m_complaints.add(row, u"清单的编码是九位数字，在目录内连续"_s);
        if (chapter.size() != chapterCodeWidth || !m_chapters.contains(chapter))
            m_complaints.add(row, u"没有目录 %1"_s.arg(chapter));
        QString rule = row[4];
        m_file.Execute(sql("INSERT INTO tblBill (Code,CodePrefix,Name,Unit,Rule,Version,LastUpdate,IsDel) VALUES ('",
                           code, "','", row[1], "','", row[2], "','", row[3], "','", rule.replace(u"\n"_s, u"\r\n"_s),
                           "','1','", stamp, "','0');"));
        m_bills[code] = m_file.LastInsertId();
    }

    void addFeature(const CsvRow& row) {
        static const QStringList types{u"无"_s, u"数值"_s, u"枚举"_s, u"计算"_s};
        const auto type = types.indexOf(row[2]);
        const QStringList values = row[4].split(u';', Qt::SkipEmptyParts);
        if (type < 0)
            m_complaints.add(row, u"特征的类型应为 %1"_s.arg(types.join(u' ')));
        if (!row[5].isEmpty() && values.count(row[5]) != 1)
            m_complaints.add(row, u"%1 不在取值中"_s.arg(row[5]));
        m_file.Execute(sql("INSERT INTO tblBillSpec (BillID,Name,Type,Unit,DefVal,LastUpdate,IsDel) VALUES ('",
                           billOf(row), "','", row[1], "','", type, "','", row[3], "','", row[5], "','", stamp,
                           "','0');"));
        const qint64 feature = m_file.LastInsertId();
        for (const QString& value : values) {
            // 1 and 2 are the check states with which values are stored.
            m_file.Execute(sql("INSERT INTO tblSpecEnum (SpecID,IsUse,EigenValue,LastUpdate,IsDel) VALUES ('", feature,
                               "','", value == row[5] ? 1 : 2, "','", value, "','", stamp, "','0');"));
        }
    }

    /// A row begins a content, or only a second-level content, or goes on with the one above.
    void addContent(const CsvRow& row, const KnownRations& rations) {
        if (!row[1].isEmpty()) {
            if (!isDigits(row[2]) || row[2].size() % 2 != 0 || row[2].isEmpty())
                m_complaints.add(row, u"专业各为两位数字"_s);
            const qint64 bill = billOf(row);
            m_file.Execute(sql("INSERT INTO tblCont (Code,Num,Cont,Prof,BillID,LastUpdate,IsDel) VALUES ('", row[0],
                               "','", ++m_lastInBill[bill], "','", row[1], "','", row[2], "','", bill, "','", stamp,
                               "','0');"));
            m_content = m_file.LastInsertId();
            m_number = 0;
        }
        if (!row[3].isEmpty())
            m_part = row[3];
        if (m_content == 0 || row[1].isEmpty() != (row[0] + row[2]).isEmpty() || (row[3].isEmpty() && m_number == 0))
            m_complaints.add(row, u"工作内容应有清单和二级工作内容"_s);
        m_number += row[3].isEmpty() ? 0 : 1;
        const QString name = row[4] + u':' + row[5];
        const RationFile::Ration ration = rations.value(name.toUpper());
        if (name.size() > 1 && ration.code.isEmpty())
            m_complaints.add(row, u"没有定额 %1"_s.arg(name));
        m_file.Execute(
            sql("INSERT INTO tblContDe (ContID,SubNum,SubCont,Deh,Name,Unit,DekID,LastUpdate,IsDel) VALUES ('",
                m_content, "','", m_number, "','", m_part, "','", ration.code, "','", ration.name, "','", ration.unit,
                "','", row[4], "','", stamp, "','0');"));
    }

private:
    qint64 billOf(const CsvRow& row) {
        if (!m_bills.contains(row[0]))
            m_complaints.add(row, u"没有清单 %1"_s.arg(row[0]));
        return m_bills.value(row[0]);
    }

    Connection& m_file;
    Complaints& m_complaints;
    QSet<QString> m_chapters;
    QHash<QString, int> m_lastInChapter;
    QHash<QString, qint64> m_bills;
    QHash<qint64, int> m_lastInBill;
    qint64 m_content = 0;
    int m_number = 0;  ///< of the second-level content
    QString m_part;
};

}  // namespace

BillSources readBillSources(const QString& folder, Complaints& complaints) {
    const auto read = [&](const QString& name, std::initializer_list<CsvColumn> columns) {
        return readCsv(joinPath(folder, name), columns, complaints);
    };
    BillSources sources;
    sources.chapters = read(u"chapters.csv"_s, {{"编码", chapterCodeWidth}, {"名称", 50}, {"附注", textWidth, true}});
    sources.bills =
        read(u"bills.csv"_s,
             {{"编码", billCodeWidth}, {"前缀", 8, true}, {"名称", 50}, {"单位", 12}, {"计算规则", textWidth, true}});
    sources.features = read(u"features.csv"_s, {{"清单编码", billCodeWidth},
                                                {"特征", 100},
                                                {"类型", 2},
                                                {"单位", 12, true},
                                                {"取值", textWidth, true},
                                                {"默认值", textWidth, true}});
    sources.contents = read(u"contents.csv"_s, {{"清单编码", billCodeWidth, true},
                                                {"工作内容", 50, true},
                                                {"专业", 20, true},
                                                {"二级工作内容", 50, true},
                                                {"定额库", 12, true},
                                                {"定额编码", 100, true}});
    sources.explanations = read(u"companion.csv"_s, {{"编码", chapterCodeWidth}, {"说明", textWidth}});
    return sources;
}

void fillBillLibrary(Connection& file, const BillSources& sources, const KnownRations& rations,
                     Complaints& complaints) {
    if (!CreateAllBillDBTable(&file))
        throw Error(1, u"不能建表"_s);
    file.Execute(sql("PRAGMA application_id=", applicationId, ";"));
    Filler filler(file, complaints);
    for (const CsvRow& row : sources.chapters)
        filler.addChapter(row);
    for (const CsvRow& row : sources.bills)
        filler.addBill(row);
    for (const CsvRow& row : sources.features)
        filler.addFeature(row);
    for (const CsvRow& row : sources.contents)
        filler.addContent(row, rations);
    // The work contents as the text of the bill, numbered, one a line.
    file.Execute(
        "UPDATE tblBill SET Cont=ifnull((SELECT group_concat(Num||'.'||Cont,char(13,10)) FROM "
        "(SELECT * FROM tblCont WHERE BillID=tblBill.ID ORDER BY Num)),'');");
}

void fillCompanion(Connection& file, const BillSources& sources) {
    file.Execute("CREATE TABLE tblExplain (ID Integer PRIMARY KEY AUTOINCREMENT ,Code text(9) ,Note text);");
    for (const CsvRow& row : sources.explanations)
        file.Execute(sql("INSERT INTO tblExplain (Code,Note) VALUES ('", row[0], "','", row[1], "');"));
}

bool isAsMade(const QString& path) {
    // Where the header of an SQLite file holds them, as big-endian numbers of 32 bits.
    constexpr qsizetype headerLength = 100;
    constexpr qsizetype changeCounterOffset = 24;
    constexpr qsizetype applicationIdOffset = 68;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray header = file.read(headerLength);
    const auto number = [&](qsizetype offset) { return qFromBigEndian<quint32>(header.constData() + offset); };
    return header.size() == headerLength && number(applicationIdOffset) == applicationId &&
           number(changeCounterOffset) == 1;
}
