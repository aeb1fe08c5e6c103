#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <chrono>

#include "app/base/Guarded.h"
#include "app/base/MessageBox.h"
#include "app/base/UserEvent.h"

#include "app/shell/StatusLine.h"
#include "app/shell/WindowArrangement.h"
#include "app/shell/WindowList.h"
#include "app/shell/frmMain.h"
#include "editor/frmEditor.h"

using namespace Qt::StringLiterals;

void frmMain::CreateActions() {
    const QString file = u"File"_s;
    const QString window = u"Window"_s;
    const QString help = u"Help"_s;
    const QString none;
    const auto hasChild = [this] { return m_windows->currentSubWindow() != nullptr; };

    std::vector<CommandAction> actions{
        {256, u"新建(&N)"_s, u"New"_s, u"新建清单库"_s, file, [this] { mnuNewBillDB_Click(); }},
        {257, u"打开(&O)"_s, u"Open"_s, u"打开清单库"_s, file, [this] { mnuOpenBillDB_Click(); }},
        {258, u"保存(&S)"_s, u"Save"_s, u"保存当前清单库"_s, file},
        {259, u"另存为(&A)"_s, u"SaveAs"_s, u"另存清单库"_s, file},
        {260, u"关闭(&C)"_s, u"Close"_s, u"关闭当前打开的清单库"_s, file, [this] { mnuFileClose_Click(); }, hasChild},
        {261, u"关闭全部(&L)"_s, u"CloseAll"_s, u"关闭所有打开的清单库"_s, file, [this] { mnuAllFileClose_Click(); },
         hasChild},
        {262, u"退出(&E)"_s, u"Exit"_s, u"退出程序，关提示保存"_s, file, [this] { exitProgram(); }},
        {35003, u"&Recent Files"_s, u"最近打开清单库"_s, none, file,
         [this] {
             const QString parameter = m_commandBars->action(35003)->property("parameter").toString();
             showMessage(u"Open "_s + parameter);
         }},
        {512, u"层叠窗口"_s, none, none, window, [this] { cascadeSubWindows(m_windows); }},
        {513, u"横排窗口"_s, none, none, window, [this] { tileSubWindows(m_windows, Qt::Horizontal); }},
        {514, u"竖排窗口"_s, none, none, window, [this] { tileSubWindows(m_windows, Qt::Vertical); }},
        {35000, u"&Window List"_s, u"&Window List"_s, none, window},
        {768, u"关于"_s, u"About"_s, none, help},
        {769, u"帮助"_s, u"Context Help"_s, none, help},
    };
    for (CommandAction& action : actions) {
        // A command without a handler of its own announces itself.
        if (!action.execute)
            action.execute = [caption = action.caption] { showMessage(caption + u" clicked"_s, u"Button Clicked"_s); };
        action.execute = [run = std::move(action.execute)] { guarded({"frmMain", "CommandBars_Execute"}, run); };
        // Error records name the update rule by the procedure that runs commands; don't correct.
        if (action.enabled)
            action.enabled = [rule = std::move(action.enabled)] {
                return guarded({"frmMain", "CommandBars_Execute"}, rule);
            };
    }
    m_commandBars->addActions(std::move(actions));
    m_commandBars->beforeExecute = [this] {
        frmEditor* editor = activeEditor();
        return !editor || editor->commitPending();
    };
}

void frmMain::addMenu(const QString& title, const std::vector<MenuEntry>& entries, std::vector<QMenu*>& set) {
    QMenu* menu = m_commandBars->createMenu(title, entries);
    menuBar()->addMenu(menu);
    set.push_back(menu);
    m_windowList->serve(menu, u"&Window List"_s);
}

void frmMain::CreateDefaultMenu() {
    addMenu(u"文件(&F)"_s, {{256}, {257}, {35000}, {262}}, m_defaultMenus);
    addMenu(u"帮助(&H)"_s, {{769}, {768}}, m_defaultMenus);
}

void frmMain::CreateMDIMenu() {
    menuBar()->setObjectName(u"Document"_s);
    addMenu(u"文件(&F)"_s, {{256}, {257}, {260}, {261}, {262}}, m_documentMenus);
    addMenu(u"窗口(&W)"_s, {{512}, {513}, {514}, {35000}}, m_documentMenus);
    addMenu(u"帮助(&H)"_s, {{769}, {768}}, m_documentMenus);
    showMenuSet();
}

void frmMain::showMenuSet() {
    const bool document = m_windows->currentSubWindow() != nullptr;
    for (const QMenu* menu : m_defaultMenus)
        menu->menuAction()->setVisible(!document);
    for (const QMenu* menu : m_documentMenus)
        menu->menuAction()->setVisible(document);
}

void frmMain::CreateToolbars() {
    QToolBar* bar = m_commandBars->createToolBar(u"Standard"_s, {});
    for (const int id : {256, 257})
        AddButton(bar, m_commandBars->action(id), false, Qt::ToolButtonTextBesideIcon);
    addToolBar(bar);
}

void frmMain::CreateStatusbar() {
    statusBar()->addWidget(m_status, 1);
    m_statusTimer->setSingleShot(true);
    connect(m_statusTimer, &QTimer::timeout, this, [this] { showStatus({}); });
    connect(&UserEvent::instance(), &UserEvent::over, this, [this] {
        if (!m_statusTimer->isActive())
            showStatus({});
    });

    showStatus({});
}

void frmMain::showStatus(const QString& text, LibraryHistory::Offer offer) {
    using Offer = LibraryHistory::Offer;
    m_offer = offer;
    const frmEditor* editor = activeEditor();
    const QString next = editor ? editor->nextStep() : QString();
    m_status->showLine(!text.isEmpty()  ? text
                       : next.isEmpty() ? u"Ready"_s
                                        : next,
                       offer == Offer::Undo   ? u"撤消 (Ctrl+Z)"_s
                       : offer == Offer::Redo ? u"重做 (Ctrl+Y)"_s
                                              : QString());
    if (text.isEmpty())
        m_statusTimer->stop();
    else
        m_statusTimer->start(std::chrono::seconds(8));
}

void frmMain::exitProgram() {
    if (askYesNo(u"确认要关闭窗体吗？"_s, u"退出程序"_s, MessageIcon::Question))
        close();
}
