#include "app/base/FileSystem.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "app/base/Error.h"
#include "app/base/Paths.h"

using namespace Qt::StringLiterals;

TEST(FileSystem, NamesMakesOneLevelAndDeletesOnlyWhatItMay) {
    const FileSystem files;
    EXPECT_EQ(files.GetFileName(joinPath(u"lib"_s, u"a.b.BDB"_s)), u"a.b.BDB"_s);
    EXPECT_EQ(files.GetExtensionName(u"a.b.BDB"_s), u"BDB"_s);
    EXPECT_EQ(files.GetExtensionName(u"none"_s), QString());

    const QTemporaryDir folder;
    const QString made = joinPath(folder.path(), u"Data"_s);
    files.CreateFolder(made);
    EXPECT_TRUE(files.FolderExists(made) && !files.FileExists(made));
    EXPECT_THROW(files.CreateFolder(joinPath(folder.path(), u"x/y"_s)), Error);
    QFile file(joinPath(made, u"清单.bdb"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    file.setPermissions(QFileDevice::ReadOwner);
    files.DeleteFile(file.fileName(), true);
    EXPECT_FALSE(files.FileExists(file.fileName()));
    EXPECT_THROW(files.DeleteFile(file.fileName(), true), Error);
}
