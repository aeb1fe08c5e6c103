#include "tests/support/Snapshot.h"

#include <QPlainTextEdit>

#include "app/controls/KeyedGrid.h"
#include "app/controls/KeyedTree.h"
#include "editor/bills/BillPane.h"
#include "editor/bills/FeaturePane.h"
#include "editor/chapters/ChapterPane.h"
#include "editor/contents/ContentPane.h"
#include "editor/frmEditor.h"

using namespace Qt::StringLiterals;

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

namespace {

/// As it is: toPlainText() would turn no-break spaces into blanks.
QString textIn(const QPlainTextEdit* box) {
    return box->document()->toRawText().replace(QChar::ParagraphSeparator, u'\n');
}

}  // namespace

Snapshot snapshotOf(const frmEditor& editor) {
    const BillPane* bills = editor.billPane();
    return {
        .tree = rowsOf(editor.chapterPane()->tvSYB()),
        .bills = rowsOf(bills->grdBillList()),
        .features = rowsOf(editor.featurePane()->grdSpec()),
        .values = rowsOf(editor.featurePane()->grdSpecEnum()),
        .contents = rowsOf(editor.contentPane()->grdConcent()),
        .rule = textIn(bills->txtRule()),
        .content = textIn(bills->txtContent()),
        .boxesLocked = bills->txtRule()->isReadOnly() && bills->txtContent()->isReadOnly(),
    };
}
