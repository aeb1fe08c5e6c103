#pragma once

#include <gtest/gtest.h>

#include <QFile>

/// Takes a file away and brings it back, in place of whatever stands there by then, when this goes.
class KeptFile {
public:
    explicit KeptFile(const QString& path) : m_path(path), m_kept(path + QStringLiteral(".kept")) {
        EXPECT_TRUE(QFile::rename(m_path, m_kept));
    }
    ~KeptFile() {
        QFile::remove(m_path);
        EXPECT_TRUE(QFile::rename(m_kept, m_path));
    }
    KeptFile(const KeptFile&) = delete;
    KeptFile& operator=(const KeptFile&) = delete;

private:
    const QString m_path;
    const QString m_kept;
};
