#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QTemporaryDir>

#include "samples/builder/SampleBuilder.h"
#include "tests/support/OtherProgram.h"

using namespace Qt::StringLiterals;

namespace {

const QString sources = QStringLiteral(TESSEL_SAMPLE_SOURCES);
const QString billLibrary = u"Data/建设工程清单2013.bdb"_s;

TEST(Samples, AnEditedLibraryIsKeptUnlessForced) {
    const QTemporaryDir home;
    const QString library = home.filePath(billLibrary);
    const auto notes = [&](bool forced) { return buildSamples(sources, home.path(), forced).notes.size(); };
    const auto nameOfFirst = [&] { return rowsInFile(library, "SELECT Name FROM tblBill WHERE ID=1").value(0); };
    EXPECT_EQ(notes(false), 0);
    EXPECT_EQ(notes(false), 0) << "an untouched one is made anew";
    OtherProgram(library).run("UPDATE tblBill SET Name='改过' WHERE ID=1");
    EXPECT_EQ(notes(false), 1);
    EXPECT_EQ(nameOfFirst(), u"改过"_s);
    EXPECT_EQ(notes(true), 0);
    EXPECT_EQ(nameOfFirst(), u"平整场地"_s);

    overwrite(library, "not a database");
    EXPECT_EQ(notes(false), 1);
    EXPECT_EQ(bytesOf(library), "not a database");
}

// The sources as a spreadsheet saves them, with a mark, CR LF and a blank row, are right; each with one more row is
// not.
TEST(Samples, AMistakeIsToldWithFileAndLineAndNothingIsWritten) {
    const QString rations = u"rations/guangdong-building/"_s;
    const std::pair<QString, QByteArray> mistakes[] = {
        {},
        {u"libraries.csv"_s, "GD2018ZHDE01,乙"},
        {rations + u"chapters.csv"_s, "75,99,,,,,又是七十五,"},
        {rations + u"chapters.csv"_s, "9001,1,,2,,,跳级,"},
        {rations + u"chapters.csv"_s, "9001,99,1,,,,没有章,"},
        {rations + u"chapters.csv"_s, "9001,一,,,,,不是数,"},
        {rations + u"rations.csv"_s, "9999,Z1-1,挖土,m3"},
        {rations + u"rations.csv"_s, "75,a1-1,挖土,m3"},
        {u"chapters.csv"_s, "9901,二,"},
        {u"companion.csv"_s, "01,"},
        {u"bills.csv"_s, "010101009,,挖土,m3,"},
        {u"bills.csv"_s, "990101001,,挖土,m3,"},
        {u"bills.csv"_s, "010101008,,Tom's,m3,"},
        {u"bills.csv"_s, "010101008,123456789,挖土,m3,"},
        {u"bills.csv"_s, "010101008,,\"挖土,m3,"},
        {u"bills.csv"_s, "010101008,,\xff,m3,"},
        {u"features.csv"_s, "010101001,深度,数字,m,,"},
        {u"features.csv"_s, "010101001,深度,数值,m,1;2,3"},
        {u"features.csv"_s, "010101999,深度,数值,m,,"},
        {u"contents.csv"_s, "010101001,运土,1,人工,,"},
        {u"contents.csv"_s, "010101001,运土,01,,,"},
        {u"contents.csv"_s, ",,,机械,GD2018ZHDE01,Z1-1"},
    };
    for (const auto& [mistaken, line] : mistakes) {
        SCOPED_TRACE(line.constData());
        const QTemporaryDir folder, home;
        // Of a file that is no text nobody knows the lines.
        qsizetype number = 1;
        QDirIterator files(sources, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext()) {
            const QString file = QDir(sources).relativeFilePath(files.next());
            QByteArray text = "\xEF\xBB\xBF" + bytesOf(files.filePath()).replace("\n", "\r\n") + ",,,\r\n";
            if (file == mistaken) {
                number += line.contains('\xff') ? 0 : text.count('\n');
                text += line + "\r\n";
            }
            QDir(folder.path()).mkpath(QFileInfo(file).path());
            overwrite(folder.filePath(file), text);
        }
        const QString complaints = buildSamples(folder.path(), home.path(), false).complaints.join(u'\n');
        const bool written = QDirIterator(home.path(), QDir::Files, QDirIterator::Subdirectories).hasNext();
        EXPECT_EQ(written, mistaken.isEmpty());
        EXPECT_EQ(complaints.section(u": "_s, 0, 0), written ? QString() : u"%1:%2"_s.arg(mistaken).arg(number));
        EXPECT_FALSE(complaints.contains(u'\n')) << qPrintable(complaints);
    }
}

}  // namespace
