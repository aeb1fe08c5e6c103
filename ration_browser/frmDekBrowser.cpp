#include "ration_browser/frmDekBrowser.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QKeyEvent>
#include <QPointer>
#include <QToolButton>
#include <algorithm>

#include "app/base/FileSystem.h"
#include "app/base/Guarded.h"
#include "app/base/MessageBox.h"
#include "app/controls/CommandBars.h"
#include "app/controls/KeyedGrid.h"
#include "app/controls/KeyedTree.h"
#include "app/controls/Marks.h"
#include "ration_browser/BrowserPlacement.h"
#include "ration_browser/FindBar.h"
#include "ration_browser/RationReceiver.h"
#include "ration_browser/RationSearch.h"
#include "ration_browser/RationTree.h"
#include "storage/LibraryConnection.h"
#include "storage/RationLibraries.h"

using namespace Qt::StringLiterals;

namespace {

QPointer<frmDekBrowser> sharedBrowser;

constexpr int widestUnits = 160;

constexpr Where here(const char* procedure) { return {"frmDekBrowser", procedure}; }

}  // namespace

frmDekBrowser* frmDekBrowser::shared(QWidget* owner) {
    if (!sharedBrowser)
        sharedBrowser = new frmDekBrowser(owner);
    return sharedBrowser;
}

void frmDekBrowser::forget(const RationReceiver* editor) {
    if (sharedBrowser && sharedBrowser->m_editor == editor)
        sharedBrowser->setParetnForm(nullptr);
}

frmDekBrowser::~frmDekBrowser() { Form_Unload(); }

void frmDekBrowser::showEvent(QShowEvent* event) {
    Form_Load();
    if (!event->spontaneous())
        placeBesideReceiver();
    showReceiver();
    m_wasShown = true;
    QDialog::showEvent(event);
}

void frmDekBrowser::closeEvent(QCloseEvent* event) {
    Form_Unload();
    event->accept();
}

void frmDekBrowser::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        showReceiver();
}

void frmDekBrowser::keyPressEvent(QKeyEvent* event) {
    // A tool button takes Space alone for a press; Enter on the focused button means it too.
    auto* button = qobject_cast<QToolButton*>(focusWidget());
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (button && enter)
        button->click();
    else
        QDialog::keyPressEvent(event);
}

void frmDekBrowser::reject() {
    if (m_find->isHidden())
        m_commandBars->execute(261);
    else
        closeFind();
}

void frmDekBrowser::setParetnForm(RationReceiver* editor) {
    m_editor = editor;
    showReceiver();
}

void frmDekBrowser::Form_Load() {
    if (m_loaded)
        return;
    guarded(here("Form_Load"), [this] {
        m_loaded = true;
        m_placedByUser = restorePlacement(this);
        LoadDekCom2boList();
    });
}

void frmDekBrowser::Form_Unload() {
    if (!m_loaded)
        return;
    guarded(here("Form_Unload"), [this] {
        m_loaded = false;
        // Until it is shown, a window does not know where it will stand.
        if (m_wasShown && !isMinimized())
            savePlacement(this, isPlacedByUser());
        clearLibrary();
        m_find->hide();
        m_cboDek->clear();
    });
}

void frmDekBrowser::LoadDekCom2boList() {
    guarded(here("LoadDekCom2boList"), [this] {
        m_cboDek->clear();
        for (const RationLibrary& library : rationLibrariesByProfession())
            m_cboDek->addItem(Theme::oneLine(library.name), library.dekId);
        m_cboDek->setCurrentIndex(-1);
    });
}

void frmDekBrowser::setDekID(const QString& dekId) {
    guarded(here("DekID"), [&] {
        Form_Load();
        m_dekId = dekId;
        int index = m_cboDek->findData(dekId, Qt::UserRole, Qt::MatchExactly | Qt::MatchCaseSensitive);
        if (index < 0 && m_cboDek->count() > 0)
            index = 0;
        if (index < 0)
            return;
        m_cboDek->setCurrentIndex(index);
        cboDek_Click();
        returnToPlace();
    });
}

QString frmDekBrowser::selectedLibrary() const { return m_cboDek->currentData().toString(); }

