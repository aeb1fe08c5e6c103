#include "samples/builder/RationSource.h"

#include <algorithm>
#include <set>

#include "samples/builder/SourceFile.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int idLength = 12;
constexpr int codeLength = 100;
constexpr int nameLength = 150;
constexpr int unitLength = 25;
constexpr int titleLength = 100;

/// "1.3.2" as five numbers; false when it is no such text.
bool parseNumber(const QString& text, std::array<int, 5>& number) {
    const QStringList parts = text.split(u'.');
    if (parts.size() > static_cast<int>(number.size()))
        return false;
    number.fill(0);
    for (int level = 0; level < parts.size(); ++level) {
        bool valid = false;
        number[level] = parts[level].toInt(&valid);
        if (!valid || number[level] < 1)
            return false;
    }
    return true;
}

std::array<int, 5> parentOf(std::array<int, 5> number) {
    const auto firstUnused = std::find(number.begin(), number.end(), 0);
    *(firstUnused - 1) = 0;
    return number;
}

/// Reads the source of one library line by line.
class RationReader {
public:
    RationReader(RationLibrary& library, Complaints& complaints) : m_library(library), m_complaints(complaints) {}

    void read(const SourceLine& line) {
        if (line.keyword == u"章"_s || line.keyword == u"作废"_s)
            readChapter(line);
        else if (line.keyword == u"编号"_s)
            m_prefix = line.field(0);
        else if (line.keyword == u"定额"_s)
            readRations(line);
        else
            m_complaints.add(line, u"unknown keyword %1"_s.arg(line.keyword));
    }

private:
    void readChapter(const SourceLine& line) {
        RationChapter chapter;
        const QString text = line.field(0);
        chapter.title = text.section(u' ', 1);
        chapter.removed = line.keyword == u"作废"_s;
        m_complaints.checkText(line, chapter.title, titleLength);
        if (!parseNumber(text.section(u' ', 0, 0), chapter.number) || chapter.title.isEmpty())
            return m_complaints.add(line, u"a chapter is a number of up to five levels and a title"_s);
        if (!m_numbers.insert(chapter.number).second)
            m_complaints.add(line, u"this chapter number is used already"_s);
        if (chapter.number[1] != 0 && !m_numbers.contains(parentOf(chapter.number)))
            m_complaints.add(line, u"there is no chapter above this one"_s);
        m_library.chapters.push_back(chapter);
    }

    void readRations(const SourceLine& line) {
        const QString unit = line.field(1);
        const QStringList names = expandedNames(line.field(0));
        if (m_library.chapters.empty() || m_prefix.isEmpty())
            return m_complaints.add(line, u"a ration needs a chapter and a code prefix before it"_s);
        if (names.isEmpty() || line.fields.size() != 2 || unit.isEmpty())
            return m_complaints.add(line, u"a ration is a name with matching braces and a unit"_s);
        m_complaints.checkText(line, unit, unitLength);
        for (const QString& name : names) {
            m_complaints.checkText(line, name, nameLength);
            const QString code = u"%1-%2"_s.arg(m_prefix).arg(++m_lastNumber[m_prefix]);
            m_complaints.checkText(line, code, codeLength);
            m_library.indexByCode.insert(code.toUpper(), m_library.rations.size());
            m_library.rations.push_back({static_cast<int>(m_library.chapters.size()) - 1, code, name, unit});
        }
    }

    RationLibrary& m_library;
    Complaints& m_complaints;
    QString m_prefix;
    QHash<QString, int> m_lastNumber;
    std::set<std::array<int, 5>> m_numbers;
};

}  // namespace

const Ration* RationLibrary::find(const QString& code) const {
    const auto found = indexByCode.constFind(code.toUpper());
    return found == indexByCode.constEnd() ? nullptr : &rations[*found];
}

QStringList expandedNames(const QString& pattern) {
    QStringList names{QString()};
    qsizetype at = 0;
    while (at < pattern.size()) {
        const qsizetype open = pattern.indexOf(u'{', at);
        const qsizetype close = pattern.indexOf(u'}', at);
        const QString before = pattern.mid(at, open < 0 ? -1 : open - at);
        if ((open < 0) != (close < 0) || close < open)
            return {};
        const QStringList choices =
            open < 0 ? QStringList{QString()} : pattern.mid(open + 1, close - open - 1).split(u';');
        QStringList longer;
        for (const QString& name : names) {
            for (const QString& choice : choices)
                longer << name + before + choice;
        }
        names = longer;
        at = open < 0 ? pattern.size() : close + 1;
    }
    return names;
}

std::vector<RationLibrary> readRationLibraries(const QString& sourceFolder, Complaints& complaints) {
    std::vector<RationLibrary> libraries;
    for (const SourceLine& line : readSource(sourceFolder, u"libraries.txt"_s, complaints)) {
        if (line.keyword != u"定额库"_s || line.fields.size() != 7) {
            complaints.add(line, u"a ration library is seven fields after 定额库"_s);
            continue;
        }
        RationLibrary library{
            line.field(0), line.field(1), line.field(2), line.field(3), line.field(4), line.field(5), {}, {}, {}};
        if (library.id.size() != idLength)
            complaints.add(line, u"a library id has %1 characters"_s.arg(idLength));
        for (const QString& text : line.fields)
            complaints.checkText(line, text, nameLength);
        RationReader reader(library, complaints);
        for (const SourceLine& inner : readSource(sourceFolder, line.field(6), complaints))
            reader.read(inner);
        libraries.push_back(std::move(library));
    }
    return libraries;
}
