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

LibraryDocument::~LibraryDocument() { close(); }

bool LibraryDocument::open(const QString& path) {
    m_connection = GetOrmConn(path);
    return m_connection != nullptr;
}

void LibraryDocument::close() {
    if (!m_connection)
        return;
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

void LibraryDocument::setChapter(const QString& code) {
    m_chapter = code;
    Q_EMIT chapterChanged();
}

void LibraryDocument::showChapter(const QString& code) {
    if (holdsBills(code))
        show(code, {Listing::Of::Chapter, code});
    else
        show(code, {});
}

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
    const bool leaves = mayLeave();
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
