#include "samples/writer/RationFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "app/base/Error.h"
#include "storage/SystemDatabase.h"

using namespace Qt::StringLiterals;

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
        throw Error(1, u"%1: the folder cannot be made"_s.arg(QDir::toNativeSeparators(path)));
    QFile::remove(m_newPath);
    m_connection.Open(m_newPath, QString::fromLatin1(key), Connection::readWriteCreate);
    m_connection.Execute("BEGIN;");
}

NewDatabase::~NewDatabase() {
    m_connection.Close();
    QFile::remove(m_newPath);
}

void NewDatabase::replace() {
    m_connection.Execute("COMMIT;");
    m_connection.Close();
    QFile::remove(m_path);
    if (!QFile::rename(m_newPath, m_path))
        throw Error(1, u"%1 cannot be replaced"_s.arg(QDir::toNativeSeparators(m_path)));
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

void writeSystemDatabase(const QString& path, const std::vector<ListedRationLibrary>& libraries) {
    NewDatabase file(path, systemKey);
    createSystemTable(file.connection());
    for (const ListedRationLibrary& library : libraries) {
        file.connection().Execute(sql("INSERT INTO SysBaseData VALUES ('", Doubled{library.id}, "','",
                                      Doubled{library.name}, "','", Doubled{library.defaultFor}, "','",
                                      Doubled{library.fileName}, "','", Doubled{library.region}, "','",
                                      Doubled{library.profession}, "');"));
    }
    file.replace();
}
