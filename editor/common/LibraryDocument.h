#pragma once

#include <QObject>
#include <QString>
#include <memory>
#include <optional>

#include "editor/common/Codes.h"
#include "editor/common/LibraryHistory.h"
#include "editor/common/Listing.h"
#include "storage/Connection.h"

/// One open library: the connection on its file, and what its window shows of it.
///
/// It alone knows which chapter is current, what the bill list lists and which bill the details belong to. Panes tell
/// it what the user chose and hear by its signals what to show; commands and their enabled rules ask it.
class LibraryDocument : public QObject {
    Q_OBJECT

public:
    /// Without a view, which must outlive the document, nothing can be undone.
    explicit LibraryDocument(LibraryView* view = nullptr);
    ~LibraryDocument() override;

    /// Opens the library file at `path` (created when missing). False after a recorded error; there is no connection
    /// then.
    [[nodiscard]] bool open(const QString& path);
    /// Commits what is open, detaches the companion file and closes the connection. A connection that cannot be
    /// detached or closed stays open until the process ends.
    void close();
    /// The connection on the library; null when it is not open.
    Connection* connection() const { return m_connection.get(); }

    /// The steps done in this window; null when the library is not open.
    LibraryHistory* history() const { return m_history.get(); }
    /// Something was written to the library, as a step that can be taken back; `what` says in words what was done.
    void did(const QString& what);
    /// Runs several edits as one step.
    void asOneStep(const std::function<void()>& edits);

    /// Id of the library's default ration library; empty when it has none.
    const QString& defaultRationLibrary() const { return m_defaultRationLibrary; }
    void setDefaultRationLibrary(const QString& dekId) { m_defaultRationLibrary = dekId; }

    /// Code of the current chapter; empty when none is.
    const QString& chapter() const { return m_chapter; }
    const Listing& listing() const { return m_listing; }
    bool listsQuery() const { return m_listing.of == Listing::Of::Query; }

    /// Makes a chapter current (none when `code` is empty) and leaves the bill list as it is.
    void setChapter(const QString& code);
    /// Makes a chapter current and lists its bills; on a higher level there are none to list. What is being typed is
    /// committed first; where that is refused, nothing changes.
    void showChapter(const QString& code);
    /// Lists the bills of all chapters whose codes contain `text`; no chapter is current then.
    void showQuery(const QString& text);
    /// Lists the chapter again that was current before the query.
    void leaveQuery();
    /// The bills that were to be listed could not be read.
    void listingFailed() { m_listing.failed = true; }

    /// The bill in the current row of the list; null when there is none.
    const Bill* currentBill() const { return m_billIsCurrent ? &m_shownBill : nullptr; }
    /// The bill whose details are shown, id 0 for none: the current one, or the one that was current before a chapter
    /// of a higher level was clicked.
    const Bill& shownBill() const { return m_shownBill; }
    /// Whether the bill shown has been deleted: its details take no edits and no commands.
    bool isShownBillGone() const { return m_shownBillGone; }

    /// Another bill is current, or none: its details are to be shown.
    void setCurrentBill(const std::optional<Bill>& bill);
    /// No bill is current any more, but the details of the last one stay.
    void leaveCurrentBill() { m_billIsCurrent = false; }
    /// The bill shown has got another code.
    void setShownBillCode(const QString& code) { m_shownBill.code = code; }
    /// Reads again whether there still is the bill shown, and which code it has: chapters were deleted or moved.
    void checkShownBill();

    /// Shows the library as it is now: the chapter `chapter` is current, `listing` is listed, and the details are those
    /// of `bill` when there is one of that id.
    void showAfresh(const QString& chapter, const Listing& listing, const Bill& bill);

Q_SIGNALS:
    /// Another chapter is current, or none.
    void chapterChanged();
    /// listing() is to be shown.
    void listingChanged();
    /// currentBill() is to be shown in detail.
    void currentBillChanged();
    /// The bill shown has been deleted.
    void shownBillLost();
    /// Something the user should know, in words for the status bar.
    void said(const QString& text, LibraryHistory::Offer offer = LibraryHistory::Offer::Nothing);

private:
    void show(const QString& chapter, const Listing& listing);

    LibraryView* m_view;
    std::unique_ptr<Connection> m_connection;
    std::unique_ptr<LibraryHistory> m_history;
    QString m_defaultRationLibrary;
    QString m_chapter;
    QString m_chapterBeforeQuery;
    Listing m_listing;
    Bill m_shownBill;
    bool m_billIsCurrent = false;
    bool m_shownBillGone = false;
};
