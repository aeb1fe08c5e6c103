#include "tests/support/SampleProgram.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include "app/base/Definitions.h"
#include "app/base/Paths.h"
#include "tests/support/Libraries.h"

using namespace Qt::StringLiterals;

namespace {
/// The sample library that the build made.
QString sampleLibrary() {
    const QDir data(joinPath(builtProgramFolder(), u"Data"_s));
    return data.filePath(data.entryList({u"*.bdb"_s}, QDir::Files, QDir::Name).value(0));
}
}  // namespace

QString builtProgramFolder() { return qEnvironmentVariable("TESSEL_BUILT"); }

void installSamples() {
    static bool done = false;
    if (done)
        return;
    done = true;
    const QDir from(builtProgramFolder());
    const QDir to(programFolder());
    QDirIterator files(from.path(), {u"*"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString name = from.relativeFilePath(files.next());
        const bool wanted = name == u"tessel.dat"_s || name.startsWith(u"Data/"_s) || name.startsWith(u"Res/"_s);
        if (!wanted || to.exists(name))
            continue;
        to.mkpath(QFileInfo(name).path());
        EXPECT_TRUE(QFile::copy(from.filePath(name), to.filePath(name))) << qPrintable(name);
    }
}

QString copyOfSampleLibrary(const QString& name) {
    installSamples();
    const QString path = dataPath + name;
    QFile::remove(path);
    EXPECT_TRUE(QFile::copy(sampleLibrary(), path)) << "the samples are not built";
    QFile(path).setPermissions(QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    return path;
}

QString sampleCopy() { return copyOfSampleLibrary(QFileInfo(sampleLibrary()).fileName()); }
