#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <compare>
#include <vector>

#include "ration_browser/SearchText.h"

class Connection;

/// Where the browser shows a ration: the position of its chapter among all, from top to bottom, and the row in the list
/// of that chapter.
struct RationPlace {
    int chapter = -1;
    int row = -1;
    auto operator<=>(const RationPlace&) const = default;
};

/// The rations of one library in the order of their places, and those among them that were last searched for.
class RationSearch {
public:
    /// Of a library whose tree shows the chapters with the ids `chapters`, in that order. No rations yet.
    explicit RationSearch(QList<qint64> chapters);

    /// Reads the rations of all these chapters, once. Throws Error, and has none then, when they cannot be read.
    void read(Connection& library);

    /// How many rations lie in the chapters from `first` to `last`, both ids.
    int countIn(qint64 first, qint64 last) const;

    /// Searches for the rations with each word of `typed` in their code or name. Searches not again for the same.
    void search(const QString& typed);
    /// The places found, in order.
    const std::vector<RationPlace>& hits() const { return m_hits; }

    /// Where to go for what was just typed at `from`: the first ration whose code it is, else the first hit from there
    /// on. This and what follows goes round, and needs a hit.
    RationPlace firstHit(const RationPlace& from) const;
    RationPlace nextHit(const RationPlace& from) const;
    RationPlace previousHit(const RationPlace& from) const;
    /// The number of the hit at `place`, from 1; 0 when there is none.
    int numberOf(const RationPlace& place) const;

    /// The position of a chapter, -1 for one that is not shown.
    int position(qint64 chapter) const { return m_positions.value(chapter, -1); }
    qint64 chapterAt(int position) const { return m_chapters.at(position); }

private:
    struct Ration {
        RationPlace place;
        Searchable text;
    };

    QList<qint64> m_chapters;
    QHash<qint64, int> m_positions;
    std::vector<Ration> m_rations;
    QString m_typed;
    std::vector<RationPlace> m_hits;
    RationPlace m_sameCode;
};
