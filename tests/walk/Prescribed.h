#pragma once

#include "editor/common/LibraryDocument.h"
#include "tests/support/Snapshot.h"

/// One cell of each row.
inline QStringList columnOf(const Rows& rows, int cell) {
    QStringList cells;
    for (const QStringList& row : rows)
        cells << row[cell];
    return cells;
}

/// The differences between the window and a fresh load of its file that are meant to be, by name. Each says what the
/// window must show instead, and ends when the part of the window that it concerns is loaded anew. Everything else must
/// be the same.
struct Prescribed {
    /// What the tree shows until it is rebuilt.
    ///
    /// "A code that overflows": a new chapter stands behind its last sibling, whatever its code says. The step from
    /// 0199 is 0200, which a fresh tree hangs under 02 or hides; the step from 99 is 100, at which a fresh tree stops,
    /// so that it does not show longer codes that are added from then on.
    ///
    /// "Orphans come home": deleting a chapter deletes its own row alone. A new chapter with the same code is added to
    /// the tree alone, while a fresh tree hangs the chapters left behind below it.
    std::optional<Rows> tree;

    /// Ids of the bills in the order of the list, until it is filled again; what the rows show is in the file.
    ///
    /// "A bill code that overflows": stepping carries into the chapter's digits, so the bill after 010101999 is
    /// 010102000. It stays in the list that it was added to.
    ///
    /// "Stepping back among results": a delete while the results of a query are listed steps every row below back,
    /// whatever its chapter is; rows of other chapters then meet the codes of bills that are not listed.
    std::optional<QStringList> bills;

    /// "Details stay as they were": a click on a chapter that lists no bills empties the list and leaves the detail
    /// grids; they go on showing, and editing, the bill that was current. Its id, or "0" when none was.
    QString detailsOf = u"0"_s;
    /// "Details of a bill that is gone": when the kept bill was deleted with its chapter the grids stay as they were,
    /// locked.
    bool detailsLocked = false;
    /// "No contents without a bill": choosing a profession while no bill is listed empties the content grid.
    bool contentsEmptied = false;

    /// Cells of the content grid that the window alone knows until it is loaded again, by row (see nodeKey()) and
    /// column: a library that was chosen and not used yet, a code that could not be written or came in small letters
    /// from the browser, a text that differs from the stored one by letter case and outer blanks alone.
    QMap<std::pair<QString, int>, QString> cells;
    /// "An emptied second-level content": its only ration, before another second-level content, takes the last row in
    /// the file along, and with it what the second-level content consists of. How many of a content, by contID.
    QMap<QString, int> emptied;

    /// Identifies a row of the content grid as long as it is not renumbered.
    static QString nodeKey(const QStringList& row) {
        return row[ContentCell::Level] + u'/' +
               (row[ContentCell::Level] == u"2" ? row[ContentCell::ContDeID]
                                                : row[ContentCell::ContID] + u'/' + row[ContentCell::SubNum]);
    }

    /// Hears from `library` when a part of its window is loaded anew.
    void follow(const LibraryDocument& library) {
        QObject::connect(&library, &LibraryDocument::listingChanged, &library, [this] { bills.reset(); });
        QObject::connect(&library, &LibraryDocument::currentBillChanged, &library, [this, &library] {
            detailsLoaded();
            detailsOf = QString::number(library.shownBill().id);
        });
    }
    void detailsLoaded() {
        detailsLocked = contentsEmptied = false;
        cells.clear();
        emptied.clear();
    }
    void everythingLoaded() { *this = {}; }

    /// Changes what a fresh load shows of contents into what the window must show, and takes out of `shown` what the
    /// window alone knows: "the blank ration row", at most one, which is not in the file until it gets a code.
    void applyToContents(Rows& fresh, Rows& shown) const {
        int blanks = 0;
        QMap<QString, int> left = emptied;
        for (qsizetype i = shown.size() - 1; i >= 0; --i) {
            const QStringList row = shown[i];
            const bool inFile = std::any_of(fresh.begin(), fresh.end(), [&](const QStringList& other) {
                return other[ContentCell::Level] == u"1" && other[ContentCell::ContID] == row[ContentCell::ContID] &&
                       other[ContentCell::SubNum] == row[ContentCell::SubNum];
            });
            if (row[ContentCell::Level] == u"2" && row[ContentCell::ContDeID].isEmpty()) {
                ++blanks;
                // It stands below its own second-level content.
                EXPECT_TRUE(i > 0 && shown[i - 1][ContentCell::Level] != u"0" &&
                            shown[i - 1][ContentCell::ContID] == row[ContentCell::ContID] &&
                            shown[i - 1][ContentCell::SubNum] == row[ContentCell::SubNum]);
                shown.removeAt(i);
            } else if (row[ContentCell::Level] == u"1" && !inFile && left.value(row[ContentCell::ContID]) > 0) {
                --left[row[ContentCell::ContID]];
                shown.removeAt(i);
            }
        }
        EXPECT_LE(blanks, 1);
        for (QStringList& row : fresh)
            for (const int column : {ContentCell::Cont, ContentCell::DekName})
                row[column] = cells.value({nodeKey(row), column}, row[column]);
    }
};
