#include "editor/frmEditor.h"

#include <QCloseEvent>
#include <QTabWidget>
#include <vector>

#include "app/base/Definitions.h"
#include "app/base/FileSystem.h"
#include "app/base/Guarded.h"
#include "app/base/MessageBox.h"
#include "app/controls/KeyedGrid.h"
#include "app/controls/KeyedTree.h"
#include "editor/RationLibraries.h"
#include "editor/bills/BillPane.h"
#include "editor/bills/FeaturePane.h"
#include "editor/chapters/ChapterPane.h"
#include "editor/contents/ContentPane.h"
#include "editor/contents/ContentRows.h"
#include "ration_browser/frmDekBrowser.h"
#include "storage/LibraryConnection.h"

using namespace Qt::StringLiterals;

namespace {

/// Connections that could not be closed: what they still hold is committed at a later event or at the end.
void keepOpen(std::unique_ptr<Connection> connection) {
    static std::vector<std::unique_ptr<Connection>> kept;
    kept.push_back(std::move(connection));
}

}  // namespace

frmEditor::frmEditor(QWidget* mainWindow)
    : m_mainWindow(mainWindow),
      m_chapters(new ChapterPane(this)),
      m_bills(new BillPane(this)),
      m_features(new FeaturePane(this)),
      m_contents(new ContentPane(this)),
      tabBillDetail(new QTabWidget(this)),
      CommandBars1(new CommandBars(this, u"CommandBars1"_s)),
      CommandBars2(new CommandBars(this, u"CommandBars2"_s)),
      CommandBars3(new CommandBars(this, u"CommandBars3"_s)),
      CommandBars4(new CommandBars(this, u"CommandBars4"_s)) {
    setObjectName(u"frmEditor"_s);
}

frmEditor::~frmEditor() { Form_Unload(); }

void frmEditor::setDBFilePath(const QString& path) {
    m_DBFilePath = path;
    m_DBFileName = fso().GetFileName(path);
    setWindowTitle(m_DBFileName);
}

QString frmEditor::DekID() const { return m_contents->DekID; }

CommandBars* frmEditor::commandBars(int host) const {
    CommandBars* const hosts[] = {CommandBars1, CommandBars2, CommandBars3, CommandBars4};
    return hosts[host - 1];
}

bool frmEditor::Form_Load() {
    bool opened = false;
    guarded({"frmEditor", "Form_Load"}, [&] {
        InitFormView();
        CreateActions();
        CreateToolbarsContent();
        CreateToolbarsBill();
        CreateContextMenus();
        LoadAllToolbarsIcons();
        m_ormConn = GetOrmConn(m_DBFilePath);
        opened = m_ormConn != nullptr;
        if (!opened)
            showMessage(u"打开"_s + m_DBFilePath + u"文件失败！"_s, u"提示"_s, MessageIcon::Exclamation);
        m_chapters->setConnection(m_ormConn.get());
        m_bills->setConnection(m_ormConn.get());
        m_features->setConnection(m_ormConn.get());
        m_contents->setConnection(m_ormConn.get());
        m_contents->DekID = GetDefDekID(m_DBFileName);
        m_contents->setDekComboList(GetDekComboList());
        m_chapters->CreateTvwSYB();
        if (tabBillDetail->count() > 0)
            tabBillDetail->setCurrentIndex(0);
        m_chapters->tvSYB()->setFocus();
    });
    return opened;
}

void frmEditor::Form_Unload() {
    if (std::exchange(m_unloaded, true))
        return;
    frmDekBrowser::forget(this);
    for (CommandBars* host : {CommandBars1, CommandBars2, CommandBars3, CommandBars4})
        host->disconnect();
    const bool closed = guarded({"frmEditor", "Form_Unload"}, [this] {
        if (!m_ormConn || m_ormConn->State() != 1)
            return true;
        m_ormConn->commitLeftovers();
        if (fso().FileExists(companionPath(m_DBFilePath)))
            m_ormConn->Execute("detach database dbext;");
        m_ormConn->Close();
        return true;
    });
    m_chapters->setConnection(nullptr);
    m_bills->setConnection(nullptr);
    m_features->setConnection(nullptr);
    m_contents->setConnection(nullptr);
    if (!closed)
        keepOpen(std::move(m_ormConn));
    m_ormConn.reset();
}

