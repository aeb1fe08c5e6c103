#include "app/shell/frmMain.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QIcon>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QPlainTextEdit>
#include <QScreen>
#include <QShortcut>
#include <QTimer>
#include <algorithm>

#include "app/base/Definitions.h"
#include "app/base/FileSystem.h"
#include "app/base/Guarded.h"
#include "app/base/Paths.h"
#include "app/base/UserSettings.h"
#include "app/shell/LibraryArea.h"
#include "app/shell/StatusLine.h"
#include "app/shell/WindowList.h"
#include "editor/frmEditor.h"
#include "ration_browser/frmDekBrowser.h"

using namespace Qt::StringLiterals;

namespace {
constexpr QLatin1String placement("placement");

/// The same keys on every system.
const QKeySequence undoKey(Qt::CTRL | Qt::Key_Z);
const QKeySequence redoKeys[] = {Qt::CTRL | Qt::Key_Y, Qt::CTRL | Qt::SHIFT | Qt::Key_Z};

bool isRedoKey(const QKeySequence& key) {
    return std::find(std::begin(redoKeys), std::end(redoKeys), key) != std::end(redoKeys);
}

/// Takes typing back in `control`, or does it again; false when it has none to which `key` applies.
template <typename Control>
bool goInTyping(Control* control, const QKeySequence& key, bool mayUndo, bool mayRedo, bool act) {
    const bool undoes = key == undoKey && mayUndo;
    const bool redoes = isRedoKey(key) && mayRedo;
    if (act && undoes)
        control->undo();
    else if (act && redoes)
        control->redo();
    return undoes || redoes;
}

bool goInTyping(QWidget* widget, const QKeySequence& key, bool act) {
    if (auto* line = qobject_cast<QLineEdit*>(widget))
        return goInTyping(line, key, line->isUndoAvailable(), line->isRedoAvailable(), act);
    if (auto* box = qobject_cast<QPlainTextEdit*>(widget))
        return goInTyping(box, key, box->document()->isUndoAvailable(), box->document()->isRedoAvailable(), act);
    return false;
}

}  // namespace

frmMain::frmMain()
    : m_windows(new LibraryArea(this)),
      m_commandBars(new CommandBars(this, u"CommandBars"_s)),
      m_windowList(new WindowList(m_windows)),
      m_status(new StatusLine(this)),
      m_statusTimer(new QTimer(this)) {
    setObjectName(u"frmMain"_s);
    setWindowTitle(applicationTitle());
    QApplication::setWindowIcon(QIcon(joinPath(installFolder(), u"Res/Icons/Tessel.png"_s)));
    m_windows->setObjectName(u"mdiArea"_s);
    m_windows->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_windows->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    m_windows->setActivationOrder(QMdiArea::ActivationHistoryOrder);
    setCentralWidget(m_windows);
    connect(m_windows, &QMdiArea::subWindowActivated, this, [this] { activeWindowChanged(); });
    // There is one toolbar; the menu in which it could be hidden has nothing to offer.
    setContextMenuPolicy(Qt::NoContextMenu);
    // A placement on a screen that is gone is moved onto one that is there.
    if (!restoreGeometry(userSettings(objectName()).value(placement).toByteArray())) {
        resize((screen()->availableSize() * 0.88).boundedTo(QSize(1760, 1100)));
        // On a small screen every pixel is needed.
        if (screen()->availableSize().width() < 1600)
            setWindowState(Qt::WindowMaximized);
    }
    qApp->installEventFilter(this);
}

frmMain::~frmMain() {
    // The area is destroyed after this object's own part; its signals must not reach it any more.
    m_windows->disconnect(this);
}

void frmMain::MDIForm_Load() {
    guarded({"frmMain", "MDIForm_Load"}, [this] {
        CreateActions();
        CreateDefaultMenu();
        CreateMDIMenu();
        CreateToolbars();
        CreateStatusbar();
        m_commandBars->addShortcut(QKeySequence(Qt::CTRL | Qt::Key_N), 256);
        m_commandBars->addShortcut(QKeySequence(Qt::CTRL | Qt::Key_O), 257);
        m_commandBars->addShortcut(QKeySequence(Qt::CTRL | Qt::Key_E), 260);
        m_commandBars->addShortcut(QKeySequence(Qt::ALT | Qt::Key_Q), 262);
        // The usual keys for closing a document, the same on every system.
        m_commandBars->addShortcut(QKeySequence(Qt::CTRL | Qt::Key_F4), 260);
        m_commandBars->addShortcut(QKeySequence(Qt::CTRL | Qt::Key_W), 260);
        createUndoKeys();
        m_commandBars->loadIcons(joinPath(installFolder(), u"Res/Icons/ToolBar.bmp"_s),
                                 {256, 257, 0, 0, 0, 0, 769, 0, 0, 0, 0, 0, 0, 0, 0});
        m_commandBars->update();
        if (!cmdFile.isEmpty() && fso().FileExists(cmdFile) && fso().GetExtensionName(cmdFile).toLower() == u"bdb"_s)
            LoadBillDB(cmdFile);
    });
}

