#include "tests/walk/Rations.h"

#include <gtest/gtest.h>

#include <QFile>

#include "app/base/Definitions.h"
#include "app/base/Paths.h"
#include "samples/writer/RationFiles.h"
#include "storage/SystemDatabase.h"
#include "tests/support/SampleProgram.h"

using namespace Qt::StringLiterals;

namespace {

/// A library with what is awkward: a code in small letters, a name that cannot be written, a code with a blank.
void addAwkwardLibrary() {
    const QString file = u"awkward.db"_s;
    const QString path = joinPath(dataPath + u"广东省"_s, file);
    if (QFile::exists(path))
        return;
    Connection library;
    library.Open(path, QString(), Connection::readWriteCreate);
    createRationTables(library);
    library.Execute("INSERT INTO DeSYB VALUES(1,1,0,0,0,0,'章',0),(2,1,1,0,0,0,'节',0)");
    library.Execute(
        "INSERT INTO DEB(sybID,DEH,MC,DW) VALUES(1,'x1-1','lower case','m'),(1,'X1-2','it''s','m'),"
        "(2,'X1-3','第三项','100m2'),(2,'x1-4','',NULL)");
    const auto system = openSystemDatabase();
    system->Execute(
        "INSERT INTO SysBaseData(DekId,DekName,DekFilename,rgnName,Prof,QdkFileName) VALUES"
        "('AWKWARD','特殊定额','awkward.db','广东省','99',''),('GONE','丢失的定额','gone.db','广东省','99',''),('"
        "GD2018ZHDE99','默认定额','gone.db','广东省','99','awkward.bdb')");
}

}  // namespace

Rations::Rations() {
    installSamples();
    addAwkwardLibrary();
    const auto system = openSystemDatabase();
    Recordset rows = system->OpenRecordset("SELECT DekId,DekFilename,rgnName FROM SysBaseData");
    for (; !rows.EndOfFile(); rows.MoveNext()) {
        const QString file = rows.text("DekFilename");
        Library& library = m_libraries[rows.text("DekId")];
        library.path = joinPath(dataPath + rows.text("rgnName"), file);
        library.browserPath = joinPath(dataPath + u"广东省"_s, file);
        if (!QFile::exists(library.path))
            continue;
        Connection connection;
        connection.Open(library.path, QString(), Connection::readWriteCreate);
        Recordset rations = connection.OpenRecordset("SELECT DEH,MC FROM DEB");
        for (; !rations.EndOfFile(); rations.MoveNext()) {
            const QString code = rations.text("DEH");
            library.codes << code;
            if (!library.names.contains(code.toUpper()))
                library.names[code.toUpper()] = rations.text("MC");
        }
    }
}

QString Rations::rejection(const QString& code, const QString& id) const {
    const Library found = library(id);
    if (!QFile::exists(found.path))
        return u"提示: 定额库"_s + found.path + u"文件不存在!"_s;
    if (!found.names.contains(code.toUpper()))
        return u"提示: 定额 ["_s + code + u"] 不存在, 请重新输入!"_s;
    return {};
}