bool frmEditor::commitPending() {
    const bool billsDone = m_bills->commitPending();
    const bool featuresDone = m_features->commitPending();
    return m_contents->commitPending() && featuresDone && billsDone;
}

void frmEditor::closeEvent(QCloseEvent* event) {
    // An edit that is refused does not keep the window: there is nothing of it to lose.
    commitPending();
    Form_Unload();
    event->accept();
}

void frmEditor::WinCommand(RationMode mode, const QString& deh, const QString& dekID) {
    if (commitPending())
        m_contents->WinCommand(static_cast<short>(mode), deh, dekID);
}

void frmEditor::chapterClicked(const QString& tag) {
    if (tag.size() == 6)
        m_bills->LoadBill(tag);
    else
        m_bills->clearList();
    m_bills->grdBillList()->setTag(u"0"_s);
}

void frmEditor::lockDetailsOfDeletedBill() {
    guarded({"frmEditor", "lockDetailsOfDeletedBill"}, [this] {
        const auto gone = [this](qint64 billId) {
            return billId > 0 && requireConnection(ormConn())
                                     .OpenRecordset(sql("SELECT ID FROM tblBill WHERE ID=", billId, ";"))
                                     .EndOfFile();
        };
        m_features->setLocked(gone(m_features->shownBill()));
        m_contents->setLocked(gone(m_contents->shownBill()));
    });
}

void frmEditor::deleteContentRow() {
    const KeyedGrid* grid = m_contents->grdConcent();
    const int row = grid->row();
    if (row < 0)
        return;
    if (grid->level(row) <= 0)
        m_contents->mnuDelBillCont_Click();
    else if (grid->level(row) == 1)
        m_contents->munDelBillSubCont_Click();
    else
        m_contents->munDelBillContDe_Click();
}

void frmEditor::openRationBrowser(const QString& dekId) {
    guarded({"frmEditor", "grdConcent_CellButtonClick"}, [&] {
        frmDekBrowser* browser = frmDekBrowser::shared(m_mainWindow);
        browser->setParetnForm(this);
        browser->setDekID(dekId);
        browser->show();
        browser->raise();
        browser->activateWindow();
    });
}

QString frmEditor::receivingRow() const {
    const KeyedGrid* bills = m_bills->grdBillList();
    const KeyedGrid* contents = m_contents->grdConcent();
    const int row = contents->row();
    const auto none = [this](const QString& why) { return u"定额放不进 "_s + windowTitle() + u"："_s + why; };
    if (m_contents->isLocked())
        return none(u"这条清单已被删除"_s);
    if (!contents->hasRows())
        return none(bills->row() < 0 ? u"没有选中清单"_s : u"这条清单还没有工作内容"_s);
    if (row < 0 || contents->level(row) == ContentRows::contentLevel)
        return none(u"先选中一个二级工作内容，或其下的定额"_s);
    QStringList way{windowTitle()};
    if (bills->row() >= 0)
        way << bills->text(bills->row(), u"code"_s) + u' ' + bills->text(bills->row(), u"Name"_s);
    int subContent = row;
    while (subContent > 0 && contents->level(subContent) > ContentRows::subContentLevel)
        --subContent;
    way << contents->text(subContent, ContentRows::cont);
    if (subContent != row)
        way << contents->text(row, ContentRows::cont);
    way.removeAll(QString());
    return u"→ "_s + way.join(u" · "_s);
}

QRect frmEditor::receivingRect() const {
    const KeyedGrid* grid = m_contents->grdConcent();
    const QRect cell = grid->visualRect(grid->currentIndex());
    if (!grid->isVisible() || !grid->viewport()->rect().contains(cell.center()))
        return {};
    return {grid->viewport()->mapToGlobal(QPoint(0, cell.top())), QSize(grid->viewport()->width(), cell.height())};
}
