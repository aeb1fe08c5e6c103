#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <algorithm>
#include <filesystem>

#include "app/base/Definitions.h"
#include "app/base/FileSystem.h"
#include "app/base/Guarded.h"
#include "app/base/MessageBox.h"
#include "app/shell/OpenLibraryDialog.h"
#include "app/shell/WindowArrangement.h"
#include "app/shell/frmMain.h"
#include "app/shell/frmNewBillDBDialog.h"
#include "editor/frmEditor.h"
#include "storage/LibraryConnection.h"
#include "storage/Schema.h"

using namespace Qt::StringLiterals;

namespace {

/// Whether both paths lead to one file that is there, by whatever way and in whatever letter case they are written.
bool isSameFile(const QString& one, const QString& other) {
    std::error_code failed;
    return std::filesystem::equivalent(QFileInfo(one).filesystemFilePath(), QFileInfo(other).filesystemFilePath(),
                                       failed);
}

}  // namespace

void frmMain::mnuNewBillDB_Click() {
    guarded({"frmMain", "mnuNewBillDB_Click"}, [this] {
        frmNewBillDBDialog dialog(this);
        dialog.exec();
        if (dialog.NewFileName().isEmpty())
            return;
        const QString path = dataPath + dialog.NewFileName();
        if (NewBillDB(path)) {
            LoadBillDB(path);
            return;
        }
        // What cannot be deleted stays; the user is told of one thing, that there is no new library.
        if (!isOpen(path))
            succeeds([&] { fso().DeleteFile(path); });
        showMessage(u"创建文件失败！"_s, u"提示"_s, MessageIcon::Exclamation);
    });
}

bool frmMain::NewBillDB(const QString& path) {
    return guarded({"frmMain", "NewBillDB"}, [&] {
        if (isOpen(path))
            return false;
        if (fso().FileExists(path) && !succeeds([&] { fso().DeleteFile(path, true); }))
            return false;
        const auto connection = GetOrmConn(path);
        if (!connection)
            return false;
        const bool created = CreateAllBillDBTable(connection.get());
        connection->Close();
        return created;
    });
}

void frmMain::mnuOpenBillDB_Click() {
    guarded({"frmMain", "mnuOpenBillDB_Click"}, [this] {
        const QString file = askForLibrary(this);
        if (file.isEmpty() || !fso().FileExists(file))
            return;
        if (QMdiSubWindow* window = windowOf(file))
            bringToFront(m_windows, window);
        else
            LoadBillDB(file);
    });
}

void frmMain::LoadBillDB(const QString& path) {
    guarded({"frmMain", "LoadBillDB"}, [&] {
        auto* editor = new frmEditor(this);
        editor->setDBFilePath(path);
        if (!editor->Form_Load()) {
            delete editor;
            return;
        }
        const QMdiSubWindow* active = m_windows->currentSubWindow();
        const bool maximized = !active || active->isMaximized();
        QMdiSubWindow* window = m_windows->addSubWindow(editor);
        window->setAttribute(Qt::WA_DeleteOnClose);
        window->setWindowIcon(windowIcon());
        // These entries have shortcuts of their own, other ones on every system; the command's are enough.
        for (QAction* entry : window->systemMenu()->actions())
            entry->setShortcuts(QList<QKeySequence>());
        connect(editor, &frmEditor::statusText, this, [this, editor](const QString& text, auto offer) {
            if (editor == activeEditor())
                showStatus(text, offer);
        });
        connect(editor, &QObject::destroyed, this, &frmMain::nameWindows, Qt::QueuedConnection);
        if (maximized) {
            window->showMaximized();
            // The area has its size only when the main window is shown: the place is given when it is first asked for.
            connect(window, &QMdiSubWindow::windowStateChanged, this, [this, window](auto, Qt::WindowStates state) {
                const bool placed = window->property("placed").toBool();
                if (!placed && !(state & (Qt::WindowMaximized | Qt::WindowMinimized))) {
                    window->setProperty("placed", true);
                    placeSubWindow(m_windows, window);
                }
            });
        } else {
            window->show();
            placeSubWindow(m_windows, window);
        }
        m_windows->setActiveSubWindow(window);
        nameWindows();
    });
}

void frmMain::nameWindows() {
    const QList<frmEditor*> all = editors();
    for (frmEditor* editor : all) {
        const auto isNamesake = [&](const frmEditor* other) {
            return other != editor && other->DBFileName().compare(editor->DBFileName(), Qt::CaseInsensitive) == 0;
        };
        const QString folder = QFileInfo(editor->DBFilePath()).path();
        const bool alone = std::none_of(all.begin(), all.end(), isNamesake);
        editor->setWindowTitle(alone ? editor->DBFileName()
                                     : u"%1（%2）"_s.arg(editor->DBFileName(), QDir::toNativeSeparators(folder)));
    }
}

void frmMain::mnuFileClose_Click() {
    guarded({"frmMain", "mnuFileClose_Click"}, [this] {
        if (QMdiSubWindow* window = m_windows->currentSubWindow())
            window->close();
    });
}

void frmMain::mnuAllFileClose_Click() {
    guarded({"frmMain", "mnuAllFileClose_Click"}, [this] {
        while (QMdiSubWindow* window = m_windows->currentSubWindow()) {
            if (!window->close())
                return;
            delete window;
        }
    });
}

QMdiSubWindow* frmMain::windowOf(const QString& path) const {
    for (QMdiSubWindow* window : m_windows->subWindowList()) {
        const auto* editor = qobject_cast<frmEditor*>(window->widget());
        if (editor && editor->DBFilePath().compare(path, Qt::CaseInsensitive) == 0)
            return window;
    }
    return nullptr;
}

bool frmMain::isOpen(const QString& path) const {
    const QList<frmEditor*> all = editors();
    return std::any_of(all.begin(), all.end(), [&](const frmEditor* editor) {
        return editor->DBFilePath() == path || isSameFile(editor->DBFilePath(), path);
    });
}
