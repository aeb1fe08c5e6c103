#include "samples/writer/RationCsv.h"

#include <QSet>
#include <algorithm>
#include <set>

using namespace Qt::StringLiterals;

namespace {

/// The number of the chapter above; `number` itself on the first level.
std::array<int, 5> parentOf(std::array<int, 5> number) {
    const auto unused = std::find(number.begin() + 1, number.end(), 0);
    if (unused - number.begin() > 1)
        *(unused - 1) = 0;
    return number;
}

}  // namespace

RationFile readRationLibrary(const QString& folder, const QString& name, Complaints& complaints) {
    constexpr int digits = 9;
    RationFile library;
    std::set<std::array<int, 5>> numbers;
    QSet<qint64> ids;
    for (const CsvRow& row : readCsv(folder, name + u"/chapters.csv"_s,
                                     {{"编号", digits},
                                      {"章", digits},
                                      {"节", digits, true},
                                      {"小节", digits, true},
                                      {"项", digits, true},
                                      {"子项", digits, true},
                                      {"标题", 100},
                                      {"作废", 1, true}},
                                     complaints)) {
        RationFile::Chapter chapter{row[0].toLongLong(), {}, row[6], !row[7].isEmpty()};
        bool valid = chapter.id > 0 && !ids.contains(chapter.id);
        for (std::size_t level = 0; level < chapter.number.size(); ++level) {
            const QString& number = row[static_cast<int>(level) + 1];
            chapter.number[level] = number.toInt();
            // Nothing stands below a level that is left empty.
            valid = valid &&
                    (number.isEmpty() || (chapter.number[level] > 0 && (level == 0 || chapter.number[level - 1] > 0)));
        }
        if (!valid || !numbers.insert(chapter.number).second)
            complaints.add(row, u"编号 and the chapter's number must be whole numbers that no other chapter has"_s);
        else if (!numbers.contains(parentOf(chapter.number)))
            complaints.add(row, u"there is no chapter above this one"_s);
        ids << chapter.id;
        library.chapters.push_back(chapter);
    }
    QSet<QString> codes;
    for (const CsvRow& row : readCsv(folder, name + u"/rations.csv"_s,
                                     {{"章编号", digits}, {"编码", 100}, {"名称", 150}, {"单位", 25}}, complaints)) {
        const RationFile::Ration ration{row[0].toLongLong(), row[1], row[2], row[3]};
        if (!ids.contains(ration.chapter))
            complaints.add(row, u"there is no chapter %1"_s.arg(row[0]));
        if (codes.contains(ration.code.toUpper()))
            complaints.add(row, u"the code %1 stands twice"_s.arg(ration.code));
        codes << ration.code.toUpper();
        library.rations.push_back(ration);
    }
    return library;
}
