#include "editor/chapters/ChapterTree.h"

#include "storage/LibraryConnection.h"

namespace {

/// Adds the chapters that are shown; false when a code of another length ended the reading.
bool addChapters(Connection& connection, KeyedTree* tree) {
    Recordset rows =
        connection.OpenRecordset("SELECT * FROM tblSYB WHERE IFNULL(Code,'')<>'' ORDER BY length(code),code;");
    for (; !rows.EndOfFile(); rows.MoveNext()) {
        const QString code = rows.text("code");
        if (code.size() != 2 && code.size() != 4 && code.size() != 6)
            return false;
        KeyedTree::Node* parent = nullptr;
        if (code.size() > 2) {
            parent = GetTvwNode(tree, chapterKey(code.chopped(2)));
            if (!parent)
                continue;
        }
        tree->addNode(parent, chapterKey(code), chapterText(code, rows.text("name")), code);
    }
    return true;
}

}  // namespace

QString chapterKey(const QString& code) { return u'K' + code; }

QString chapterText(const QString& code, const QString& name) { return code + u' ' + name; }

QString chapterName(const KeyedTree::Node* node) { return node->text(0).mid(KeyedTree::tag(node).size() + 1); }

KeyedTree::Node* GetTvwNode(const KeyedTree* tree, const QString& key) { return tree->node(key); }

void buildChapterTree(Connection* ormConn, KeyedTree* tree) {
    tree->clearNodes();
    if (!addChapters(requireConnection(ormConn), tree))
        return;
    // The first level is open; the others come closed.
    for (int i = 0; i < tree->topLevelItemCount(); ++i)
        tree->topLevelItem(i)->setExpanded(true);
    if (tree->firstNode())
        tree->selectNode(tree->firstNode());
}
