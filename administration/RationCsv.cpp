#include "administration/RationCsv.h"

#include <QHash>
#include <map>

using namespace Qt::StringLiterals;

namespace {

constexpr int digits = 9;
const char* const levels[] = {"章", "节", "小节", "项", "子项"};

using Number = std::array<int, std::size(levels)>;

int levelOf(const Number& number) {
    int level = 0;
    for (const int each : number)
        level += each > 0 ? 1 : 0;
    return level;
}

QString textOf(const Number& number) {
    QStringList parts;
    for (int level = 0; level < levelOf(number); ++level)
        parts << QString::number(number[static_cast<std::size_t>(level)]);
    return parts.join(u'.');
}

bool isPositive(const QString& text) {
    bool number = false;
    return text.toInt(&number) > 0 && number;
}

class Reader {
public:
    explicit Reader(Complaints& complaints) : m_complaints(complaints) {}

    void addChapter(const CsvRow& row) {
        RationFile::Chapter chapter{row[0].toLongLong(), {}, row[6], row[7] == u"1"_s || row[7] == u"是"_s};
        if (!isPositive(row[0]))
            m_complaints.add(row, u"“编号”应为正整数：%1"_s.arg(row[0]));
        else if (const int line = lineBefore(m_lineOfId, chapter.id, row))
            m_complaints.add(row, u"编号 %1 与第 %2 行重复"_s.arg(row[0]).arg(line));
        bool valid = true;
        for (std::size_t level = 0; level < std::size(levels); ++level) {
            const QString& text = row[static_cast<int>(level) + 1];
            const QString name = QString::fromUtf8(levels[level]);
            if (text.isEmpty())
                continue;
            chapter.number[level] = text.toInt();
            if (!isPositive(text))
                m_complaints.add(row, u"“%1”应为正整数，不用的级空着：%2"_s.arg(name, text));
            else if (level > 0 && row[static_cast<int>(level)].isEmpty())
                m_complaints.add(row, u"有“%1”，它的上一级却空着"_s.arg(name));
            else
                continue;
            valid = false;
        }
        if (!(QStringList{{}, u"0"_s, u"否"_s, u"1"_s, u"是"_s}).contains(row[7]))
            m_complaints.add(row, u"“作废”应为是（1）、否（0）或空着：%1"_s.arg(row[7]));
        if (valid && chapter.number[0] > 0) {
            const auto [other, isNew] = m_numbers.try_emplace(chapter.number, Place{row, chapter.removed});
            if (!isNew)
                m_complaints.add(row,
                                 u"章节 %1 与第 %2 行重复"_s.arg(textOf(chapter.number)).arg(other->second.row.line));
        }
        library.chapters.push_back(chapter);
    }

    /// When all chapters are there.
    void checkParents() {
        for (const auto& [number, place] : m_numbers) {
            const int level = levelOf(number);
            if (level == 1)
                continue;
            Number parent = number;
            parent[static_cast<std::size_t>(level) - 1] = 0;
            const auto above = m_numbers.find(parent);
            if (above == m_numbers.end())
                m_complaints.add(place.row, u"没有上级章节 %1"_s.arg(textOf(parent)));
            else if (above->second.removed && !place.removed)  // it would be shown below another one
                m_complaints.add(place.row, u"上级章节 %1 已作废，这一章节也应作废"_s.arg(textOf(parent)));
        }
    }

    void addRation(const CsvRow& row) {
        const RationFile::Ration ration{row[0].toLongLong(), row[1], row[2], row[3]};
        if (!m_lineOfId.contains(ration.chapter))
            m_complaints.add(row, u"没有编号为 %1 的章节"_s.arg(row[0]));
        if (const int line = lineBefore(m_lineOfCode, ration.code.toUpper(), row))
            m_complaints.add(row, u"编码 %1 与第 %2 行重复（不分大小写）"_s.arg(ration.code).arg(line));
        library.rations.push_back(ration);
    }

    RationFile library;

private:
    struct Place {
        CsvRow row;
        bool removed;
    };

    /// The line of an earlier row with the same value; 0 when this is the first.
    template <typename Value>
    static int lineBefore(QHash<Value, int>& lines, const Value& value, const CsvRow& row) {
        const int line = lines.value(value);
        if (line == 0)
            lines[value] = row.line;
        return line;
    }

    Complaints& m_complaints;
    QHash<qint64, int> m_lineOfId;
    QHash<QString, int> m_lineOfCode;
    std::map<Number, Place> m_numbers;
};

}  // namespace

RationFile readRationLibrary(const QString& chapters, const QString& rations, Complaints& complaints) {
    Reader reader(complaints);
    for (const CsvRow& row : readCsv(chapters,
                                     {{"编号", digits},
                                      {"章", digits},
                                      {"节", digits, true},
                                      {"小节", digits, true},
                                      {"项", digits, true},
                                      {"子项", digits, true},
                                      {"标题", 100},
                                      {"作废", 1, true}},
                                     complaints))
        reader.addChapter(row);
    reader.checkParents();
    for (const CsvRow& row :
         readCsv(rations, {{"章编号", digits}, {"编码", 100}, {"名称", 150}, {"单位", 25}}, complaints))
        reader.addRation(row);
    return std::move(reader.library);
}
