#include "app/base/FileSystem.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>

#include "app/base/Error.h"
#include "app/base/Paths.h"

TEST(FileSystem, NamesAndExtensions) {
    const FileSystem files;
    const QString path = joinPath(QStringLiteral("lib"), QStringLiteral("a.b.BDB"));
    EXPECT_EQ(files.GetFileName(path), QStringLiteral("a.b.BDB"));
    EXPECT_EQ(files.GetExtensionName(path), QStringLiteral("BDB"));
    EXPECT_EQ(files.GetExtensionName(QStringLiteral("none")), QString());
}

TEST(FileSystem, CreatesOneLevelAndDeletesOnlyWhatItMay) {
    const FileSystem files;
    const QTemporaryDir folder;
    const QString made = joinPath(folder.path(), QStringLiteral("Data"));
    files.CreateFolder(made);
    EXPECT_TRUE(files.FolderExists(made));
    EXPECT_FALSE(files.FileExists(made));
    EXPECT_THROW(files.CreateFolder(joinPath(folder.path(), QStringLiteral("x/y"))), Error);

    const QString name = joinPath(made, QStringLiteral("清单.bdb"));
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();
    file.setPermissions(QFileDevice::ReadOwner);
    files.DeleteFile(name, true);
    EXPECT_FALSE(files.FileExists(name));
    EXPECT_THROW(files.DeleteFile(name, true), Error);
}
