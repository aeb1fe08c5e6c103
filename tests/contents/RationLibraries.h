#pragma once

#include <QString>
#include <vector>

/// A tessel.dat and ration libraries in the program folder of the test, made anew; gone with the object.
class RationLibraries {
public:
    RationLibraries();
    ~RationLibraries();
    RationLibraries(const RationLibraries&) = delete;
    RationLibraries& operator=(const RationLibraries&) = delete;

    struct Row {
        QString deh;
        QString name;
        QString unit;
    };

    /// Lists a library in tessel.dat and makes its file with `rations`; gives the path of the file.
    QString add(const QString& dekId, const QString& region, const QString& fileName, const std::vector<Row>& rations);

    /// Lists a library without making a file.
    void list(const QString& dekId, const QString& region, const QString& fileName);

    static QString systemDatabasePath();
};
