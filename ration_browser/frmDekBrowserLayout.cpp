// The look of the ration browser: its controls, their arrangement and the command tables.

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenu>
#include <QSplitter>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

#include "app/base/Guarded.h"
#include "app/base/UserEvent.h"
#include "app/controls/CommandBars.h"
#include "app/controls/KeyedGrid.h"
#include "app/controls/KeyedTree.h"
#include "app/controls/UiHelpers.h"
#include "ration_browser/ElidedLine.h"
#include "ration_browser/FindBar.h"
#include "ration_browser/HeldKeys.h"
#include "ration_browser/RationReceiver.h"
#include "ration_browser/RationSearch.h"
#include "ration_browser/frmDekBrowser.h"
#include "storage/Connection.h"

using namespace Qt::StringLiterals;

namespace {

constexpr QSize smallestSize(640, 360);
constexpr int treeWidth = 300;

/// The command tables answer for themselves under a name of their own.
constexpr Where inTables(const char* procedure) { return {"frmMeterial", procedure}; }

std::vector<GridColumn> rationColumns() {
    constexpr Qt::Alignment left = Qt::AlignLeft | Qt::AlignVCenter;
    return {
        {.key = u"Id"_s, .caption = u"Id"_s, .twips = 465, .shown = false},
        {.key = u"DEH"_s, .caption = u"定额号"_s, .twips = 1845, .cells = left},
        {.key = u"MC"_s, .caption = u"定额名称"_s, .twips = 4995, .cells = left},
        {.key = u"DW"_s, .caption = u"单位"_s, .twips = 795, .cells = left},
    };
}

}  // namespace

frmDekBrowser::frmDekBrowser(QWidget* owner)
    : QDialog(owner),
      m_cboDek(new QComboBox(this)),
      m_tvRationContent(new KeyedTree(this)),
      m_grdDEB(new KeyedGrid(this)),
      m_commandBars(new CommandBars(this, u"CommandBars1"_s)),
      m_lblReceiver(new ElidedLine(this)) {
    setObjectName(u"frmDekBrowser"_s);
    setWindowTitle(u"定额库浏览"_s);
    setWindowFlags(Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowMaximizeButtonHint |
                   Qt::WindowCloseButtonHint);
    setMinimumSize(smallestSize);
    resize(initialSize);
    m_cboDek->setObjectName(u"cboDek"_s);
    m_tvRationContent->setObjectName(u"tvRationContent"_s);
    m_tvRationContent->setAccessibleName(u"章节"_s);
    m_grdDEB->setObjectName(u"grdDEB"_s);
    m_grdDEB->setAccessibleName(u"定额"_s);
    m_lblReceiver->setObjectName(u"lblReceiver"_s);
    m_grdDEB->setColumns(rationColumns());
    SetVSFlexGridStyle(m_grdDEB);
    m_grdDEB->setGrowingColumn(u"MC"_s);
    CreateActions();
    m_find = new FindBar(m_commandBars->action(257), m_commandBars->action(258), this);
    m_find->hide();
    layOut(CreateToolbars());
    connectControls();
}

void frmDekBrowser::CreateActions() {
    guarded(inTables("CreateActions"), [this] {
        using Execute = std::function<void()>;
        using Enabled = std::function<bool()>;
        const auto command = [](int id, const QString& caption, const QString& hint, const Execute& execute = {},
                                const Enabled& enabled = {}) {
            CommandAction action{id, caption, hint, hint, u"Content"_s};
            if (execute)
                action.execute = [execute] { guarded({"frmDekBrowser", "CommandBars1_Execute"}, execute); };
            if (enabled)
                action.enabled = [enabled] { return guarded({"frmDekBrowser", "CommandBars1_Update"}, enabled); };
            return action;
        };
        const auto onRation = [this] { return m_grdDEB->hasRows(); };
        const auto insert = [this] { sendToEditor(RationMode::Insert); };
        const auto replace = [this] { sendToEditor(RationMode::Replace); };
        m_commandBars->addActions({
            command(256, u"查找"_s, u"查找"_s, [this] { m_find->open(); }),
            command(257, u"身上"_s, u"查找上一个"_s, [this] { step(&RationSearch::previousHit); }),
            command(258, u"向下"_s, u"查找下一个"_s, [this] { step(&RationSearch::nextHit); }),
            command(259, u"插入"_s, u"插入"_s, insert, onRation),
            command(260, u"替换"_s, u"替换"_s, replace, onRation),
            command(261, u"关闭"_s, u"关闭"_s, [this] { hide(); }),
        });
    });
}

