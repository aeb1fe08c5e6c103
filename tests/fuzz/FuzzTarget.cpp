// The fuzzer's way into everything that reads files: it changes the bytes of a bill or a ration library, and the random
// user works with what came of that.

#include <fuzzer/FuzzedDataProvider.h>

#include "app/base/MessageBox.h"
#include "tests/support/Libraries.h"
#include "tests/support/Rations.h"
#include "tests/walk/RandomUser.h"

// In place of the program's message boxes: a box would take longer than all the rest, and nobody reads it here.
void showMessage(const QString&, const QString&, MessageIcon) {}
bool askYesNo(const QString&, const QString&, MessageIcon) { return true; }
MessagesWait::MessagesWait() = default;
MessagesWait::~MessagesWait() = default;

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

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Rations installed;
    static const QString library = awkwardLibrary();
    static auto* const driver = new EditorDriver(library);
    static const QString files[] = {library, installed.library(u"AWKWARD"_s).path};
    static const QByteArray good[] = {bytesOf(files[0]), bytesOf(files[1])};
    FuzzedDataProvider input(data, size);
    const int victim = input.ConsumeIntegralInRange(0, 1);
    if (driver->editor())
        driver->close();
    for (const int file : {0, 1}) {
        QByteArray bytes = good[file];
        for (int changes = input.ConsumeIntegralInRange(0, file == victim ? 12 : 0); changes > 0; --changes) {
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
