#include "editor/common/LibraryHistory.h"

#include <QScopedValueRollback>
#include <utility>

#include "app/base/Error.h"
#include "app/base/Guarded.h"
#include "app/base/MessageBox.h"
#include "editor/common/InSavepoint.h"
#include "storage/Connection.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype mostBytes = 64 << 20;
/// The number of SQLite's error for a file that others are using.
constexpr int isBusy = 5;

}  // namespace

LibraryHistory::LibraryHistory(Connection& connection, LibraryView& view)
    : m_connection(connection), m_view(view), m_changes(connection), m_shown(connection) {
    m_connection.beforeWriting = [this] { aboutToWrite(); };
    connect(&UserEvent::instance(), &UserEvent::over, this, &LibraryHistory::eventIsOver);
}

LibraryHistory::~LibraryHistory() { m_connection.beforeWriting = nullptr; }

/// Throws Error when the file is no library any more.
void LibraryHistory::expectLibrary() { m_connection.OpenRecordset("SELECT ID FROM main.tblSyb LIMIT 1;"); }

void LibraryHistory::aboutToWrite() {
    if (m_shown.isChanged()) {
        expectLibrary();
        throw Error(isBusy, u"另一个程序刚刚修改了这个清单库，操作没有执行。窗口将按文件重新显示，请再操作一次"_s);
    }
    if (!std::exchange(m_isStepBegun, true))
        m_before = m_view.place();
}

void LibraryHistory::forget() {
    m_unnamed.clear();
    m_done.clear();
    m_undone.clear();
}

/// What kind of changes were written since the last step.
ChangeRecorder::Extent LibraryHistory::takeChanges() {
    using Extent = ChangeRecorder::Extent;
    QByteArray changes;
    Extent extent = Extent::NothingSeen;
    bool isOurs = false;
    const bool isTaken = succeeds([&] {
        changes = m_changes.take();
        extent = m_changes.extentOf(changes);
        isOurs = !m_shown.isChanged();
    });
    m_isStepBegun = false;
    m_shown.acceptOwnWrites();
    // The record is made after the commit: another program's write in between would stand in it as the user's own.
    if (!isTaken || !isOurs) {
        forget();
        return Extent::NothingSeen;
    }
    if (!changes.isEmpty())
        m_unnamed.push_back(changes);
    return extent;
}

void LibraryHistory::did(const QString& what) {
    if (m_together) {
        *m_together << what;
        return;
    }
    const ChangeRecorder::Extent extent = takeChanges();
    if (extent == ChangeRecorder::Extent::NothingSeen)
        return;
    const bool isOneRow = m_unnamed.size() == 1 && extent == ChangeRecorder::Extent::OneRow;
    m_done.push_back({what, std::exchange(m_unnamed, {}), m_before, m_view.place(), m_othersWrites, isOneRow});
    m_undone.clear();
    dropOldest();
    Q_EMIT said(u"已"_s + what, m_done.empty() ? Offer::Nothing : Offer::Undo);
}

void LibraryHistory::asOneStep(const std::function<void()>& edits) {
    // The line that is refused is told of when the lines above are in the file and nobody has to wait for it.
    const MessagesWait refusals;
    QStringList together;
    m_together = &together;
    const bool isWritten = inSavepoint("pasteLines", &m_connection, [&](Connection&) {
        edits();
        return true;
    });
    m_together = nullptr;
    if (together.isEmpty())
        return;
    if (isWritten)
        did(together.size() == 1 ? together.first() : u"粘贴 %1 行"_s.arg(together.size()));
    else
        m_view.showAfresh(m_view.place());
}

void LibraryHistory::dropOldest() {
    qsizetype bytes = 0;
    for (const Step& step : m_done)
        for (const QByteArray& changes : step.changes)
            bytes += changes.size();
    for (; bytes > mostBytes && !m_done.empty(); m_done.pop_front())
        for (const QByteArray& changes : m_done.front().changes)
            bytes -= changes.size();
}

