// The fuzzer's way into everything that reads files. The first byte of an input chooses what the rest is:
//   a bill or ration library, byte by byte changed from a good one;
//   the values of its rows, of any type;
//   texts for the functions that read codes, numbers and names.

#include <sqlite3.h>

#include <fuzzer/FuzzedDataProvider.h>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <cstdlib>

#include "app/base/Definitions.h"
#include "app/base/MessageBox.h"
#include "app/base/Paths.h"
#include "app/base/Text.h"
#include "editor/common/Codes.h"
#include "editor/common/CopyName.h"
#include "storage/Connection.h"
#include "storage/LibraryConnection.h"
#include "storage/Schema.h"
#include "tests/fuzz/Walk.h"

using namespace Qt::StringLiterals;

namespace {

const QString libraryName = u"fuzzed.bdb"_s;

QString folder() { return qEnvironmentVariable("TESSEL_HOME", QDir::tempPath()); }
QString filePath() { return joinPath(folder(), libraryName); }

struct Column {
    const char* table;
    const char* names;
    int count;
};

constexpr Column billTables[] = {{"tblSYB", "Code,Name,IsDel", 3},
                                 {"tblBill", "Code,CodePrefix,Name,Unit,Rule,Cont", 6},
                                 {"tblBillSpec", "BillID,Name,Type,Unit,DefVal", 5},
                                 {"tblSpecEnum", "SpecID,IsUse,EigenValue", 3},
                                 {"tblCont", "BillID,Code,Num,Cont,Prof", 5},
                                 {"tblContDe", "ContID,SubNum,SubCont,Deh,Name,Unit,DekID", 7}};
constexpr Column rationTables[] = {{"DeSYB", "sybID,CH,ZH,JH,XH,MH,BTM,isdel", 8}, {"DEB", "ID,sybID,DEH,MC,DW", 5}};

/// The bytes of an empty library with both kinds of tables; its columns take any value.
const QByteArray& emptyLibrary() {
    static const QByteArray bytes = [] {
        QFile::remove(filePath());
        {
            Connection library;
            library.Open(filePath(), QString(), Connection::readWriteCreate);
            library.OpenRecordset("PRAGMA page_size=512");
            if (!CreateAllBillDBTable(&library))
                std::abort();
            for (const Column& table : rationTables)
                library.Execute(
                    sql("CREATE TABLE ", QString::fromLatin1(table.table), "(", QString::fromLatin1(table.names), ")"));
        }
        QFile file(filePath());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }();
    return bytes;
}

void write(const QByteArray& bytes) {
    QFile file(filePath());
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        std::abort();
}

void bindAny(sqlite3_stmt* statement, int position, FuzzedDataProvider& input) {
    static constexpr const char* likely[] = {"01", "0101", "010101", "010101001", "010101002",
                                             "1",  "2",    "0102",   "A1-1"};
    switch (input.ConsumeIntegralInRange(0, 7)) {
        case 0:
            sqlite3_bind_null(statement, position);
            break;
        case 1:
            sqlite3_bind_int64(statement, position, input.ConsumeIntegral<qint64>());
            break;
        case 2:
            sqlite3_bind_double(statement, position, input.ConsumeFloatingPoint<double>());
            break;
        case 3: {
            const auto blob = input.ConsumeRandomLengthString(40);
            sqlite3_bind_blob(statement, position, blob.data(), static_cast<int>(blob.size()), SQLITE_TRANSIENT);
            break;
        }
        case 4: {
            const auto text = input.ConsumeRandomLengthString(40);
            sqlite3_bind_text(statement, position, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
            break;
        }
        case 5:
            sqlite3_bind_int64(statement, position, input.ConsumeIntegralInRange(0, 9));
            break;
        default:
            sqlite3_bind_text(statement, position, input.PickValueInArray(likely), -1, SQLITE_STATIC);
    }
}

/// Puts rows into the tables as the input says.
void fill(FuzzedDataProvider& input) {
    write(emptyLibrary());
    sqlite3* database = nullptr;
    if (sqlite3_open(filePath().toUtf8().constData(), &database) != SQLITE_OK)
        std::abort();
    sqlite3_exec(database, "PRAGMA synchronous=OFF; PRAGMA journal_mode=MEMORY; BEGIN", nullptr, nullptr, nullptr);
    for (int rows = 0; rows < 60 && input.remaining_bytes() > 0; ++rows) {
        const int which = input.ConsumeIntegralInRange(0, 7);
        const Column& table = which < 6 ? billTables[which] : rationTables[which - 6];
        QByteArray marks = QByteArray("?,").repeated(table.count);
        marks.chop(1);
        const QByteArray insert =
            QByteArray("INSERT INTO ") + table.table + "(" + table.names + ") VALUES(" + marks + ")";
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(database, insert.constData(), -1, &statement, nullptr);
        for (int column = 1; column <= table.count; ++column)
            bindAny(statement, column, input);
        sqlite3_step(statement);
        sqlite3_finalize(statement);
    }
    sqlite3_exec(database, "COMMIT", nullptr, nullptr, nullptr);
    sqlite3_close(database);
}

/// A filled library with some of its bytes changed.
void damage(FuzzedDataProvider& input) {
    const auto changes = input.ConsumeIntegralInRange(1, 12);
    std::vector<std::pair<int, std::string>> runs;
    for (int i = 0; i < changes; ++i) {
        const int at = input.ConsumeIntegral<quint16>();
        runs.emplace_back(at, input.ConsumeRandomLengthString(16));
    }
    fill(input);
    QFile file(filePath());
    if (!file.open(QIODevice::ReadOnly))
        std::abort();
    QByteArray bytes = file.readAll();
    file.close();
    for (const auto& [at, run] : runs)
        bytes.replace(at % bytes.size(), static_cast<qsizetype>(run.size()), run.data(),
                      static_cast<qsizetype>(run.size()));
    write(bytes);
}

void checkTexts(FuzzedDataProvider& input) {
    const QString text = QString::fromUtf8(QByteArray::fromStdString(input.ConsumeRandomLengthString(200)));
    const QString trimmed = trimBlanks(text);
    const qint64 number = numericValue(text);
    const bool broken = text.contains(u'\'') || text.contains(QChar::Null);
    if (trimmed.startsWith(u' ') || trimmed.endsWith(u' ') || numericValue(QString::number(number)) != number ||
        sql("a='", text, "'").brokenAt().isEmpty() == broken)
        std::abort();
    static_cast<void>(GetCodePreNext(text, input.ConsumeBool(), input.ConsumeIntegralInRange(-1, 12)));
    write(emptyLibrary());
    const auto library = GetOrmConn(filePath());
    if (!broken)
        library->Execute(sql("INSERT INTO tblCont(Cont,BillID) VALUES('", text, "',1),('", trimmed, "(1)',1)"));
    const QString copy = GetCopyName(library.get(), text, "tblCont", "cont");
    if (!broken && !library->OpenRecordset(sql("SELECT 1 FROM tblCont WHERE Cont='", copy, "'")).EndOfFile())
        std::abort();
}

}  // namespace

// In place of the program's message boxes: a box would take longer than all the rest, and nobody reads it here.
void showMessage(const QString&, const QString&, MessageIcon) {}
bool askYesNo(const QString&, const QString&, MessageIcon) { return true; }

/// The fonts' own cache.
extern "C" const char* __lsan_default_suppressions() { return "leak:libfontconfig\n"; }

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QApplication application(*argc, *argv);
    qputenv("TESSEL_HOME", folder().toUtf8());
    appPath = withSeparator(programFolder());
    dataPath = appPath;
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider input(data, size);
    const int way = input.ConsumeIntegralInRange(0, 7);
    if (way == 7) {
        checkTexts(input);
        return 0;
    }
    if (way == 6)
        write(emptyLibrary().left(100) + QByteArray::fromStdString(input.ConsumeRemainingBytesAsString()));
    else if (way < 3)
        fill(input);
    else
        damage(input);
    walkLibrary(filePath());
    walkRations(filePath(), u"A1-1"_s);
    QFile::remove(filePath() + u"-journal"_s);
    QFile::remove(joinPath(folder(), u"Error.log"_s));
    return 0;
}
