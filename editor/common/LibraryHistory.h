#pragma once

#include <QObject>
#include <QStringList>
#include <deque>
#include <functional>

#include "editor/common/LibraryView.h"
#include "storage/ChangeRecorder.h"
#include "storage/FileVersion.h"

class Connection;

/// The steps that were done in one library's window, to be taken back and done again; and what other programs write to
/// the same file.
///
/// A step is what a command or an edit wrote, however many rows; undoing it is one transaction. Nothing is written to
/// rows that were not what the file held when the window showed them: when another program has written, the window is
/// shown afresh first. A step that such a write may have touched is not undone, and nor are those before it.
class LibraryHistory : public QObject {
    Q_OBJECT

public:
    /// For the library open on `connection`, which must outlive the history. Throws Error.
    LibraryHistory(Connection& connection, LibraryView& view);
    ~LibraryHistory() override;

    /// What has been written since the last step is one more: `what` says in words what was done. What nobody sees, a
    /// time stamp, is no step: it goes with the next one, and is taken back with whatever is taken back first.
    void did(const QString& what);

    /// Runs `edits`, several edits of the user that are one to him: one step, in one transaction. When that fails, none
    /// of them was written, and the window is shown afresh.
    void asOneStep(const std::function<void()>& edits);

    /// Takes the last step back, or does the last one that was taken back once more, and shows where it happened. What
    /// is being typed is committed first.
    void undo() { go(ChangeRecorder::Direction::Backward); }
    void redo() { go(ChangeRecorder::Direction::Forward); }

    /// Shows the window afresh, at the same place, when another program has written or laid another file over this
    /// one. True when it did.
    bool showChangesOfOthers();

    /// What the user can do about what was said.
    enum class Offer { Nothing, Undo, Redo };

Q_SIGNALS:
    void said(const QString& text, Offer offer);

private:
    struct Step {
        QString what;
        /// One after the other.
        QList<QByteArray> changes;
        ViewPlace before;
        ViewPlace after;
        /// Which writes of others had been seen, and whether it is a row by itself: a step that adds, removes or
        /// renumbers rows only fits what stood beside them.
        int othersWrites = 0;
        bool isOneRow = false;
    };
    using Steps = std::deque<Step>;

    void go(ChangeRecorder::Direction direction);
    bool apply(const Step& step, ChangeRecorder::Direction direction);
    void expectLibrary();
    void aboutToWrite();
    void eventIsOver();
    ChangeRecorder::Extent takeChanges();
    void forget();
    void dropOldest();

    Connection& m_connection;
    LibraryView& m_view;
    ChangeRecorder m_changes;
    FileVersion m_shown;
    Steps m_done;
    Steps m_undone;
    /// What was written since the last step, and where the user was when that began.
    QList<QByteArray> m_unnamed;
    ViewPlace m_before;
    bool m_isStepBegun = false;
    /// What the edits have done that are one step; null when each is a step.
    QStringList* m_together = nullptr;
    /// Something could not be committed when the last event was over; it may be by now.
    bool m_hasLeftovers = false;
    int m_othersWrites = 0;
    bool m_isShowing = false;
};
