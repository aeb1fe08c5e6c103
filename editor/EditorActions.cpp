#include <QLineEdit>

#include "app/base/Guarded.h"
#include "app/controls/KeyedGrid.h"
#include "app/controls/KeyedTree.h"
#include "editor/bills/BillPane.h"
#include "editor/bills/FeaturePane.h"
#include "editor/chapters/ChapterPane.h"
#include "editor/common/LibraryDocument.h"
#include "editor/contents/ContentPane.h"
#include "editor/contents/ContentRows.h"
#include "editor/frmEditor.h"

using namespace Qt::StringLiterals;

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

}  // namespace

void frmEditor::CreateActions() {
    addGuarded(CommandBars1, chapterActions(), "CommandBars1_Execute", "CommandBars1_Update");
    addGuarded(CommandBars2, billActions(), "CommandBars2_Execute", "CommandBars2_Update");
    addGuarded(CommandBars3, featureActions(), "CommandBars3_Execute", "CommandBars3_Update");
    addGuarded(CommandBars4, featureValueActions(), "CommandBars4_Execute", "CommandBars4_Update");
    for (CommandBars* host : {CommandBars1, CommandBars2, CommandBars3, CommandBars4})
        host->beforeExecute = [this] { return mayRunCommand(); };
}

std::vector<CommandAction> frmEditor::chapterActions() {
    ChapterPane* pane = m_chapters;
    KeyedTree* tree = pane->tvSYB();
    const LibraryDocument* library = m_library;
    const QString category = u"Content"_s;

    const auto selected = [tree] { return tree->selectedNode() != nullptr; };
    const auto mayHaveChildren = [tree] {
        const KeyedTree::Node* node = tree->selectedNode();
        return node && KeyedTree::tag(node).size() < deepestChapterLength;
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
            100, u"添加目录"_s, u"ContentNew"_s, category, [pane] { pane->mnuAddContent_Click(); },
            [library] { return !library->listsQuery(); }),
        command(
            101, u"添加子目录"_s, u"ContentAddSub"_s, category, [pane] { pane->mnuAddSubContent_Click(); },
            mayHaveChildren),
        command(
            103, u"删除目录"_s, u"ContentDel"_s, category, [pane] { pane->mnuDeleteContent_Click(); }, selected),
        command(
            102, u"修改目录"_s, u"ContentModify"_s, category, [pane] { pane->mnuModifyContent_Click(); }, selected),
        command(
            104, u"上移目录"_s, u"ContentUp"_s, category, [pane] { pane->mnuMoveContentUp_Click(); }, hasPrevious),
        command(
            105, u"下移目录"_s, u"ContentDown"_s, category, [pane] { pane->mnuMoveContentDown_Click(); }, hasNext),
        // Moving a chapter to another level has an id, but no handler.
        command(106, u"左移目录"_s, u"ContentLeft"_s, category),
        {107, u"右移目录"_s, u"ContentRight"_s, u"最近打开清单库"_s, category},
        command(108, u"展开所有节点"_s, u"展开所有节点"_s, category, [pane] { pane->expandAll(); }),
        command(109, u"收起所有节点"_s, u"收起所有节点"_s, category, [pane] { pane->collapseAll(); }),
    };
}

std::vector<CommandAction> frmEditor::billActions() {
    BillPane* pane = m_bills;
    ContentPane* contents = m_contents;
    const LibraryDocument* library = m_library;
    const KeyedGrid* bills = pane->grdBillList();
    const KeyedGrid* grid = contents->grdConcent();
    const QString bill = u"Bill"_s;
    const QString feature = u"Feature"_s;
    const QString project = u"Project"_s;

    const auto mayMoveUp = [library, bills] { return !library->listsQuery() && bills->hasRows() && bills->row() != 0; };
    const auto mayMoveDown = [library, bills] {
        return !library->listsQuery() && bills->hasRows() && bills->row() != bills->rowCount() - 1;
    };
    const auto mayAddBill = [library] { return !library->listsQuery() && holdsBills(library->chapter()); };
    const auto billIsCurrent = [library] { return library->currentBill() != nullptr; };
    const auto onLevel = [library, grid](auto&& rule) {
        return [library, grid, rule] {
            return !library->isShownBillGone() && grid->row() >= 0 && rule(grid->level(grid->row()));
        };
    };

    return {
        command(
            200, u"添加清单"_s, u"BillNew"_s, bill, [pane] { pane->mnuAddBill_Click(); }, mayAddBill),
        command(
            201, u"删除清单"_s, u"BillDel"_s, bill, [pane] { pane->mnuDeleteBill_Click(); },
            [bills] { return bills->hasRows(); }),
        command(202, u"查找清单"_s, u"BillQuery"_s, bill,
                [this] { m_bills->mnuQueryBill_Click(m_searchText->text()); }),
        command(
            104, u"上移"_s, u"ContentUp"_s, bill, [pane] { pane->MoveBillRow(true); }, mayMoveUp),
        command(
            105, u"下移"_s, u"ContentDown"_s, bill, [pane] { pane->MoveBillRow(false); }, mayMoveDown),
        command(300, u"添加项目特征"_s, u"FeatureAdd"_s, feature),
        command(301, u"删除项目特征"_s, u"FeatureDel"_s, feature),
        command(
            400, u"添加工程内容"_s, u"ContentDown"_s, project, [contents] { contents->munAddBillCont_Click(); },
            billIsCurrent),
        command(
            401, u"添加工程细节"_s, u"ContentLeft"_s, project, [contents] { contents->munAddBillSubCont_Click(); },
            onLevel([](int level) { return level < ContentRows::rationLevel; })),
        command(
            402, u"添加定额"_s, u"ContentRight"_s, project, [contents] { contents->munAddBillContDe_Click(); },
            onLevel([](int level) { return level != ContentRows::contentLevel; })),
        command(
            403, u"删除工作内容"_s, u"ContentRight"_s, project, [contents] { contents->deleteCurrentRow(); },
            onLevel([](int) { return true; })),
    };
}

std::vector<CommandAction> frmEditor::featureActions() {
    FeaturePane* pane = m_features;
    const LibraryDocument* library = m_library;
    const KeyedGrid* features = pane->grdSpec();
    const QString category = u"Spec"_s;
    return {
        command(
            300, u"添加项目特征"_s, QString(), category, [pane] { pane->mnuAddFeature_Click(); },
            [library] { return library->currentBill() != nullptr; }),
        command(
            301, u"删除项目特征"_s, QString(), category, [pane] { pane->mnuDeleteFeature_Click(); },
            [library, features] { return !library->isShownBillGone() && features->row() >= 0; }),
    };
}

bool frmEditor::isEnumeration(int feature) const {
    constexpr qint64 enumeration = 2;
    return m_features->grdSpec()->value(feature, u"type"_s) == enumeration;
}

std::vector<CommandAction> frmEditor::featureValueActions() {
    FeaturePane* pane = m_features;
    const LibraryDocument* library = m_library;
    const KeyedGrid* features = pane->grdSpec();
    const KeyedGrid* values = pane->grdSpecEnum();
    const QString category = u"SpecEnum"_s;
    return {
        command(
            300, u"添加特征值"_s, QString(), category, [pane] { pane->mnuAddFeatureVal_Click(); },
            [this, library, features] { return !library->isShownBillGone() && isEnumeration(features->row()); }),
        command(
            301, u"删除特征值"_s, QString(), category, [pane] { pane->mnuDeleteFeatureVal_Click(); },
            [library, values] { return !library->isShownBillGone() && values->row() >= 0; }),
    };
}
