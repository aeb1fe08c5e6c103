#include "tests/walk/Prescribed.h"

#include <gtest/gtest.h>

#include "editor/common/LibraryDocument.h"

using namespace Qt::StringLiterals;

using namespace ContentCell;

namespace {

bool isBlankRation(const QStringList& row) { return row[Level] == u"2"_s && row[ContDeID].isEmpty(); }

bool sameSubContent(const QStringList& a, const QStringList& b) {
    return a[ContID] == b[ContID] && a[SubNum] == b[SubNum];
}

/// Takes the blank ration row out, which must stand below a second-level content.
void takeBlankRation(Rows& shown) {
    int blanks = 0;
    for (qsizetype i = shown.size() - 1; i >= 0; --i) {
        if (!isBlankRation(shown[i]))
            continue;
        ++blanks;
        ASSERT_GT(i, 0);
        EXPECT_NE(shown[i - 1][Level], u"0"_s);
        EXPECT_TRUE(sameSubContent(shown[i - 1], shown[i]));
        shown.removeAt(i);
    }
    EXPECT_LE(blanks, 1);
}

/// Takes second-level contents out that a fresh load does not have, no more of each content than `emptied` says.
void takeEmptied(Rows& shown, const Rows& fresh, QMap<QString, int> emptied) {
    for (qsizetype i = shown.size() - 1; i >= 0; --i) {
        const QStringList& row = shown[i];
        const auto inFile = [&] {
            for (const QStringList& other : fresh)
                if (other[Level] == u"1"_s && sameSubContent(other, row))
                    return true;
            return false;
        };
        if (row[Level] == u"1"_s && emptied.value(row[ContID]) > 0 && !inFile()) {
            --emptied[row[ContID]];
            shown.removeAt(i);
        }
    }
}

}  // namespace

QString Prescribed::nodeKey(const QStringList& row) {
    if (row[Level] == u"0"_s)
        return u'c' + row[ContID];
    if (row[Level] == u"1"_s)
        return u's' + row[ContID] + u'/' + row[SubNum];
    return u'r' + row[ContDeID];
}

void Prescribed::follow(const LibraryDocument& library) {
    QObject::connect(&library, &LibraryDocument::listingChanged, &library, [this] { listLoaded(); });
    QObject::connect(&library, &LibraryDocument::currentBillChanged, &library,
                     [this, &library] { detailsLoaded(QString::number(library.shownBill().id)); });
}

void Prescribed::detailsLoaded(const QString& bill) {
    detailsOf = bill;
    detailsLocked = false;
    contentsEmptied = false;
    libraryChosen.clear();
    codeKept.clear();
    codeAsItCame.clear();
    onlyCaseChanged.clear();
    emptied.clear();
}

void Prescribed::everythingLoaded() {
    treeLoaded();
    listLoaded();
    detailsLoaded(u"0"_s);
}

void Prescribed::applyToContents(Rows& fresh, Rows& shown) const {
    takeBlankRation(shown);
    takeEmptied(shown, fresh, emptied);
    for (QStringList& row : fresh) {
        const QString id = row[ContDeID];
        if (!id.isEmpty()) {
            row[DekName] = libraryChosen.value(id, row[DekName]);
            if (const auto came = codeAsItCame.constFind(id); came != codeAsItCame.constEnd()) {
                EXPECT_EQ(came->toUpper(), row[Cont].toUpper());
                row[Cont] = *came;
            }
            row[Cont] = codeKept.value(id, row[Cont]);
        }
        if (const auto typed = onlyCaseChanged.constFind(nodeKey(row)); typed != onlyCaseChanged.constEnd())
            row[Cont] = *typed;
    }
}
