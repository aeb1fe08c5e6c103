#include "administration/RationFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <filesystem>
#include <system_error>

#include "app/base/Error.h"
#include "storage/SystemDatabase.h"

using namespace Qt::StringLiterals;

namespace {

void addLibrary(Connection& system, const ListedRationLibrary& library) {
    system.Execute(sql("INSERT INTO SysBaseData (DekId,DekName,QdkFileName,DekFilename,rgnName,Prof) VALUES ('",
                       Doubled{library.id}, "','", Doubled{library.name}, "','", Doubled{library.defaultFor}, "','",
                       Doubled{library.fileName}, "','", Doubled{library.region}, "','", Doubled{library.profession},
                       "');"));
}

}  // namespace

void createRationTables(Connection& library) {
    library.Execute(
        "CREATE TABLE DeSYB (sybID Integer PRIMARY KEY ,CH Integer ,ZH Integer ,JH Integer ,XH Integer ,MH Integer "
        ",BTM text(100) ,isdel Integer DEFAULT 0);");
    library.Execute(
        "CREATE TABLE DEB (ID Integer PRIMARY KEY ,sybID Integer ,DEH text(100) ,MC text(150) ,DW text(25));");
}

void createSystemTable(Connection& system) {
    system.Execute(
        "CREATE TABLE SysBaseData (DekId text ,DekName text ,QdkFileName text ,DekFilename text ,rgnName text "
        ",Prof text);");
}

NewDatabase::NewDatabase(const QString& path, const char* key) : m_path(path), m_newPath(path + u".new"_s) {
    if (!QDir().mkpath(QFileInfo(path).path()))
        throw Error(76, u"无法建立文件夹：%1"_s.arg(QDir::toNativeSeparators(QFileInfo(path).path())));
    QFile::remove(m_newPath);
    m_connection.Open(m_newPath, QString::fromLatin1(key), Connection::readWriteCreate);
    m_connection.Execute("BEGIN;");
}

NewDatabase::~NewDatabase() {
    m_connection.Close();
    QFile::remove(m_newPath);
}

void NewDatabase::replace() {
    const QString shown = QDir::toNativeSeparators(m_path);
    for (const QString& left : {m_path + u"-journal"_s, m_path + u"-wal"_s})
        if (QFileInfo(left).size() > 0)
            throw Error(75, u"%1 正在写入，或上次写入时中断，请先用写它的程序打开并关闭它，再重试"_s.arg(shown));
    m_connection.Execute("COMMIT;");
    m_connection.Close();
    if (QFile::exists(m_path))
        QFile::setPermissions(m_newPath, QFile::permissions(m_path));
    std::error_code failed;
    std::filesystem::rename(QFileInfo(m_newPath).filesystemFilePath(), QFileInfo(m_path).filesystemFilePath(), failed);
    if (failed)
        throw Error(75, u"%1 不能替换，请检查它是否正在使用、是否允许写入"_s.arg(shown));
}

void writeRationLibrary(const QString& path, const RationFile& library) {
    NewDatabase file(path);
    Connection& connection = file.connection();
    createRationTables(connection);
    for (const RationFile::Chapter& chapter : library.chapters) {
        const auto& [first, second, third, fourth, fifth] = chapter.number;
        connection.Execute(sql("INSERT INTO DeSYB VALUES (", chapter.id, ",", first, ",", second, ",", third, ",",
                               fourth, ",", fifth, ",'", Doubled{chapter.title}, "',", chapter.removed ? 1 : 0, ");"));
    }
    for (const RationFile::Ration& ration : library.rations) {
        connection.Execute(sql("INSERT INTO DEB (sybID,DEH,MC,DW) VALUES (", ration.chapter, ",'", Doubled{ration.code},
                               "','", Doubled{ration.name}, "','", Doubled{ration.unit}, "');"));
    }
    file.replace();
}

std::vector<ListedRationLibrary> listedLibraries(Connection& system) {
    std::vector<ListedRationLibrary> libraries;
    for (Recordset rows = system.OpenRecordset("SELECT * FROM SysBaseData;"); !rows.EndOfFile(); rows.MoveNext())
        libraries.push_back({rows.text("DekId"), rows.text("DekName"), rows.text("DekFilename"), rows.text("rgnName"),
                             rows.text("Prof"), rows.text("QdkFileName")});
    return libraries;
}

void listLibrary(Connection& system, const ListedRationLibrary& library) {
    const qint64 replaced = system.Execute(
        sql("UPDATE SysBaseData SET DekName='", Doubled{library.name}, "',QdkFileName='", Doubled{library.defaultFor},
            "',DekFilename='", Doubled{library.fileName}, "',rgnName='", Doubled{library.region}, "',Prof='",
            Doubled{library.profession}, "' WHERE rowid=(SELECT min(rowid) FROM SysBaseData WHERE DekId='",
            Doubled{library.id}, "');"));
    if (replaced == 0)
        addLibrary(system, library);
}

void writeSystemDatabase(const QString& path, const std::vector<ListedRationLibrary>& libraries) {
    NewDatabase file(path, systemKey);
    createSystemTable(file.connection());
    for (const ListedRationLibrary& library : libraries)
        addLibrary(file.connection(), library);
    file.replace();
}
