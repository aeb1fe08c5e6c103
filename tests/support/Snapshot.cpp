#include "tests/support/Snapshot.h"

#include "app/controls/KeyedGrid.h"
#include "app/controls/KeyedTree.h"
#include "editor/bills/BillPane.h"
#include "editor/bills/FeaturePane.h"
#include "editor/chapters/ChapterPane.h"
#include "editor/contents/ContentPane.h"
#include "editor/frmEditor.h"

std::string textOf(const Rows& rows) {
    QStringList lines;
    for (const QStringList& row : rows)
        lines << row.join(u'|').replace(u'\n', u"\\n"_s);
    return lines.join(u'\n').toStdString();
}

Rows rowsOf(const KeyedGrid* grid) {
    Rows rows;
    const bool outline = grid->column(u"contType"_s) >= 0;
    for (int row = 0; row < grid->rowCount(); ++row) {
        QStringList cells;
        if (outline)
            cells << QString::number(grid->level(row));
        for (int column = 0; column < grid->model()->columnCount(); ++column)
            if (!grid->key(column).isEmpty())
                cells << grid->text(row, grid->key(column));
        rows << cells;
    }
    return rows;
}

Rows rowsOf(const KeyedTree* tree) {
    Rows rows;
    for (const KeyedTree::Node* node : tree->nodes()) {
        int depth = 0;
        for (const KeyedTree::Node* above = node->parent(); above; above = above->parent())
            ++depth;
        rows << QStringList{QString::number(depth), node->text(0), KeyedTree::tag(node)};
    }
    return rows;
}

Snapshot snapshotOf(const frmEditor& editor) {
    // As it is: toPlainText() would turn no-break spaces into blanks.
    const auto textIn = [](const QPlainTextEdit* box) {
        return box->document()->toRawText().replace(QChar::ParagraphSeparator, u'\n');
    };
    const BillPane* bills = editor.billPane();
    const FeaturePane* features = editor.featurePane();
    const KeyedGrid* contents = editor.contentPane()->grdConcent();
    const KeyedTree* tree = editor.chapterPane()->tvSYB();
    QList<bool> open;
    for (const KeyedTree::Node* node : tree->nodes())
        if (node->childCount() > 0)
            open << node->isExpanded();
    return {
        .tree = rowsOf(tree),
        .open = open,
        .node = static_cast<int>(tree->nodes().indexOf(tree->selectedNode())),
        .chapter = KeyedTree::tag(tree->selectedNode()),
        .listsQuery = bills->grdBillList()->tag() == u"1"_s,
        .bills = rowsOf(bills->grdBillList()),
        .features = rowsOf(features->grdSpec()),
        .values = rowsOf(features->grdSpecEnum()),
        .contents = rowsOf(contents),
        .bill = bills->grdBillList()->row(),
        .feature = features->grdSpec()->row(),
        .value = features->grdSpecEnum()->row(),
        .contentRow = contents->row(),
        .profession = u"%1"_s.arg(editor.contentPane()->cboProfession()->currentData().toInt(), 2, 10, QChar(u'0')),
        .rule = textIn(bills->txtRule()),
        .content = textIn(bills->txtContent()),
        .boxesLocked = bills->txtRule()->isReadOnly() && bills->txtContent()->isReadOnly(),
    };
}

std::string textOf(const Snapshot& shown) {
    std::string text = shown.rule.toStdString() + "\n--\n" + shown.content.toStdString();
    for (const Rows* rows : {&shown.tree, &shown.bills, &shown.features, &shown.values, &shown.contents})
        text += "\n--\n" + textOf(*rows);
    return text;
}
