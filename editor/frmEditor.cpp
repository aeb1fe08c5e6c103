#include "editor/frmEditor.h"

#include <QCloseEvent>
#include <QTabWidget>
#include <QTimer>

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
#include "editor/common/LibraryDocument.h"
#include "editor/contents/ContentPane.h"
#include "ration_browser/frmDekBrowser.h"
#include "storage/Connection.h"
#include "storage/Lookups.h"
#include "storage/SystemDatabase.h"

using namespace Qt::StringLiterals;

frmEditor::frmEditor(QWidget* mainWindow)
    : m_mainWindow(mainWindow),
      m_library(new LibraryDocument(this)),
      m_chapters(new ChapterPane(*m_library, this)),
      m_bills(new BillPane(*m_library, this)),
      m_contents(new ContentPane(*m_library, this)),
      m_features(new FeaturePane(*m_library, this)),
      tabBillDetail(new QTabWidget(this)),
      CommandBars1(new CommandBars(this, u"CommandBars1"_s)),
      CommandBars2(new CommandBars(this, u"CommandBars2"_s)),
      CommandBars3(new CommandBars(this, u"CommandBars3"_s)),
      CommandBars4(new CommandBars(this, u"CommandBars4"_s)) {
    setObjectName(u"frmEditor"_s);
    m_library->setParent(this);
    for (KeyedGrid* grid :
         {m_bills->grdBillList(), m_contents->grdConcent(), m_features->grdSpec(), m_features->grdSpecEnum()}) {
        grid->beforeEdit = [this] { return readAfresh(); };
        grid->pasteLines = [this](const std::function<void()>& edits) { m_library->asOneStep(edits); };
    }
    m_bills->setBeforeBoxesWrite([this] { return readAfresh(); });
}

frmEditor::~frmEditor() { Form_Unload(); }

Connection* frmEditor::ormConn() const { return m_library->connection(); }

void frmEditor::setDBFilePath(const QString& path) {
    m_DBFilePath = path;
    m_DBFileName = fso().GetFileName(path);
    setWindowTitle(m_DBFileName);
}

QString frmEditor::DekID() const { return m_library->defaultRationLibrary(); }

QString frmEditor::nextStep() const { return m_contents->nextStep(); }

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

        opened = m_library->open(m_DBFilePath);
        if (!opened)
            showMessage(u"打开"_s + m_DBFilePath + u"文件失败！"_s, u"提示"_s, MessageIcon::Exclamation);
        // After the history, which may show everything afresh then.
        connect(&UserEvent::instance(), &UserEvent::over, this, &frmEditor::showEmptyHints);
        if (!isSystemDatabaseBeingPrepared())
            loadRationLibraries();
        m_chapters->CreateTvwSYB();
        if (tabBillDetail->count() > 0)
            tabBillDetail->setCurrentIndex(0);
        m_chapters->tvSYB()->setFocus();
        m_chapters->tvSYB()->viewport()->installEventFilter(this);
    });
    return opened;
}

bool frmEditor::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Paint) {
        watched->removeEventFilter(this);
        QTimer::singleShot(0, this, &frmEditor::firstPaintingDone);
    }
    return QWidget::eventFilter(watched, event);
}

/// What the first picture of the library did not have to wait for; the user can do nothing before.
void frmEditor::firstPaintingDone() {
    if (m_unloaded)
        return;
    if (!m_rationLibrariesLoaded)
        loadRationLibraries();
    if (ormConn())
        ormConn()->lookups().fillWhenIdle();
}

void frmEditor::loadRationLibraries() {
    m_rationLibrariesLoaded = true;
    m_library->setDefaultRationLibrary(GetDefDekID(m_DBFileName));
    m_contents->setDekComboList(GetDekComboList());
}

void frmEditor::Form_Unload() {
    if (std::exchange(m_unloaded, true))
        return;
    frmDekBrowser::forget(this);
    for (CommandBars* host : {CommandBars1, CommandBars2, CommandBars3, CommandBars4})
        host->disconnect();
    m_library->close();
}

/// Not while a command runs, which may ask something: it holds on to the rows and nodes that it saw. It is kept from
/// writing then, and the window is shown afresh when it is over.
bool frmEditor::readAfresh() {
    return m_library->history() && !UserEvent::isGoingOn() && m_library->history()->showChangesOfOthers();
}

/// A command acts on what is current: not when that has become something else because another program has written.
bool frmEditor::mayRunCommand() {
    const ViewPlace meant = place();
    return (!readAfresh() || isAt(meant)) && commitPending();
}

void frmEditor::undo() {
    readAfresh();
    if (m_library->history())
        m_library->history()->undo();
}

void frmEditor::redo() {
    readAfresh();
    if (m_library->history())
        m_library->history()->redo();
}

void frmEditor::showChangesOfOthers() { readAfresh(); }

bool frmEditor::commitPending() {
    readAfresh();
    const bool billsDone = m_bills->commitPending();
    const bool featuresDone = m_features->commitPending();
    return m_contents->commitPending() && featuresDone && billsDone;
}

void frmEditor::closeEvent(QCloseEvent* event) {
    // A refused edit does not keep the window open: it could not be stored anyway.
    commitPending();
    saveSplitters();
    Form_Unload();
    event->accept();
}
