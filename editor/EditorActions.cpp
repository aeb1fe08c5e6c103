#include "app/base/Guarded.h"
#include "app/base/Text.h"
#include "app/controls/KeyedGrid.h"
#include "app/controls/KeyedTree.h"
#include "editor/bills/BillPane.h"
#include "editor/bills/FeaturePane.h"
#include "editor/chapters/ChapterPane.h"
#include "editor/contents/ContentPane.h"
#include "editor/frmEditor.h"

namespace {

/// A row of a command table whose description is its caption.
CommandAction command(int id, const QString& caption, const QString& tooltip, const QString& category,
                      std::function<void()> execute = {}, std::function<bool()> enabled = {}) {
    return {id, caption, tooltip, caption, category, std::move(execute), std::move(enabled)};
}

/// Lets each command and each enabled rule of a host answer for its errors under the host's event names.
void addGuarded(CommandBars* host, std::vector<CommandAction> actions, const char* execute, const char* update) {
    for (CommandAction& action : actions) {
        if (action.execute)
            action.execute = [run = std::move(action.execute), execute] { guarded({"frmEditor", execute}, run); };
        if (action.enabled)
            action.enabled = [rule = std::move(action.enabled), update] {
                return guarded({"frmEditor", update}, rule);
            };
    }
    host->addActions(std::move(actions));
}

bool listsQueryResult(const KeyedGrid* bills) { return numericValue(bills->tag()) == 1; }
bool listsChapter(const KeyedGrid* bills) { return numericValue(bills->tag()) == 0; }

}  // namespace

void frmEditor::CreateActions() {
    addGuarded(CommandBars1, chapterActions(), "CommandBars1_Execute", "CommandBars1_Update");
    addGuarded(CommandBars2, billActions(), "CommandBars2_Execute", "CommandBars2_Update");
    addGuarded(CommandBars3, featureActions(), "CommandBars3_Execute", "CommandBars3_Update");
    addGuarded(CommandBars4, featureValueActions(), "CommandBars4_Execute", "CommandBars4_Update");
    for (CommandBars* host : {CommandBars1, CommandBars2, CommandBars3, CommandBars4})
        host->beforeExecute = [this] { return commitPending(); };
}

std::vector<CommandAction> frmEditor::chapterActions() {
    ChapterPane* pane = m_chapters;
    KeyedTree* tree = pane->tvSYB();
    const KeyedGrid* bills = m_bills->grdBillList();
    const QString category = QStringLiteral("Content");

    const auto selected = [tree] { return tree->selectedNode() != nullptr; };
    const auto mayHaveChildren = [tree] {
        const KeyedTree::Node* node = tree->selectedNode();
        return node && KeyedTree::tag(node).size() < 6;
    };
    const auto hasPrevious = [tree] {
        const KeyedTree::Node* node = tree->selectedNode();
        return node && tree->previousSibling(node);
    };
    const auto hasNext = [tree] {
        const KeyedTree::Node* node = tree->selectedNode();
        return node && tree->nextSibling(node);
    };

    return {
        command(
            100, QStringLiteral("添加目录"), QStringLiteral("ContentNew"), category,
            [pane] { pane->mnuAddContent_Click(); }, [bills] { return !listsQueryResult(bills); }),
        command(
            101, QStringLiteral("添加子目录"), QStringLiteral("ContentAddSub"), category,
            [pane] { pane->mnuAddSubContent_Click(); }, mayHaveChildren),
        command(
            103, QStringLiteral("删除目录"), QStringLiteral("ContentDel"), category,
            [pane] { pane->mnuDeleteContent_Click(); }, selected),
        command(
            102, QStringLiteral("修改目录"), QStringLiteral("ContentModify"), category,
            [pane] { pane->mnuModifyContent_Click(); }, selected),
        command(
            104, QStringLiteral("上移目录"), QStringLiteral("ContentUp"), category,
            [pane] { pane->mnuMoveContentUp_Click(); }, hasPrevious),
        command(
            105, QStringLiteral("下移目录"), QStringLiteral("ContentDown"), category,
            [pane] { pane->mnuMoveContentDown_Click(); }, hasNext),
        // The moves to another level have a place in the table but nothing to do.
        command(106, QStringLiteral("左移目录"), QStringLiteral("ContentLeft"), category),
        {107, QStringLiteral("右移目录"), QStringLiteral("ContentRight"), QStringLiteral("最近打开清单库"), category},
        command(108, QStringLiteral("展开所有节点"), QStringLiteral("展开所有节点"), category,
                [pane] { pane->expandAll(); }),
        command(109, QStringLiteral("收起所有节点"), QStringLiteral("收起所有节点"), category,
                [pane] { pane->collapseAll(); }),
    };
}

