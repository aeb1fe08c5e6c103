#include "tests/walk/Prescribed.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "editor/common/LibraryDocument.h"

using namespace ContentCell;

QStringList columnOf(const Rows& rows, int cell) {
    QStringList cells;
    for (const QStringList& row : rows)
        cells << row[cell];
    return cells;
}

QString Prescribed::nodeKey(const QStringList& row) {
    return row[Level] + u'/' + (row[Level] == u"2" ? row[ContDeID] : row[ContID] + u'/' + row[SubNum]);
}

void Prescribed::follow(const LibraryDocument& library) {
    QObject::connect(&library, &LibraryDocument::listingChanged, &library, [this] { bills.reset(); });
    QObject::connect(&library, &LibraryDocument::currentBillChanged, &library, [this, &library] {
        detailsLoaded();
        detailsOf = QString::number(library.shownBill().id);
    });
}

void Prescribed::detailsLoaded() {
    detailsLocked = contentsEmptied = false;
    cells.clear();
    emptied.clear();
}

void Prescribed::applyToContents(Rows& fresh, Rows& shown) const {
    int blanks = 0;
    QMap<QString, int> left = emptied;
    for (qsizetype i = shown.size() - 1; i >= 0; --i) {
        const QStringList row = shown[i];
        const bool inFile = std::any_of(fresh.begin(), fresh.end(), [&](const QStringList& other) {
            return other[Level] == u"1" && other[ContID] == row[ContID] && other[SubNum] == row[SubNum];
        });
        if (row[Level] == u"2" && row[ContDeID].isEmpty()) {
            ++blanks;
            // It stands below its own second-level content.
            EXPECT_TRUE(i > 0 && shown[i - 1][Level] != u"0" && shown[i - 1][ContID] == row[ContID] &&
                        shown[i - 1][SubNum] == row[SubNum]);
            shown.removeAt(i);
        } else if (row[Level] == u"1" && !inFile && left.value(row[ContID]) > 0) {
            --left[row[ContID]];
            shown.removeAt(i);
        }
    }
    EXPECT_LE(blanks, 1);
    for (QStringList& row : fresh)
        for (const int column : {Cont, DekName})
            row[column] = cells.value({nodeKey(row), column}, row[column]);
}