/// Whether the step's rows were as it needs them: what it did is taken back then, or done once more. Throws Error; then
/// and otherwise nothing is written.
bool LibraryHistory::apply(const Step& step, ChangeRecorder::Direction direction) {
    if (step.othersWrites != m_othersWrites && !step.isOneRow)
        return false;
    m_connection.commitLeftovers();
    takeChanges();
    m_connection.Execute("BEGIN;");
    try {
        m_connection.prepareToWrite();
        QList<QByteArray> unnamed = m_unnamed;
        bool applies = true;
        while (applies && !unnamed.isEmpty())
            applies = m_changes.apply(unnamed.takeLast(), ChangeRecorder::Direction::Backward);
        QList<QByteArray> changes = step.changes;
        while (applies && !changes.isEmpty())
            applies = m_changes.apply(
                direction == ChangeRecorder::Direction::Backward ? changes.takeLast() : changes.takeFirst(), direction);
        m_connection.Execute(applies ? SqlText("COMMIT;") : SqlText("ROLLBACK;"));
        m_unnamed.clear();
        takeChanges();
        return applies;
    } catch (...) {
        m_isStepBegun = false;
        if (m_connection.isInTransaction())
            m_connection.Execute("ROLLBACK;");
        throw;
    }
}

void LibraryHistory::go(ChangeRecorder::Direction direction) {
    const bool back = direction == ChangeRecorder::Direction::Backward;
    guarded({"LibraryHistory", back ? "undo" : "redo"}, [&] {
        if (!m_view.commitPending())
            return;
        // What stands in the window alone goes first.
        if (ViewPlace place = m_view.place(); back && !place.blankRation.contID.isEmpty()) {
            place.blankRation = {};
            m_view.showAfresh(place);
            Q_EMIT said(u"已撤消：添加定额"_s, Offer::Nothing);
            return;
        }
        Steps& from = back ? m_done : m_undone;
        Steps& to = back ? m_undone : m_done;
        if (from.empty()) {
            Q_EMIT said(back ? u"没有可以撤消的操作"_s : u"没有可以重做的操作"_s, Offer::Nothing);
            return;
        }
        const Step step = from.back();
        if (!apply(step, direction)) {
            // Steps that came before it only fit what it would have left.
            from.clear();
            Q_EMIT said((back ? u"不能撤消："_s : u"不能重做："_s) + step.what + u"。另一个程序已经修改了有关的内容"_s,
                        Offer::Nothing);
            return;
        }
        to.push_back(step);
        if (!from.empty())
            from.pop_back();
        ViewPlace place = back ? step.before : step.after;
        place.blankRation = {};
        m_view.showAfresh(place);
        Q_EMIT said((back ? u"已撤消："_s : u"已重做："_s) + step.what, back ? Offer::Redo : Offer::Undo);
    });
}

bool LibraryHistory::showChangesOfOthers() {
    return guarded({"LibraryHistory", "showChangesOfOthers"}, [this] {
        // What is not committed yet is known to nobody else, and nobody else can write.
        if (m_isShowing || m_connection.isInTransaction())
            return false;
        bool isChanged = false;
        if (!succeeds([&] { isChanged = m_shown.isChanged(); }))
            return false;
        // What is being written just now touches the file, too.
        if (!isChanged && (m_isStepBegun || !m_shown.isTouched()))
            return false;
        const QScopedValueRollback showing(m_isShowing, true);
        // What is no library any more is told of when the user reads or writes it: here it would be told without end,
        // because closing a message makes the window active again.
        if (!succeeds([&] { expectLibrary(); }))
            return false;
        if (!m_shown.accept())
            return false;
        if (isChanged) {
            ++m_othersWrites;
            m_unnamed.clear();
            if (m_changes.hasChanges() || m_changes.hasOtherTables())
                forget();
            m_changes.begin();
        }
        m_view.showAfresh(m_view.place());
        if (isChanged)
            Q_EMIT said(u"另一个程序修改了这个清单库，已重新显示"_s, Offer::Nothing);
        return true;
    });
}

void LibraryHistory::eventIsOver() {
    // A command that failed half-way leaves what it has done, and says nothing of it.
    if (m_isStepBegun)
        did(u"执行了一部分没有完成的操作"_s);
    if (std::exchange(m_hasLeftovers, m_connection.isInTransaction()))
        m_shown.acceptOwnWrites();
    showChangesOfOthers();
}
