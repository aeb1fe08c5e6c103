#pragma once

#include <QString>
#include <array>

class KeyedTree;
class Recordset;

/// A chapter of a ration library.
///
/// Its number has five parts: chapter, section, sub-section, item, sub-item. The first 0 after the chapter ends the
/// number, whatever follows it.
struct RationChapter {
    static constexpr int levels = 5;

    qint64 sybID = 0;
    std::array<qint64, levels> number{};
    QString title;

    /// 1 (chapter) to 5 (sub-item).
    int level() const;
    /// "K12"
    QString key() const;
    /// The number of its own level and the title: "3.土石方工程".
    QString text() const;
    /// The full number: "1.2.0.0.0".
    QString fullNumber() const;
};

/// The chapter in the current row of `rows`, a query of DeSYB.
RationChapter readChapter(const Recordset& rows);

/// The `sybID` in a node's key; 0 for the root.
qint64 chapterOfKey(const QString& key);

/// Adds the root node of a ration library to the empty `tree` and opens it.
void addRationRoot(KeyedTree* tree);

/// Adds the chapters in `rows`, ordered by number, to a tree that holds the root. Each hangs under the last chapter of
/// the level above; in a file that has none yet, under the nearest level there is. Throws Error at a row that cannot
/// be read or whose `sybID` occurred before; the chapters up to it stay.
void addRationChapters(KeyedTree* tree, Recordset& rows);
