#include <QLineEdit>
#include <QMenu>
#include <QShortcut>

#include <QToolBar>

#include "app/base/Paths.h"
#include "app/controls/KeyedGrid.h"
#include "editor/bills/BillPane.h"
#include "editor/bills/FeaturePane.h"
#include "editor/chapters/ChapterPane.h"
#include "editor/common/LibraryDocument.h"

#include "editor/contents/ContentPane.h"
#include "editor/frmEditor.h"

using namespace Qt::StringLiterals;

namespace {

/// Lets `menu` pop up wherever `source` wants its context menu.
template <typename Source>
void popUp(QMenu* menu, Source* source) {
    QObject::connect(source, &Source::contextMenuWanted, menu,
                     [menu](const QPoint& position) { menu->popup(position); });
}

}  // namespace

void frmEditor::CreateToolbarsContent() {
    QToolBar* bar = CommandBars1->createToolBar(u"Content"_s, {100, 101, 102, 103});
    m_chapters->addToolBar(bar);
    connect(m_chapters->tvSYB(), &KeyedTree::renameWanted, this, [this] { CommandBars1->execute(102); });
    connect(m_chapters->tvSYB(), &KeyedTree::deleteWanted, this, [this] { CommandBars1->execute(103); });
}

void frmEditor::CreateToolbarsBill() {
    QToolBar* bar = CommandBars2->createToolBar(u"Bill"_s, {});
    m_searchText = CommandBars2->addTextEntry(bar, 203, u"查找："_s, 202);
    for (const int id : {202, 200, 201, 104, 105})
        AddButton(bar, CommandBars2->action(id));
    m_bills->addToolBar(bar);
    // The way out of a search: an empty box, or Esc in it.
    connect(m_searchText, &QLineEdit::textChanged, m_library, [this](const QString& text) {
        if (text.isEmpty())
            m_library->leaveQuery();
    });
    connect(new QShortcut(Qt::Key_Escape, m_searchText, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated,
            m_library, [this] {
                m_searchText->clear();
                m_library->leaveQuery();
            });
    connect(new QShortcut(QKeySequence::Find, this, nullptr, nullptr, Qt::WidgetWithChildrenShortcut),
            &QShortcut::activated, m_searchText, [this] {
                m_searchText->setFocus(Qt::ShortcutFocusReason);
                m_searchText->selectAll();
            });
}

void frmEditor::CreateContextMenus() {
    popUp(CommandBars1->createMenu(u"Context Menu"_s, {{100}, {101}, {103}, {102}, {104}, {105}, {108}, {109}}),
          m_chapters);
    popUp(CommandBars2->createMenu(u"Bill Menu"_s, {{200}, {201}, {104, u"上移清单"_s}, {105, u"下移清单"_s}}),
          m_bills->grdBillList());
    popUp(CommandBars2->createMenu(u"Bill Menu"_s, {{400}, {401}, {402}, {403, u"删除"_s}}), m_contents->grdConcent());
    popUp(CommandBars3->createMenu(u"BillSpec Menu"_s, {{300}, {301}}), m_features->grdSpec());
    popUp(CommandBars4->createMenu(u"SpecEnum Menu"_s, {{300}, {301}}), m_features->grdSpecEnum());
}

void frmEditor::LoadAllToolbarsIcons() {
    const QString strip = joinPath(installFolder(), u"Res/Icons/ToolBar.bmp"_s);
    const std::vector<int> ids{100, 101, 103, 102, 104, 105, 106, 107, 200, 201, 202, 300, 301, 400, 401};
    CommandBars1->loadIcons(strip, ids);
    CommandBars2->loadIcons(strip, ids);
}
