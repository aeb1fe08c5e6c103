// The fuzzer's way into everything that reads files: it changes the bytes of a bill or a ration library, and the random
// user works with what came of that. Some inputs are texts for the functions that read codes, numbers and names.

#include <fuzzer/FuzzedDataProvider.h>
#include <QApplication>
#include <QDir>
#include <cstdlib>

#include "app/base/Definitions.h"
#include "app/base/MessageBox.h"
#include "app/base/Paths.h"
#include "app/base/Text.h"
#include "editor/common/Codes.h"
#include "tests/support/Libraries.h"
#include "tests/support/Rations.h"
#include "tests/walk/RandomUser.h"

using namespace Qt::StringLiterals;

// In place of the program's message boxes: a box would take longer than all the rest, and nobody reads it here.
void showMessage(const QString&, const QString&, MessageIcon) {}
bool askYesNo(const QString&, const QString&, MessageIcon) { return true; }

/// The fonts' own cache.
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig\n"; }

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    // The end of the process takes it along, with windows that are still open.
    static auto* const application = new QApplication(*argc, *argv);
    static_cast<void>(application);
    appPath = withSeparator(programFolder());
    dataPath = withSeparator(joinPath(programFolder(), u"Data"_s));
    QDir().mkpath(dataPath);
    return 0;
}

static void readText(FuzzedDataProvider& input) {
    const QString text = QString::fromUtf8(QByteArray::fromStdString(input.ConsumeRandomLengthString(200)));
    const QString trimmed = trimBlanks(text);
    const qint64 number = numericValue(text);
    if (trimmed.startsWith(u' ') || trimmed.endsWith(u' ') || numericValue(QString::number(number)) != number ||
        sql("a='", text, "'").brokenAt().isEmpty() == (text.contains(u'\'') || text.contains(QChar::Null)))
        std::abort();
    static_cast<void>(GetCodePreNext(text, input.ConsumeBool(), input.ConsumeIntegralInRange(-1, 12)));
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Rations installed;
    static const QString library = awkwardLibrary();
    static auto* const driver = new EditorDriver(library);
    static const QString files[] = {library, installed.library(u"AWKWARD"_s).path};
    static const QByteArray good[] = {bytesOf(files[0]), bytesOf(files[1])};
    FuzzedDataProvider input(data, size);
    const int victim = input.ConsumeIntegralInRange(0, 7);
    if (victim == 7) {
        readText(input);
        return 0;
    }
    if (driver->editor())
        driver->close();
    for (const int file : {0, 1}) {
        QByteArray bytes = good[file];
        for (int changes = input.ConsumeIntegralInRange(0, file == victim / 4 ? 12 : 0); changes > 0; --changes) {
            const auto at = input.ConsumeIntegralInRange<qsizetype>(0, bytes.size() - 1);
            const std::string run = input.ConsumeRandomLengthString(16);
            bytes.replace(at, static_cast<qsizetype>(run.size()), run.data(), static_cast<qsizetype>(run.size()));
        }
        overwrite(files[file], bytes);
    }
    driver->window()->LoadBillDB(library);
    RandomUser user(*driver, input.ConsumeIntegral<unsigned>(), {.disturbed = false, .reopens = false});
    for (int step = 0; step < 8; ++step)
        user.step();
    QFile::remove(appPath + u"Error.log"_s);
    return 0;
}
