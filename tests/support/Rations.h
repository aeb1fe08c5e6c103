#pragma once

#include <QMap>
#include <QStringList>

/// The ration libraries that the test's program folder has, read once and without the program's own look-ups.
class Rations {
public:
    Rations();

    struct Library {
        QString path;                  ///< by the editor's rule; empty for an id that is not listed
        QString browserPath;           ///< by the browser's rule
        QMap<QString, QString> names;  ///< name by capital code
        QMap<QString, QString> units;  ///< unit by capital code
    };

    /// An id that is not listed gives a library without a file.
    Library library(const QString& id) const { return m_libraries.value(id); }

    /// The message with which the editor rejects a code; empty when it takes it.
    QString rejection(const QString& code, const QString& id) const;

private:
    QMap<QString, Library> m_libraries;
};
