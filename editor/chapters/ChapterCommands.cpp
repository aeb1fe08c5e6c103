#include "app/base/Error.h"
#include "app/base/Guarded.h"
#include "app/base/MessageBox.h"
#include "editor/chapters/ChapterData.h"
#include "editor/chapters/ChapterPane.h"
#include "editor/chapters/ChapterTree.h"
#include "editor/chapters/frmEditContent.h"
#include "editor/common/Codes.h"
#include "editor/common/LibraryDocument.h"

using namespace Qt::StringLiterals;

namespace {

QString nextCode(const KeyedTree::Node* node) {
    const QString code = KeyedTree::tag(node);
    return GetCodePreNext(code, true, static_cast<int>(code.size()));
}

}  // namespace

QString ChapterPane::askName(const QString& caption, const QString& preset) {
    frmEditContent dialog(window());
    dialog.setWindowTitle(caption);
    dialog.setContent(preset);
    dialog.exec();
    return dialog.Content();
}

void ChapterPane::mnuAddContent_Click() {
    guarded({"frmEditor", "mnuAddContent_Click"}, [this] {
        const QString name = askName(u"添加清单目录"_s);
        if (name.isEmpty())
            return;
        KeyedTree::Node* lastSibling = nullptr;
        QString code = u"01"_s;
        if (m_tvSYB->nodeCount() > 0) {
            const KeyedTree::Node* selected = m_tvSYB->selectedNode();
            if (!selected)
                throw Error(91, u"没有选中的目录"_s);
            lastSibling = m_tvSYB->lastSibling(selected);
            code = nextCode(lastSibling);
        }
        if (!AddBillSYB(m_library.connection(), code, name))
            return;
        const QString key = chapterKey(code);
        const QString text = chapterText(code, name);
        tvSYB_NodeClick(lastSibling ? m_tvSYB->addNodeAfter(lastSibling, key, text, code)
                                    : m_tvSYB->addNode(nullptr, key, text, code));
        m_tvSYB->setFocus();
        m_library.did(u"添加目录 "_s + text);
    });
}

void ChapterPane::mnuAddSubContent_Click() {
    guarded({"frmEditor", "mnuAddSubContent_Click"}, [this] {
        KeyedTree::Node* parent = m_tvSYB->selectedNode();
        if (!parent)
            return;
        const QString name = askName(u"添加清单子目录"_s);
        if (name.isEmpty())
            return;
        const int children = parent->childCount();
        const QString code = children == 0 ? KeyedTree::tag(parent) + u"01"_s : nextCode(parent->child(children - 1));
        if (code.isEmpty() || !AddBillSYB(m_library.connection(), code, name))
            return;
        tvSYB_NodeClick(m_tvSYB->addNode(parent, chapterKey(code), chapterText(code, name), code));
        m_tvSYB->setFocus();
        m_library.did(u"添加子目录 "_s + chapterText(code, name));
    });
}

void ChapterPane::mnuModifyContent_Click() {
    guarded({"frmEditor", "mnuModifyContent_Click"}, [this] {
        KeyedTree::Node* selected = m_tvSYB->selectedNode();
        if (!selected)
            return;
        const QString name = askName(u"修改清单目录"_s, chapterName(selected));
        const QString code = KeyedTree::tag(selected);
        if (name.isEmpty() || !ModifyBillSYB(m_library.connection(), code, name))
            return;
        selected->setText(0, chapterText(code, name));
        m_library.did(u"修改目录 "_s + selected->text(0));
    });
}

void ChapterPane::mnuDeleteContent_Click() {
    guarded({"frmEditor", "mnuDeleteContent_Click"}, [this] {
        KeyedTree::Node* selected = m_tvSYB->selectedNode();
        if (!selected)
            return;
        const QString codeAndName = selected->text(0);
        const QString question = u"确实要删除 "_s + codeAndName + u" 吗?"_s;
        if (!askYesNo(question, u"提示"_s, MessageIcon::Question))
            return;
        if (!DeleteBillSYB(m_library.connection(), KeyedTree::tag(selected)))
            return;
        m_tvSYB->removeNode(selected);
        m_library.checkShownBill();
        tvSYB_NodeClick(m_tvSYB->selectedNode());
        m_library.did(u"删除目录 "_s + codeAndName);
    });
}

void ChapterPane::mnuMoveContentUp_Click() {
    guarded({"frmEditor", "mnuMoveContentUp_Click"}, [this] {
        if (const KeyedTree::Node* selected = m_tvSYB->selectedNode())
            swapWith(m_tvSYB->previousSibling(selected));
    });
}

void ChapterPane::mnuMoveContentDown_Click() {
    guarded({"frmEditor", "mnuMoveContentDown_Click"}, [this] {
        if (const KeyedTree::Node* selected = m_tvSYB->selectedNode())
            swapWith(m_tvSYB->nextSibling(selected));
    });
}

void ChapterPane::swapWith(const KeyedTree::Node* sibling) {
    if (!sibling)
        return;
    const QString codeA = KeyedTree::tag(m_tvSYB->selectedNode());
    const QString codeB = KeyedTree::tag(sibling);
    // A code that has overflowed (100 after 99) is longer than its siblings'. The swap replaces a fixed number of
    // characters and would give both wrong codes.
    if (codeA.size() != codeB.size()) {
        Q_EMIT m_library.said(u"“%1”和“%2”的编号长度不同，不能互换位置"_s.arg(codeA, codeB));
        return;
    }

    const QString name = chapterName(m_tvSYB->selectedNode());
    if (!ExchangeSYBNode(m_library.connection(), codeA, codeB))
        return;
    CreateTvwSYB();
    m_library.checkShownBill();
    // A malformed code may have ended the rebuilding before the moved chapter: no node is selected and the list
    // emptied.
    tvSYB_NodeClick(GetTvwNode(m_tvSYB, chapterKey(codeB)));
    m_library.did(u"移动目录 "_s + name);
}
