#include "tests/support/Rations.h"

#include "administration/RationFiles.h"
#include "app/base/Definitions.h"
#include "app/base/Paths.h"
#include "storage/SystemDatabase.h"
#include "tests/support/Libraries.h"
#include "tests/support/OtherProgram.h"

namespace {

/// A library with what is awkward: a code in small letters, names that cannot be written or look like something else, a
/// missing unit.
void addAwkwardLibrary(OtherProgram& system) {
    const QString path = joinPath(dataPath + u"广东省"_s, u"awkward.db"_s);
    if (QFile::exists(path))
        return;
    writeRationLibrary(path, {{{1, {1}, u"<b>&章"_s}, {2, {1, 1}, u"节"_s}},
                              {{1, u"x1-1"_s, u"lower case"_s, u"m"_s},
                               {1, u"X1-2"_s, u"it's"_s, u"m"_s},
                               {1, u"X1-5"_s, u"'; DROP TABLE tblBill; --"_s, u"<b>"_s},
                               {2, u"X1-6"_s, u"%1 <b>&File</b> \"#1;a|\\"_s, u"😀"_s},
                               {2, u"X1-3"_s, u"第三项"_s, u"100m2"_s},
                               {2, u"x1-4"_s, {}, {}},
                               {2, u"X1-1"_s, u"the second of two"_s, u"m"_s}}});
    OtherProgram(path).run("UPDATE DEB SET DW=NULL WHERE DEH='x1-4'");
    system.run(
        "INSERT INTO SysBaseData(DekId,DekName,DekFilename,rgnName,Prof,QdkFileName) VALUES"
        "('AWKWARD','特殊定额','awkward.db','广东省','99',''),('GONE','丢失的定额','gone.db','广东省','99',''),('"
        "GD2018ZHDE99','默认定额','gone.db','广东省','99','awkward.bdb')");
}

}  // namespace

Rations::Rations() {
    installSamples();
    OtherProgram system(appPath + u"tessel.dat"_s, systemKey);
    addAwkwardLibrary(system);
    for (const QStringList& listed : system.rows(u"SELECT DekId,DekFilename,rgnName FROM SysBaseData"_s)) {
        Library& library = m_libraries[listed[0]];
        library.path = joinPath(dataPath + listed[2], listed[1]);
        library.browserPath = joinPath(dataPath + u"广东省"_s, listed[1]);
        if (!QFile::exists(library.path))
            continue;
        // The first of two with the same code counts.
        const QString rations = u"SELECT upper(DEH),MC,IFNULL(DW,'') FROM DEB ORDER BY rowid DESC"_s;
        for (const QStringList& ration : OtherProgram(library.path).rows(rations)) {
            library.names[ration[0]] = ration[1];
            library.units[ration[0]] = ration[2];
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