void frmMain::createUndoKeys() {
    // In every window of the program, the ration browser for one: what is chosen there is written here. Not under an
    // open menu, which was opened for what is current.
    const auto add = [this](const QKeySequence& key, void (frmEditor::*act)()) {
        auto* shortcut = new QShortcut(key, this, nullptr, nullptr, Qt::ApplicationShortcut);
        shortcut->setAutoRepeat(false);
        connect(shortcut, &QShortcut::activated, this, [this, act] {
            frmEditor* editor = activeEditor();
            // The browser names the library that it writes to, which need not be the one in front.
            if (const auto* browser = qobject_cast<frmDekBrowser*>(QApplication::activeWindow()))
                editor = dynamic_cast<frmEditor*>(browser->ParetnForm());
            if (!editor || QApplication::activePopupWidget())
                return;
            m_windows->setActiveSubWindow(qobject_cast<QMdiSubWindow*>(editor->parentWidget()));
            (editor->*act)();
        });
    };
    add(undoKey, &frmEditor::undo);
    for (const QKeySequence& key : redoKeys)
        add(key, &frmEditor::redo);
    connect(m_status, &QLabel::linkActivated, this, [this] {
        if (frmEditor* editor = activeEditor())
            m_offer == LibraryHistory::Offer::Redo ? editor->redo() : editor->undo();
    });
}

frmEditor* frmMain::activeEditor() const {
    const QMdiSubWindow* window = m_windows->currentSubWindow();
    return window ? qobject_cast<frmEditor*>(window->widget()) : nullptr;
}

QList<frmEditor*> frmMain::editors() const {
    QList<frmEditor*> all;
    for (const QMdiSubWindow* window : m_windows->subWindowList()) {
        if (auto* editor = qobject_cast<frmEditor*>(window->widget()))
            all << editor;
    }
    return all;
}

void frmMain::activeWindowChanged() {
    guarded({"frmMain", "activeWindowChanged"}, [this] {
        // The active child stays the current one while a tool window or another program has the focus.
        QMdiSubWindow* window = m_windows->currentSubWindow();
        if (window == m_lastActive)
            return;
        for (frmEditor* editor : editors()) {
            if (editor->parentWidget() == m_lastActive)
                editor->commitPending();
        }
        m_lastActive = window;
        showStatus({});
        if (frmEditor* editor = activeEditor())
            editor->showChangesOfOthers();
        showMenuSet();
    });
}

void frmMain::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    // Another window of the program is no way out of an edit: its own controls have committed already, or wait for it.
    frmEditor* editor = event->type() == QEvent::ActivationChange ? activeEditor() : nullptr;
    if (editor && !QApplication::activeWindow())
        editor->commitPending();
    else if (editor && isActiveWindow())
        editor->showChangesOfOthers();
}

bool frmMain::eventFilter(QObject* watched, QEvent* event) {
    const bool asks = event->type() == QEvent::ShortcutOverride;
    auto* widget = asks || event->type() == QEvent::KeyPress ? qobject_cast<QWidget*>(watched) : nullptr;
    if (!widget || widget->window() != this)
        return QMainWindow::eventFilter(watched, event);
    const QKeySequence typed(static_cast<QKeyEvent*>(event)->keyCombination());
    if (typed == undoKey || isRedoKey(typed)) {
        // Which keys a text box knows for this differs between systems: its typing goes first everywhere.
        const bool inTyping = goInTyping(widget, typed, !asks);
        event->setAccepted(inTyping);
        return inTyping || asks;
    }
    // A text box may claim a key before shortcuts are looked at, Ctrl+E for one; it must not claim this window's.
    for (const int id : {256, 257, 260, 262}) {
        if (asks && m_commandBars->action(id) && m_commandBars->action(id)->shortcuts().contains(typed)) {
            event->ignore();
            return true;
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

void frmMain::closeEvent(QCloseEvent* event) {
    userSettings(objectName()).setValue(placement, saveGeometry());
    guarded({"frmMain", "MDIForm_Unload"}, [this] {
        for (QMdiSubWindow* window : m_windows->subWindowList())
            window->close();
    });
    event->accept();
    QApplication::quit();
}
