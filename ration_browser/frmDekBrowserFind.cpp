// Finding in the ration browser: what is typed is searched in the whole library that is shown, whose tree and list go
// to the hits. Nothing here writes.

#include <utility>

#include "app/base/Guarded.h"
#include "app/controls/KeyedGrid.h"
#include "app/controls/KeyedTree.h"
#include "ration_browser/FindBar.h"
#include "ration_browser/RationSearch.h"
#include "ration_browser/RationTree.h"
#include "ration_browser/frmDekBrowser.h"
#include "storage/Connection.h"

using namespace Qt::StringLiterals;

RationSearch& frmDekBrowser::rations() {
    if (!m_rations) {
        QList<qint64> chapters;
        for (const KeyedTree::Node* node : m_tvRationContent->nodes())
            if (const qint64 sybID = chapterOfKey(KeyedTree::key(node)); sybID != 0)
                chapters << sybID;
        // What cannot be read is told once, not at every key.
        m_rations = std::make_unique<RationSearch>(chapters);
        guarded({"frmDekBrowser", "rations"}, [this] {
            if (m_library)
                m_rations->read(*m_library);
        });
    }
    return *m_rations;
}

RationPlace frmDekBrowser::currentPlace() {
    return {rations().position(chapterOfKey(KeyedTree::key(m_tvRationContent->selectedNode()))), m_grdDEB->row()};
}

void frmDekBrowser::goToHit(RationPlace (RationSearch::*hit)(const RationPlace&) const) {
    guarded({"frmDekBrowser", "goToHit"}, [&] {
        rations().search(m_find->text());
        if (!rations().hits().empty())
            showPlace((rations().*hit)(currentPlace()));
        showFound();
    });
}

void frmDekBrowser::showPlace(const RationPlace& place) {
    KeyedTree::Node* chapter = m_tvRationContent->node(u'K' + QString::number(rations().chapterAt(place.chapter)));
    if (chapter != m_tvRationContent->selectedNode() || !m_grdDEB->hasRows()) {
        // What is only passed on the way to a hit does not stay open.
        const QStringList opened = std::exchange(m_openedByFind, {});
        for (const KeyedTree::Node* above = chapter->parent(); above; above = above->parent())
            if (const QString key = KeyedTree::key(above); !above->isExpanded() || opened.contains(key))
                m_openedByFind << key;
        tvRationContent_NodeClick(chapter);
        for (const QString& key : opened)
            if (!m_openedByFind.contains(key))
                m_tvRationContent->node(key)->setExpanded(false);
        m_tvRationContent->scrollToItem(chapter);
    }
    m_grdDEB->setRow(place.row);
}

void frmDekBrowser::step(RationPlace (RationSearch::*hit)(const RationPlace&) const) {
    if (m_find->text().isEmpty())
        return m_find->open();
    m_find->show();
    goToHit(hit);
}

void frmDekBrowser::closeFind() {
    m_find->hide();
    m_grdDEB->setFocus();
}

void frmDekBrowser::showFound() {
    if (m_find->isHidden())
        return;
    if (m_find->text().trimmed().isEmpty())
        return m_find->setCount({});
    rations().search(m_find->text());
    const auto count = rations().hits().size();
    const int number = count > 0 ? rations().numberOf(currentPlace()) : 0;
    m_find->setCount(count == 0    ? u"没有找到"_s
                     : number == 0 ? u"共 %1 条"_s.arg(count)
                                   : u"%1 / %2"_s.arg(number).arg(count));
}

void frmDekBrowser::hintAtRationsBelow() {
    const KeyedTree::Node* chapter = m_tvRationContent->selectedNode();
    if (!chapter || m_grdDEB->hasRows())
        return m_grdDEB->setEmptyHint({});
    const KeyedTree::Node* last = chapter;
    while (last->childCount() > 0)
        last = last->child(last->childCount() - 1);
    const int count = rations().countIn(chapterOfKey(KeyedTree::key(chapter)), chapterOfKey(KeyedTree::key(last)));
    m_grdDEB->setEmptyHint(count > 0         ? u"本章无定额，下级目录共有 %1 条"_s.arg(count)
                           : last != chapter ? u"本章和下级目录都没有定额"_s
                                             : u"本章无定额"_s);
}