QToolBar* frmDekBrowser::CreateToolbars() {
    return guarded(inTables("CreateToolbars"), [this] { return m_commandBars->createToolBar(u"定额"_s, {259, 260}); });
}

void frmDekBrowser::layOut(QToolBar* bar) {
    auto* caption = new QLabel(u"定额库："_s, this);
    caption->setBuddy(m_cboDek);
    m_cboDek->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    m_cboDek->setMinimumContentsLength(24);
    turnByWheelOnlyWithFocus(m_cboDek);

    for (auto* button : bar->findChildren<QToolButton*>()) {
        // Without images only a frame tells that these are buttons.
        button->setAutoRaise(false);
        button->setFocusPolicy(Qt::TabFocus);
    }
    auto* top = new QHBoxLayout;
    top->addWidget(caption);
    top->addWidget(m_cboDek);
    top->addSpacing(8);
    top->addWidget(bar);
    top->addStretch(1);

    auto* panes = new QSplitter(Qt::Horizontal, this);
    panes->setChildrenCollapsible(false);
    panes->addWidget(m_tvRationContent);
    panes->addWidget(m_grdDEB);
    panes->setStretchFactor(1, 1);
    panes->setSizes({treeWidth, initialSize.width() - treeWidth});

    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(6, 6, 6, 6);
    all->addLayout(top);
    all->addWidget(panes, 1);
    all->addWidget(m_find);
    all->addWidget(m_lblReceiver);
    // Tab goes the way of the eye: what stands at the top, then the panes.
    QWidget* before = m_cboDek;
    for (QAction* command : bar->actions()) {
        setTabOrder(before, bar->widgetForAction(command));
        before = bar->widgetForAction(command);
    }
    setTabOrder(before, m_tvRationContent);
    setTabOrder(m_tvRationContent, m_grdDEB);
    m_tvRationContent->setFocus();
}

void frmDekBrowser::connectControls() {
    connect(m_cboDek, &QComboBox::activated, this, &frmDekBrowser::cboDek_Click);
    connect(m_tvRationContent, &KeyedTree::nodeClick, this, &frmDekBrowser::tvRationContent_NodeClick);
    connect(m_grdDEB, &KeyedGrid::rowDoubleClicked, this, &frmDekBrowser::grdDEB_DblClick);
    connect(&UserEvent::instance(), &UserEvent::over, this, &frmDekBrowser::showReceiver);
    QMenu* menu = m_commandBars->createMenu(u"Ration Menu"_s, {{259}, {260}});
    connect(m_grdDEB, &KeyedGrid::contextMenuWanted, menu, [menu](const QPoint& position) { menu->popup(position); });
    const auto find = [this](int id) { return [this, id] { m_commandBars->execute(id); }; };
    connect(m_grdDEB, &KeyedGrid::textTyped, m_find, &FindBar::openWith);
    connect(m_grdDEB, &KeyedGrid::rowChanged, this, &frmDekBrowser::showFound);
    connect(&UserEvent::instance(), &UserEvent::over, this, &frmDekBrowser::showFound);
    connect(m_find, &FindBar::textChanged, this, [this] { goToHit(&RationSearch::firstHit); });
    connect(m_find, &FindBar::previousWanted, this, find(257));
    connect(m_find, &FindBar::nextWanted, this, find(258));
    connect(m_find, &FindBar::closeWanted, this, &frmDekBrowser::closeFind);
    setKeys();
}

/// Enter in the list inserts, Ctrl+Enter replaces; held down they do so once.
void frmDekBrowser::setKeys() {
    QObjectList writing{m_grdDEB};
    for (auto* button : findChildren<QToolButton*>())
        writing << button;
    new HeldKeys(this, writing);
    const std::pair<int, Qt::KeyboardModifiers> keys[] = {{259, Qt::NoModifier}, {260, Qt::ControlModifier}};
    for (const auto& [id, modifiers] : keys) {
        QAction* command = m_commandBars->action(id);
        command->setShortcuts({modifiers | Qt::Key_Return, modifiers | Qt::Key_Enter});
        command->setShortcutContext(Qt::WidgetShortcut);
        m_grdDEB->addAction(command);
    }
    m_commandBars->addShortcut(QKeySequence(Qt::CTRL | Qt::Key_F), 256);
    m_commandBars->addShortcut(QKeySequence(Qt::SHIFT | Qt::Key_F3), 257);
    m_commandBars->addShortcut(QKeySequence(Qt::Key_F3), 258);
    // Going on and on writes nothing.
    for (const int id : {257, 258})
        m_commandBars->action(id)->setAutoRepeat(true);
}
