#pragma once

#include <QString>

#include "app/controls/KeyedTree.h"

class Connection;

/// How chapters are shown in a tree: the node of the chapter with code c has the key "K" + c, the tag c and the text
/// c, a blank and the name.

QString chapterKey(const QString& code);
QString chapterText(const QString& code, const QString& name);

/// The name in a node's text: what follows the code and its blank.
QString chapterName(const KeyedTree::Node* node);

/// The node with that key, or null.
KeyedTree::Node* GetTvwNode(const KeyedTree* tree, const QString& key);

/// Rebuilds the tree from the library: level 1 open, the rest closed, the first node selected.
///
/// A chapter's parent is the one whose code is its own without the last two characters; a chapter without parent is
/// left out. The first code whose length is not 2, 4 or 6 ends the build, and then nothing is opened or selected.
/// Throws Error; the nodes added before that stay.
void buildChapterTree(Connection* ormConn, KeyedTree* tree);
