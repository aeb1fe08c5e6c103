#include "samples/builder/BillReader.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

// The widths of the library's columns.
constexpr int nameLength = 50;
constexpr int prefixLength = 8;
constexpr int unitLength = 12;
constexpr int contentLength = 50;
constexpr int featureLength = 100;
constexpr int professionsLength = 20;
constexpr int textLength = 2000;

const QStringList featureTypes{u"无"_s, u"数值"_s, u"枚举"_s, u"计算"_s};

bool isDigits(const QString& text, int length) {
    return text.size() == length &&
           std::all_of(text.begin(), text.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

}  // namespace

void BillReader::read(const SourceLine& line) {
    if (line.keyword == u"默认定额库"_s) {
        m_defaultLibrary = findLibrary(line.field(0));
        if (!m_defaultLibrary)
            m_complaints.add(line, u"there is no ration library %1"_s.arg(line.field(0)));
        return;
    }
    if (line.keyword == u"清单"_s)
        return beginBill(line);
    if (!m_open)
        return m_complaints.add(line, u"%1 needs a bill before it"_s.arg(line.keyword));
    if (line.keyword == u"规则"_s)
        readRule(line);
    else if (line.keyword == u"特征"_s)
        readFeature(line);
    else if (line.keyword == u"内容"_s)
        readContent(line);
    else if (line.keyword == u"细目"_s)
        readSubContent(line);
    else
        m_complaints.add(line, u"unknown keyword %1"_s.arg(line.keyword));
}

void BillReader::beginBill(const SourceLine& line) {
    finish();
    m_open = true;
    m_contentTakesParts = false;
    m_billLine = line;
    const QString head = line.field(0);
    m_bill = Bill{head.section(u' ', 0, 0), line.field(2), head.section(u' ', 1), line.field(1), {}, {}, {}};
    m_complaints.checkText(line, m_bill.name, nameLength);
    m_complaints.checkText(line, m_bill.prefix, prefixLength);
    m_complaints.checkText(line, m_bill.unit, unitLength);
    if (!isDigits(m_bill.code, 9) || m_bill.name.isEmpty() || m_bill.unit.isEmpty())
        return m_complaints.add(line, u"a bill is a code of nine digits, a name and a unit"_s);
    const QString chapter = m_bill.code.left(6);
    if (std::none_of(m_library.chapters.begin(), m_library.chapters.end(),
                     [&](const Chapter& known) { return known.code == chapter; }))
        m_complaints.add(line, u"there is no chapter %1"_s.arg(chapter));
    const auto inChapter = std::count_if(m_library.bills.begin(), m_library.bills.end(),
                                         [&](const Bill& bill) { return bill.code.startsWith(chapter); });
    if (m_bill.code.mid(6).toInt() != inChapter + 1)
        m_complaints.add(line,
                         u"the next bill of chapter %1 has number %2"_s.arg(chapter).arg(inChapter + 1, 3, 10, QChar(u'0')));
}

void BillReader::readRule(const SourceLine& line) {
    const QString text = line.fields.join(u'|');
    m_complaints.checkText(line, text, textLength);
    m_bill.rules << text;
}

void BillReader::readFeature(const SourceLine& line) {
    const QString name = line.field(0);
    m_complaints.checkText(line, name, featureLength);
    if (line.fields.size() == 1) {
        const auto known = m_features.constFind(name);
        if (known == m_features.constEnd())
            return m_complaints.add(line, u"feature %1 was not written out before"_s.arg(name));
        m_bill.features.push_back(*known);
        return;
    }
    Feature feature{name, static_cast<int>(featureTypes.indexOf(line.field(1))), line.field(2), {}, -1};
    if (feature.type < 0)
        m_complaints.add(line, u"a feature's type is one of %1"_s.arg(featureTypes.join(u' ')));
    m_complaints.checkText(line, feature.unit, unitLength);
    for (const QString& part : line.field(3).split(u';', Qt::SkipEmptyParts)) {
        QString value = part.trimmed();
        if (value.startsWith(u'*')) {
            if (feature.used >= 0)
                m_complaints.add(line, u"a feature has one value in use at most"_s);
            feature.used = static_cast<int>(feature.values.size());
            value.remove(0, 1);
        }
        m_complaints.checkText(line, value, textLength);
        feature.values << value;
    }
    m_features.insert(name, feature);
    m_bill.features.push_back(feature);
}

void BillReader::readContent(const SourceLine& line) {
    const QString text = line.field(0);
    m_complaints.checkText(line, text, contentLength);
    m_contentTakesParts = line.fields.size() > 1;
    if (!m_contentTakesParts) {
        const auto known = m_contents.constFind(text);
        if (known == m_contents.constEnd())
            return m_complaints.add(line, u"content %1 was not written out before"_s.arg(text));
        m_bill.contents.push_back(*known);
        return;
    }
    QString professions;
    for (const QString& profession : line.field(1).split(u' ', Qt::SkipEmptyParts)) {
        if (!isDigits(profession, 2))
            m_complaints.add(line, u"a profession has two digits: %1"_s.arg(profession));
        professions += profession;
    }
    m_complaints.checkText(line, professions, professionsLength);
    m_bill.contents.push_back({text, professions, {}});
}

void BillReader::readSubContent(const SourceLine& line) {
    if (!m_contentTakesParts)
        return m_complaints.add(line, u"细目 needs a content that is written out before it"_s);
    const QString joined = line.fields.join(u'|');
    const qsizetype colon = joined.indexOf(u" : "_s);
    SubContent part{(colon < 0 ? joined : joined.left(colon)).trimmed(), {}};
    m_complaints.checkText(line, part.text, contentLength);
    if (colon >= 0) {
        for (const QString& reference : joined.mid(colon + 3).split(u' ', Qt::SkipEmptyParts))
            part.rations.push_back(findRation(line, reference));
    }
    if (part.rations.empty())
        part.rations.emplace_back();
    Content& content = m_bill.contents.back();
    content.parts.push_back(std::move(part));
    m_contents.insert(content.text, content);
}

AttachedRation BillReader::findRation(const SourceLine& line, const QString& reference) {
    if (reference == u"-"_s)
        return {};
    const qsizetype colon = reference.indexOf(u':');
    const RationLibrary* library = colon < 0 ? m_defaultLibrary : findLibrary(reference.left(colon));
    const Ration* ration = library ? library->find(reference.mid(colon + 1)) : nullptr;
    if (!ration)
        m_complaints.add(line, u"there is no ration %1"_s.arg(reference));
    return {library, ration};
}

const RationLibrary* BillReader::findLibrary(const QString& id) const {
    const auto found = std::find_if(m_rationLibraries.begin(), m_rationLibraries.end(),
                                    [&](const RationLibrary& library) { return library.id == id; });
    return found == m_rationLibraries.end() ? nullptr : &*found;
}

void BillReader::finish() {
    if (!m_open)
        return;
    m_open = false;
    for (const Content& content : m_bill.contents) {
        if (content.parts.empty())
            m_complaints.add(m_billLine, u"content %1 has no 细目"_s.arg(content.text));
    }
    m_library.bills.push_back(std::move(m_bill));
}
