#pragma once

#include <QHash>
#include <QString>
#include <array>
#include <vector>

class Complaints;

/// A chapter of a ration library.
struct RationChapter {
    std::array<int, 5> number{};  ///< chapter, section, sub-section, item, sub-item; 0 for a level that is not used
    QString title;
    bool removed = false;
};

struct Ration {
    int chapter = 0;  ///< index of its chapter
    QString code;
    QString name;
    QString unit;
};

/// A ration library with its row of the system database.
struct RationLibrary {
    QString id;
    QString name;
    QString fileName;
    QString region;
    QString profession;
    QString defaultFor;  ///< bare file name of the bill library that it is the default for; may be empty
    std::vector<RationChapter> chapters;
    std::vector<Ration> rations;

    /// The ration with the code `code`, letter case ignored; null when there is none.
    const Ration* find(const QString& code) const;

    QHash<QString, std::size_t> indexByCode;  ///< by upper-cased code
};

/// The ration libraries that "libraries.txt" in the source folder lists, in its order, read from their own sources.
std::vector<RationLibrary> readRationLibraries(const QString& sourceFolder, Complaints& complaints);

/// All names that a pattern such as "挖{土;石} 深度{2;4}m" stands for, the last alternative changing first; empty when
/// its braces do not match.
QStringList expandedNames(const QString& pattern);