void frmDekBrowser::cboDek_Click() {
    guarded(here("cboDek_Click"), [this] {
        if (m_cboDek->currentIndex() >= 0)
            LoadSYB();
    });
}

void frmDekBrowser::clearLibrary() {
    if (m_library)
        rememberPlace();
    m_tvRationContent->clearNodes();
    m_grdDEB->clearRows();
    m_grdDEB->setEmptyHint({});
    m_rations.reset();
    m_openedByFind.clear();
    m_library.reset();
}

void frmDekBrowser::LoadSYB() {
    guarded(here("LoadSYB"), [this] {
        const auto complain = [](const QString& text) { showMessage(text, u"提示"_s, MessageIcon::Critical); };
        // Rations of another library must never stand beside the chosen one's name.
        clearLibrary();
        if (m_cboDek->currentIndex() < 0)
            return;
        m_shownLibrary = selectedLibrary();
        const QString path = browsedLibraryPath(m_shownLibrary);
        if (!fso().FileExists(path))
            return complain(path + u" 文件不存在!"_s);
        if (!succeeds([&] { m_library = openRationLibrary(path); }))
            return complain(path + u" 文件已损坏!"_s);
        CreateRationContent();
    });
}

void frmDekBrowser::CreateRationContent() {
    guarded(here("CreateRationContent"), [this] {
        m_tvRationContent->clearNodes();
        if (!m_library)
            return;
        addRationRoot(m_tvRationContent);
        Recordset rows = m_library->OpenRecordset("SELECT * FROM DeSYB WHERE isdel=0 ORDER BY CH,ZH,JH,XH,MH;");
        addRationChapters(m_tvRationContent, rows);
        ReleaseOrmRecordset(rows);
    });
}

void frmDekBrowser::tvRationContent_NodeClick(QTreeWidgetItem* node) {
    guarded(here("tvRationContent_NodeClick"), [&] {
        m_tvRationContent->selectNode(node);
        const qint64 sybID = chapterOfKey(KeyedTree::key(node));
        if (sybID != 0)
            LoadDeb(sybID);
        else {
            m_grdDEB->clearRows();
            m_grdDEB->setEmptyHint({});
        }
    });
}

void frmDekBrowser::LoadDeb(qint64 sybID) {
    guarded(here("LoadDeb"), [&] {
        m_grdDEB->clearRows();
        m_grdDEB->setEmptyHint({});
        if (sybID == 0)
            return;
        Recordset rows =
            requireConnection(m_library.get()).OpenRecordset(sql("SELECT * FROM DEB WHERE sybID=", sybID, ";"));
        ListDeb(rows);
        ReleaseOrmRecordset(rows);
        hintAtRationsBelow();
    });
}

void frmDekBrowser::ListDeb(Recordset& rows) {
    const auto redraw = [this] { m_grdDEB->setRedraw(true); };
    guarded(
        here("ListDeb"),
        [&] {
            m_grdDEB->setRedraw(false);
            m_grdDEB->clearRows();
            KeyedGrid::Batch rations(*m_grdDEB);
            for (; !rows.EndOfFile(); rows.MoveNext())
                rations.append({{"Id", rows.text("ID")},
                                {"DEH", rows.text("DEH")},
                                {"MC", rows.text("MC")},
                                {"DW", rows.text("DW")}});
            rations.add();
            if (m_grdDEB->hasRows())
                m_grdDEB->setRow(0);
            redraw();
            showUnitsWhole();
        },
        redraw);
}

void frmDekBrowser::showUnitsWhole() {
    const int units = m_grdDEB->column(u"DW"_s);
    const int width = m_grdDEB->columnWidth(units);
    m_grdDEB->resizeColumnToContents(units);
    m_grdDEB->setColumnWidth(units, std::max(width, std::min(m_grdDEB->columnWidth(units), widestUnits)));
}

void frmDekBrowser::sendToEditor(RationMode mode) {
    const int row = m_grdDEB->row();
    if (row >= 0 && m_editor)
        m_editor->WinCommand(mode, m_grdDEB->text(row, u"DEH"_s), selectedLibrary());
}

void frmDekBrowser::grdDEB_DblClick() {
    guarded(here("grdDEB_DblClick"), [this] { sendToEditor(RationMode::Insert); });
}
