#include <QAction>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QToolBar>

#include "app/base/Guarded.h"
#include "app/base/MessageBox.h"
#include "app/shell/WindowArrangement.h"
#include "app/shell/WindowList.h"
#include "app/shell/frmMain.h"
#include "editor/frmEditor.h"

void frmMain::CreateActions() {
    const QString file = QStringLiteral("File");
    const QString window = QStringLiteral("Window");
    const QString help = QStringLiteral("Help");
    const QString none;
    const auto hasChild = [this] { return m_windows->currentSubWindow() != nullptr; };

    std::vector<CommandAction> actions{
        {256, QStringLiteral("新建(&N)"), QStringLiteral("New"), QStringLiteral("新建清单库"), file,
         [this] { mnuNewBillDB_Click(); }},
        {257, QStringLiteral("打开(&O)"), QStringLiteral("Open"), QStringLiteral("打开清单库"), file,
         [this] { mnuOpenBillDB_Click(); }},
        {258, QStringLiteral("保存(&S)"), QStringLiteral("Save"), QStringLiteral("保存当前清单库"), file},
        {259, QStringLiteral("另存为(&A)"), QStringLiteral("SaveAs"), QStringLiteral("另存清单库"), file},
        {260, QStringLiteral("关闭(&C)"), QStringLiteral("Close"), QStringLiteral("关闭当前打开的清单库"), file,
         [this] { mnuFileClose_Click(); }, hasChild},
        {261, QStringLiteral("关闭全部(&L)"), QStringLiteral("CloseAll"), QStringLiteral("关闭所有打开的清单库"), file,
         [this] { mnuAllFileClose_Click(); }, hasChild},
        {262, QStringLiteral("退出(&E)"), QStringLiteral("Exit"), QStringLiteral("退出程序，关提示保存"), file,
         [this] { exitProgram(); }},
        {35003, QStringLiteral("&Recent Files"), QStringLiteral("最近打开清单库"), none, file,
         [this] {
             const QString parameter = m_commandBars->action(35003)->property("parameter").toString();
             showMessage(QStringLiteral("Open ") + parameter);
         }},
        {512, QStringLiteral("层叠窗口"), none, none, window, [this] { m_windows->cascadeSubWindows(); }},
        {513, QStringLiteral("横排窗口"), none, none, window, [this] { tileSubWindows(m_windows, Qt::Horizontal); }},
        {514, QStringLiteral("竖排窗口"), none, none, window, [this] { tileSubWindows(m_windows, Qt::Vertical); }},
        {35000, QStringLiteral("&Window List"), QStringLiteral("&Window List"), none, window},
        {768, QStringLiteral("关于"), QStringLiteral("About"), none, help},
        {769, QStringLiteral("帮助"), QStringLiteral("Context Help"), none, help},
    };
    for (CommandAction& action : actions) {
        // A command without a handler of its own announces itself.
        if (!action.execute)
            action.execute = [caption = action.caption] {
                showMessage(caption + QStringLiteral(" clicked"), QStringLiteral("Button Clicked"));
            };
        action.execute = [run = std::move(action.execute)] { guarded({"frmMain", "CommandBars_Execute"}, run); };
        // The update rule has always reported itself under the name of its neighbour.
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
    m_windowList->serve(menu, QStringLiteral("&Window List"));
}

void frmMain::CreateDefaultMenu() {
    addMenu(QStringLiteral("文件(&F)"), {{256}, {257}, {35000}, {262}}, m_defaultMenus);
    addMenu(QStringLiteral("帮助(&H)"), {{769}, {768}}, m_defaultMenus);
}

void frmMain::CreateMDIMenu() {
    menuBar()->setObjectName(QStringLiteral("Document"));
    addMenu(QStringLiteral("文件(&F)"), {{256}, {257}, {260}, {261}, {262}}, m_documentMenus);
    addMenu(QStringLiteral("窗口(&W)"), {{512}, {513}, {514}, {35000}}, m_documentMenus);
    addMenu(QStringLiteral("帮助(&H)"), {{769}, {768}}, m_documentMenus);
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
    QToolBar* bar = m_commandBars->createToolBar(QStringLiteral("Standard"), {});
    for (const int id : {256, 257})
        AddButton(bar, m_commandBars->action(id), false, Qt::ToolButtonTextBesideIcon);
    addToolBar(bar);
}

void frmMain::CreateStatusbar() { statusBar()->addWidget(new QLabel(QStringLiteral("Ready"), this)); }

void frmMain::exitProgram() {
    if (askYesNo(QStringLiteral("确认要关闭窗体吗？"), QStringLiteral("退出程序")))
        close();
}
