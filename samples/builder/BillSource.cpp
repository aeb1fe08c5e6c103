#include "samples/builder/BillSource.h"

#include <QDir>

#include "samples/builder/BillReader.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int nameLength = 50;
constexpr int noteLength = 2000;

bool hasChapter(const BillLibrary& library, const QString& code) {
    for (const Chapter& chapter : library.chapters) {
        if (chapter.code == code)
            return true;
    }
    return false;
}

void readChapters(const QString& sourceFolder, BillLibrary& library, Complaints& complaints) {
    for (const SourceLine& line : readSource(sourceFolder, u"chapters.txt"_s, complaints)) {
        const QString head = line.field(0);
        const Chapter chapter{head.section(u' ', 0, 0), head.section(u' ', 1), line.field(1)};
        const qsizetype length = chapter.code.size();
        bool number = false;
        chapter.code.toUInt(&number);
        complaints.checkText(line, chapter.name, nameLength);
        complaints.checkText(line, chapter.note, noteLength);
        if (line.keyword != u"章"_s || !number || (length != 2 && length != 4 && length != 6) || chapter.name.isEmpty())
            complaints.add(line, u"a chapter is 章, a code of 2, 4 or 6 digits and a name"_s);
        else if (hasChapter(library, chapter.code))
            complaints.add(line, u"this chapter code is used already"_s);
        else if (length > 2 && !hasChapter(library, chapter.code.chopped(2)))
            complaints.add(line, u"there is no chapter above this one"_s);
        else
            library.chapters.push_back(chapter);
    }
}

void readExplanations(const QString& sourceFolder, BillLibrary& library, Complaints& complaints) {
    for (const SourceLine& line : readSource(sourceFolder, u"companion.txt"_s, complaints)) {
        if (line.keyword != u"说明"_s || line.fields.size() != 2)
            complaints.add(line, u"an explanation is 说明, a chapter code and a text"_s);
        if (!hasChapter(library, line.field(0)))
            complaints.add(line, u"there is no chapter %1"_s.arg(line.field(0)));
        complaints.checkText(line, line.field(1), noteLength);
        library.explanations.push_back({line.field(0), {}, line.field(1)});
    }
}

}  // namespace

BillLibrary readBillLibrary(const QString& sourceFolder, const std::vector<RationLibrary>& libraries,
                            Complaints& complaints) {
    BillLibrary library;
    for (const RationLibrary& rations : libraries) {
        if (library.fileName.isEmpty())
            library.fileName = rations.defaultFor;
    }
    if (library.fileName.isEmpty())
        complaints.add(u"libraries.txt"_s, u"names no bill library"_s);
    readChapters(sourceFolder, library, complaints);
    readExplanations(sourceFolder, library, complaints);
    const QDir bills(QDir(sourceFolder).filePath(u"bills"_s));
    for (const QString& name : bills.entryList({u"*.txt"_s}, QDir::Files, QDir::Name)) {
        BillReader reader(library, libraries, complaints);
        for (const SourceLine& line : readSource(sourceFolder, u"bills/"_s + name, complaints))
            reader.read(line);
        reader.finish();
    }
    return library;
}
