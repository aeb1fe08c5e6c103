#include "editor/chapters/ChapterPane.h"

#include <QToolBar>
#include <QVBoxLayout>

#include "app/base/Guarded.h"
#include "editor/chapters/ChapterTree.h"

using namespace Qt::StringLiterals;

ChapterPane::ChapterPane(QWidget* parent)
    : QWidget(parent), m_layout(new QVBoxLayout(this)), m_tvSYB(new KeyedTree(this)) {
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(0);
    m_tvSYB->setObjectName(u"tvSYB"_s);
    m_layout->addWidget(m_tvSYB, 1);
    setFocusProxy(m_tvSYB);
    connect(m_tvSYB, &KeyedTree::nodeClick, this, &ChapterPane::tvSYB_NodeClick);
    connect(m_tvSYB, &KeyedTree::contextMenuWanted, this, &ChapterPane::contextMenuWanted);
}

void ChapterPane::addToolBar(QToolBar* bar) { m_layout->insertWidget(m_layout->indexOf(m_tvSYB), bar); }

void ChapterPane::CreateTvwSYB() {
    guarded({"frmEditor", "CreateTvwSYB"}, [this] { buildChapterTree(m_ormConn, m_tvSYB); });
}

void ChapterPane::tvSYB_NodeClick(KeyedTree::Node* node) {
    guarded({"frmEditor", "tvSYB_NodeClick"}, [&] {
        m_tvSYB->selectNode(node);
        if (chapterClicked)
            chapterClicked(KeyedTree::tag(node));
    });
}

void ChapterPane::expandAll() {
    m_tvSYB->setAllExpanded(true);
    if (KeyedTree::Node* selected = m_tvSYB->selectedNode())
        m_tvSYB->scrollToItem(selected);
}

void ChapterPane::collapseAll() {
    m_tvSYB->setAllExpanded(false);
    if (KeyedTree::Node* first = m_tvSYB->firstNode())
        tvSYB_NodeClick(first);
}
