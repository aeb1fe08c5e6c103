#include "editor/common/LibraryDocument.h"

#include <vector>

#include "app/base/Definitions.h"
#include "app/base/FileSystem.h"
#include "app/base/Guarded.h"
#include "storage/LibraryConnection.h"

namespace {

/// Connections that could not be closed: what they still hold is committed at a later event or at the end.
void keepOpen(std::unique_ptr<Connection> connection) {
    static std::vector<std::unique_ptr<Connection>> kept;
    kept.push_back(std::move(connection));
}

}  // namespace

LibraryDocument::LibraryDocument(LibraryView* view) : m_view(view) {}

LibraryDocument::~LibraryDocument() { close(); }

bool LibraryDocument::open(const QString& path) {
    m_connection = GetOrmConn(path);
    if (m_connection && m_view) {
        guarded({"frmEditor", "Form_Load"}, [this] {
            m_history = std::make_unique<LibraryHistory>(*m_connection, *m_view);
            connect(m_history.get(), &LibraryHistory::said, this, &LibraryDocument::said);
        });
        // Without it nobody would notice what others write.
        if (!m_history)
            m_connection.reset();
    }
    return m_connection != nullptr;
}

void LibraryDocument::close() {
    if (!m_connection)
        return;
    m_history.reset();
    const bool closed = guarded({"frmEditor", "Form_Unload"}, [this] {
        if (m_connection->State() != 1)
            return true;
        m_connection->commitLeftovers();
        if (fso().FileExists(companionPath(m_connection->path())))
            m_connection->Execute("detach database dbext;");
        m_connection->Close();
        return true;
    });
    if (!closed)
        keepOpen(std::move(m_connection));
    m_connection.reset();
}

void LibraryDocument::did(const QString& what) {
    if (m_history)
        m_history->did(what);
}

void LibraryDocument::asOneStep(const std::function<void()>& edits) {
    if (m_history)
        m_history->asOneStep(edits);
}

void LibraryDocument::setChapter(const QString& code) {
    m_chapter = code;
    Q_EMIT chapterChanged();
}

void LibraryDocument::showChapter(const QString& code) { show(code, listingOf(code)); }

void LibraryDocument::showQuery(const QString& text) {
    if (!m_chapter.isEmpty())
        m_chapterBeforeQuery = m_chapter;
    show({}, {Listing::Of::Query, text});
}

void LibraryDocument::leaveQuery() {
    if (listsQuery() && !m_chapterBeforeQuery.isEmpty())
        showChapter(m_chapterBeforeQuery);
}

void LibraryDocument::show(const QString& chapter, const Listing& listing) {
    const bool leaves = !m_view || m_view->commitPending();
    if (leaves) {
        m_chapter = chapter;
        m_listing = listing;
    }
    // The tree has selected the clicked node already. It is told also when the chapter stays, to select the old node
    // again.
    Q_EMIT chapterChanged();
    if (leaves)
        Q_EMIT listingChanged();
}

void LibraryDocument::showAfresh(const QString& chapter, const Listing& listing, const Bill& bill) {
    const bool isListed = listing.of != Listing::Of::Nothing;
    m_chapter = chapter;
    m_listing = listing;
    m_listing.failed = false;
    Q_EMIT chapterChanged();
    // The list makes one of its bills the current one. Without a list the details stay those of the last bill.
    if (!isListed) {
        setCurrentBill(bill.id == 0 ? std::nullopt : std::optional(bill));
        checkShownBill();
        if (m_shownBillGone)
            setCurrentBill(std::nullopt);
    }
    Q_EMIT listingChanged();
}

void LibraryDocument::setCurrentBill(const std::optional<Bill>& bill) {
    m_billIsCurrent = bill.has_value();
    m_shownBill = bill.value_or(Bill());
    m_shownBillGone = false;
    Q_EMIT currentBillChanged();
}

void LibraryDocument::checkShownBill() {
    guarded({"frmEditor", "checkShownBill"}, [this] {
        if (m_shownBill.id == 0 || m_shownBillGone)
            return;
        const Recordset found = requireConnection(connection())
                                    .OpenRecordset(sql("SELECT Code FROM tblBill WHERE ID=", m_shownBill.id, ";"));
        m_shownBillGone = found.EndOfFile();
        if (m_shownBillGone)
            Q_EMIT shownBillLost();
        else
            m_shownBill.code = found.text("Code");
    });
}