std::vector<CommandAction> frmEditor::billActions() {
    BillPane* pane = m_bills;
    ContentPane* contents = m_contents;
    const KeyedTree* tree = m_chapters->tvSYB();
    const KeyedGrid* bills = pane->grdBillList();
    const KeyedGrid* grid = contents->grdConcent();
    const QString bill = QStringLiteral("Bill");
    const QString feature = QStringLiteral("Feature");
    const QString project = QStringLiteral("Project");

    const auto mayMoveUp = [bills] { return listsChapter(bills) && bills->hasRows() && bills->row() != 0; };
    const auto mayMoveDown = [bills] {
        return listsChapter(bills) && bills->hasRows() && bills->row() != bills->rowCount() - 1;
    };
    const auto mayAddBill = [bills, tree] {
        const KeyedTree::Node* node = tree->selectedNode();
        return listsChapter(bills) && node && KeyedTree::tag(node).size() == 6;
    };
    const auto unlockedLevel = [contents, grid](auto&& rule) {
        return [contents, grid, rule] {
            return !contents->isLocked() && grid->row() >= 0 && rule(grid->level(grid->row()));
        };
    };

    return {
        command(
            200, QStringLiteral("添加清单"), QStringLiteral("BillNew"), bill, [pane] { pane->mnuAddBill_Click(); },
            mayAddBill),
        command(
            201, QStringLiteral("删除清单"), QStringLiteral("BillDel"), bill, [pane] { pane->mnuDeleteBill_Click(); },
            [bills] { return bills->hasRows(); }),
        command(202, QStringLiteral("查找清单"), QStringLiteral("BillQuery"), bill,
                [pane] { pane->mnuQueryBill_Click(); }),
        command(
            104, QStringLiteral("上移"), QStringLiteral("ContentUp"), bill, [pane] { pane->MoveBillRow(true); },
            mayMoveUp),
        command(
            105, QStringLiteral("下移"), QStringLiteral("ContentDown"), bill, [pane] { pane->MoveBillRow(false); },
            mayMoveDown),
        command(300, QStringLiteral("添加项目特征"), QStringLiteral("FeatureAdd"), feature),
        command(301, QStringLiteral("删除项目特征"), QStringLiteral("FeatureDel"), feature),
        command(
            400, QStringLiteral("添加工程内容"), QStringLiteral("ContentDown"), project,
            [contents] { contents->munAddBillCont_Click(); }, [bills] { return bills->row() >= 0; }),
        command(
            401, QStringLiteral("添加工程细节"), QStringLiteral("ContentLeft"), project,
            [contents] { contents->munAddBillSubCont_Click(); }, unlockedLevel([](int level) { return level < 2; })),
        command(
            402, QStringLiteral("添加定额"), QStringLiteral("ContentRight"), project,
            [contents] { contents->munAddBillContDe_Click(); }, unlockedLevel([](int level) { return level != 0; })),
        command(
            403, QStringLiteral("删除工作内容"), QStringLiteral("ContentRight"), project,
            [this] { deleteContentRow(); }, unlockedLevel([](int) { return true; })),
    };
}

std::vector<CommandAction> frmEditor::featureActions() {
    FeaturePane* pane = m_features;
    const KeyedGrid* bills = m_bills->grdBillList();
    const KeyedGrid* features = pane->grdSpec();
    const QString category = QStringLiteral("Spec");
    return {
        command(
            300, QStringLiteral("添加项目特征"), QString(), category, [pane] { pane->mnuAddFeature_Click(); },
            [bills] { return bills->row() >= 0; }),
        command(
            301, QStringLiteral("删除项目特征"), QString(), category, [pane] { pane->mnuDeleteFeature_Click(); },
            [pane, features] { return !pane->isLocked() && features->row() >= 0; }),
    };
}

std::vector<CommandAction> frmEditor::featureValueActions() {
    FeaturePane* pane = m_features;
    const KeyedGrid* features = pane->grdSpec();
    const KeyedGrid* values = pane->grdSpecEnum();
    const QString category = QStringLiteral("SpecEnum");
    constexpr qint64 enumeration = 2;
    return {
        command(
            300, QStringLiteral("添加特征值"), QString(), category, [pane] { pane->mnuAddFeatureVal_Click(); },
            [pane, features] {
                return !pane->isLocked() && features->hasRows() &&
                       features->value(features->row(), QStringLiteral("type")) == enumeration;
            }),
        command(
            301, QStringLiteral("删除特征值"), QString(), category, [pane] { pane->mnuDeleteFeatureVal_Click(); },
            [pane, values] { return !pane->isLocked() && values->row() >= 0; }),
    };
}
