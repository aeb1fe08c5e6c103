#include <gtest/gtest.h>

#include <QTemporaryDir>

#include "samples/builder/SampleBuilder.h"
#include "tests/support/Libraries.h"
#include "tests/support/OtherProgram.h"

using namespace Qt::StringLiterals;

namespace {

const QString sources = QStringLiteral(TESSEL_SAMPLE_SOURCES);

TEST(Samples, AnEditedLibraryIsKeptUnlessForced) {
    installSamples();
    const QTemporaryDir home;
    const QString library = home.filePath(u"a.bdb"_s);
    const auto notes = [&](bool forced) { return buildSamples(sources, library, forced).notes.size(); };
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

}  // namespace
