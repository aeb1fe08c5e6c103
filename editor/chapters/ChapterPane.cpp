#include "editor/chapters/ChapterPane.h"

#include <QScrollBar>
#include <QToolBar>
#include <QVBoxLayout>

#include "app/base/Guarded.h"
#include "editor/chapters/ChapterTree.h"
#include "editor/common/LibraryDocument.h"

using namespace Qt::StringLiterals;

ChapterPane::ChapterPane(LibraryDocument& library, QWidget* parent)
    : QWidget(parent), m_library(library), m_layout(new QVBoxLayout(this)), m_tvSYB(new KeyedTree(this)) {
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->setSpacing(0);
    m_tvSYB->setObjectName(u"tvSYB"_s);
    m_layout->addWidget(m_tvSYB, 1);
    setFocusProxy(m_tvSYB);
    connect(m_tvSYB, &KeyedTree::nodeClick, this, &ChapterPane::tvSYB_NodeClick);
    connect(m_tvSYB, &KeyedTree::contextMenuWanted, this, &ChapterPane::contextMenuWanted);
    connect(&m_library, &LibraryDocument::chapterChanged, this, &ChapterPane::selectCurrentChapter);
}

void ChapterPane::addToolBar(QToolBar* bar) { m_layout->insertWidget(m_layout->indexOf(m_tvSYB), bar); }

void ChapterPane::CreateTvwSYB() {
    guarded({"frmEditor", "CreateTvwSYB"}, [this] { buildChapterTree(m_library.connection(), m_tvSYB); });
    m_library.setChapter(KeyedTree::tag(m_tvSYB->selectedNode()));
}

QString ChapterPane::showAfresh(const QString& code) {
    QStringList open;
    for (const KeyedTree::Node* node : m_tvSYB->nodes())
        if (node->isExpanded())
            open << KeyedTree::key(node);
    const int scrolledTo = m_tvSYB->verticalScrollBar()->value();
    guarded({"frmEditor", "CreateTvwSYB"}, [this] { buildChapterTree(m_library.connection(), m_tvSYB); });
    for (const QString& key : open)
        if (KeyedTree::Node* node = m_tvSYB->node(key))
            node->setExpanded(true);
    if (code.isEmpty()) {
        m_tvSYB->selectNode(nullptr);
        return {};
    }
    KeyedTree::Node* nearest = nullptr;
    for (QString above = code; !nearest && !above.isEmpty(); above.chop(2))
        nearest = GetTvwNode(m_tvSYB, chapterKey(above));
    m_tvSYB->verticalScrollBar()->setValue(scrolledTo);
    m_tvSYB->selectNode(nearest ? nearest : m_tvSYB->firstNode());
    return KeyedTree::tag(m_tvSYB->selectedNode());
}

void ChapterPane::tvSYB_NodeClick(KeyedTree::Node* node) {
    guarded({"frmEditor", "tvSYB_NodeClick"}, [&] {
        m_tvSYB->selectNode(node);
        m_library.showChapter(KeyedTree::tag(node));
    });
}

void ChapterPane::selectCurrentChapter() {
    if (KeyedTree::tag(m_tvSYB->selectedNode()) != m_library.chapter())
        m_tvSYB->selectNode(GetTvwNode(m_tvSYB, chapterKey(m_library.chapter())));
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
