#include "ration_browser/RationSearch.h"

#include <algorithm>
#include <utility>

#include "storage/Connection.h"

RationSearch::RationSearch(QList<qint64> chapters) : m_chapters(std::move(chapters)) {
    for (int i = 0; i < m_chapters.size(); ++i)
        m_positions.insert(m_chapters[i], i);
}

void RationSearch::read(Connection& library) {
    std::vector<int> rows(static_cast<std::size_t>(m_chapters.size()));
    std::vector<Ration> rations;
    // The condition leaves what `sybID=12` would list for its chapter; a number of any other kind hides a ration.
    Recordset found = library.OpenRecordset(
        "SELECT sybID,substr(DEH,1,2000) AS DEH,substr(MC,1,2000) AS MC FROM DEB "
        "WHERE sybID=+CAST(sybID AS INTEGER);");
    for (; !found.EndOfFile(); found.MoveNext()) {
        const int chapter = position(found.number("sybID"));
        if (chapter < 0)
            continue;
        rations.push_back(
            {{chapter, rows[static_cast<std::size_t>(chapter)]++}, Searchable(found.text("DEH"), found.text("MC"))});
    }
    std::ranges::sort(rations, {}, &Ration::place);
    m_rations = std::move(rations);
}

int RationSearch::countIn(qint64 first, qint64 last) const {
    const auto begin = std::ranges::lower_bound(m_rations, RationPlace{position(first), -1}, {}, &Ration::place);
    const auto end = std::ranges::lower_bound(m_rations, RationPlace{position(last) + 1, -1}, {}, &Ration::place);
    return static_cast<int>(end - begin);
}

void RationSearch::search(const QString& typed) {
    if (typed == m_typed)
        return;
    m_typed = typed;
    m_hits.clear();
    m_sameCode = {};
    const QStringList words = searchWords(typed);
    if (words.isEmpty())
        return;
    for (const Ration& ration : m_rations) {
        if (!containsAll(ration.text, words))
            continue;
        m_hits.push_back(ration.place);
        if (m_sameCode == RationPlace() && words.size() == 1 && ration.text.code() == words.first())
            m_sameCode = ration.place;
    }
}

RationPlace RationSearch::firstHit(const RationPlace& from) const {
    if (m_sameCode != RationPlace())
        return m_sameCode;
    const auto found = std::ranges::lower_bound(m_hits, from);
    return found == m_hits.end() ? m_hits.front() : *found;
}

RationPlace RationSearch::nextHit(const RationPlace& from) const {
    const auto found = std::ranges::upper_bound(m_hits, from);
    return found == m_hits.end() ? m_hits.front() : *found;
}

RationPlace RationSearch::previousHit(const RationPlace& from) const {
    const auto found = std::ranges::lower_bound(m_hits, from);
    return found == m_hits.begin() ? m_hits.back() : *std::prev(found);
}

int RationSearch::numberOf(const RationPlace& place) const {
    const auto found = std::ranges::lower_bound(m_hits, place);
    return found == m_hits.end() || *found != place ? 0 : static_cast<int>(found - m_hits.begin()) + 1;
}
