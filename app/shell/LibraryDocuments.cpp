#include <QFileInfo>
#include <QMdiArea>
#include <QMdiSubWindow>

#include "app/base/Definitions.h"
#include "app/base/FileSystem.h"
#include "app/base/Guarded.h"
#include "app/base/MessageBox.h"
#include "app/shell/OpenLibraryDialog.h"
#include "app/shell/frmMain.h"
#include "app/shell/frmNewBillDBDialog.h"
#include "editor/frmEditor.h"
#include "storage/LibraryConnection.h"
#include "storage/Schema.h"

using namespace Qt::StringLiterals;

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
        if (fso().FileExists(path) && !isOpen(path))
            fso().DeleteFile(path);
        showMessage(u"创建文件失败！"_s, u"提示"_s, MessageIcon::Exclamation);
    });
}

bool frmMain::NewBillDB(const QString& path) {
    return guarded({"frmMain", "NewBillDB"}, [&] {
        if (isOpen(path))
            return false;
        if (fso().FileExists(path))
            fso().DeleteFile(path, true);
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
            m_windows->setActiveSubWindow(window);
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
        window->resize(m_windows->viewport()->size() * 4 / 5);
        if (maximized)
            window->showMaximized();
        else
            window->show();
        m_windows->setActiveSubWindow(window);
    });
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
    // Wider than windowOf: a library reached by another way round is the same file all the same.
    const QString file = QFileInfo(path).canonicalFilePath();
    for (const frmEditor* editor : editors()) {
        if (!file.isEmpty() && QFileInfo(editor->DBFilePath()).canonicalFilePath() == file)
            return true;
    }
    return windowOf(path) != nullptr;
}
