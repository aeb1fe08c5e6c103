#include <QLineEdit>
#include <QMenu>
#include <QToolBar>

#include "app/base/Definitions.h"
#include "app/base/Paths.h"
#include "app/controls/KeyedGrid.h"
#include "editor/bills/BillPane.h"
#include "editor/bills/FeaturePane.h"
#include "editor/chapters/ChapterPane.h"
#include "editor/contents/ContentPane.h"
#include "editor/frmEditor.h"

namespace {

/// Lets `menu` pop up wherever `source` wants its context menu.
template <typename Source>
void popUp(QMenu* menu, Source* source) {
    QObject::connect(source, &Source::contextMenuWanted, menu,
                     [menu](const QPoint& position) { menu->popup(position); });
}

}  // namespace

void frmEditor::CreateToolbarsContent() {
    QToolBar* bar = CommandBars1->createToolBar(QStringLiteral("Content"), {100, 101, 102, 103});
    m_chapters->addToolBar(bar);
}

void frmEditor::CreateToolbarsBill() {
    QToolBar* bar = CommandBars2->createToolBar(QStringLiteral("Bill"), {});
    m_searchText = CommandBars2->addTextEntry(bar, 203, QStringLiteral("查找："), 202);
    for (const int id : {202, 200, 201, 104, 105})
        AddButton(bar, CommandBars2->action(id));
    m_bills->addToolBar(bar);
}

void frmEditor::CreateContextMenus() {
    popUp(CommandBars1->createMenu(QStringLiteral("Context Menu"),
                                   {{100}, {101}, {103}, {102}, {104}, {105}, {108}, {109}}),
          m_chapters);
    popUp(
        CommandBars2->createMenu(QStringLiteral("Bill Menu"),
                                 {{200}, {201}, {104, QStringLiteral("上移清单")}, {105, QStringLiteral("下移清单")}}),
        m_bills->grdBillList());
    popUp(CommandBars2->createMenu(QStringLiteral("Bill Menu"), {{400}, {401}, {402}, {403, QStringLiteral("删除")}}),
          m_contents->grdConcent());
    popUp(CommandBars3->createMenu(QStringLiteral("BillSpec Menu"), {{300}, {301}}), m_features->grdSpec());
    popUp(CommandBars4->createMenu(QStringLiteral("SpecEnum Menu"), {{300}, {301}}), m_features->grdSpecEnum());
}

void frmEditor::LoadAllToolbarsIcons() {
    const QString strip = joinPath(appPath, QStringLiteral("Res/Icons/ToolBar.bmp"));
    const std::vector<int> ids{100, 101, 103, 102, 104, 105, 106, 107, 200, 201, 202, 300, 301, 400, 401};
    CommandBars1->loadIcons(strip, ids);
    CommandBars2->loadIcons(strip, ids);
}
