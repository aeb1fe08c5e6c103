// Which row the ration browser serves, where it stands beside it, and where its user was reading.

#include <QGuiApplication>
#include <QScreen>

#include "app/controls/KeyedGrid.h"
#include "app/controls/KeyedTree.h"
#include "ration_browser/BrowserPlacement.h"
#include "ration_browser/ElidedLine.h"
#include "ration_browser/RationReceiver.h"
#include "ration_browser/frmDekBrowser.h"
#include "storage/Connection.h"

using namespace Qt::StringLiterals;

void frmDekBrowser::showReceiver() {
    if (isVisible())
        m_lblReceiver->setLine(m_editor ? m_editor->receivingRow() : u"定额放不进去：先在清单库的定额行点 … 按钮"_s);
}

bool frmDekBrowser::isPlacedByUser() const { return m_placedByUser || (m_wasShown && geometry() != m_placedHere); }

void frmDekBrowser::placeBesideReceiver() {
    const QRect row = m_editor && !isPlacedByUser() ? m_editor->receivingRect() : QRect();
    const QScreen* screen = row.isNull() ? nullptr : QGuiApplication::screenAt(row.center());
    if (!screen)
        return;
    m_placedHere = besideRow(row, initialSize, minimumSize(), screen->availableGeometry());
    if (!m_placedHere.isNull())
        setGeometry(m_placedHere);
}

void frmDekBrowser::rememberPlace() {
    Place& place = m_places[m_shownLibrary];
    place = {{}, KeyedTree::key(m_tvRationContent->selectedNode()), m_grdDEB->text(m_grdDEB->row(), u"Id"_s)};
    for (const KeyedTree::Node* node : m_tvRationContent->nodes())
        if (node->childCount() > 0 && node->isExpanded())
            place.openNodes << KeyedTree::key(node);
}

void frmDekBrowser::returnToPlace() {
    const auto left = m_places.constFind(m_shownLibrary);
    if (!m_library || left == m_places.constEnd())
        return;
    m_tvRationContent->setAllExpanded(false);
    for (const QString& key : left->openNodes)
        if (KeyedTree::Node* node = m_tvRationContent->node(key))
            node->setExpanded(true);
    if (KeyedTree::Node* chapter = m_tvRationContent->node(left->chapter))
        tvRationContent_NodeClick(chapter);
    for (int row = 0; row < m_grdDEB->rowCount(); ++row)
        if (m_grdDEB->text(row, u"Id"_s) == left->ration)
            m_grdDEB->setRow(row);
}
