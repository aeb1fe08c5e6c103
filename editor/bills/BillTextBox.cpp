#include "editor/bills/BillTextBox.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QScopedValueRollback>

#include "app/base/Text.h"

using namespace Qt::StringLiterals;

namespace {

/// More than anybody writes for a bill. The box would lay a longer text out for seconds, one long line above all.
constexpr qsizetype longestText = 200'000;
constexpr qsizetype longestLine = 20'000;

/// How much of `text` the box shows.
qsizetype shownLength(const QString& text) {
    const qsizetype end = qMin(text.size(), longestText);
    qsizetype line = 0;
    for (qsizetype i = 0; i < end; ++i) {
        if (text[i] == u'\n' || text[i] == u'\r')
            line = i + 1;
        else if (i - line >= longestLine)
            return i;
    }
    return end;
}

QString lineEndOf(const QString& stored) {
    const bool onlyLineFeeds = stored.contains(u'\n') && !stored.contains(u"\r\n"_s);
    return onlyLineFeeds ? u"\n"_s : u"\r\n"_s;
}

}  // namespace

BillTextBox::BillTextBox(QWidget* parent)
    : QPlainTextEdit(parent), m_guard([this] {
          m_writtenByPress = isChanged();
          commitChange();
          return true;
      }) {
    setTabChangesFocus(true);
    setReadOnly(true);
}

void BillTextBox::showText(qint64 billId, const QString& stored) {
    // Nothing new: the cursor stays where it is.
    if (billId != 0 && billId == m_billId && stored == m_stored && !isChanged())
        return;
    m_billId = billId;
    const qsizetype shown = billId == 0 ? 0 : shownLength(stored);
    setReadOnly(billId == 0 || shown < stored.size());
    setPlainText(stored.left(shown));
    setStored(billId == 0 ? QString() : stored);
}

void BillTextBox::setStored(const QString& stored) {
    m_stored = stored;
    m_shown = shownText();
}

/// The document's own text: toPlainText() would turn no-break spaces into blanks.
QString BillTextBox::shownText() const { return document()->toRawText(); }

bool BillTextBox::isChanged() const { return m_billId != 0 && shownText() != m_shown; }

QString BillTextBox::text() const {
    return isChanged() ? shownText().replace(QChar::ParagraphSeparator, lineEndOf(m_stored)) : m_stored;
}

void BillTextBox::commitChange() {
    if (hasFocus())
        PressGuard::finishComposing();
    if (isChanged())
        write();
}

void BillTextBox::write() {
    // validate() may show a message box; the box takes the focus, which would lead here again.
    if (m_writing || m_billId == 0 || !validate || (beforeWrite && beforeWrite() && !isChanged()))
        return;
    const QScopedValueRollback writing(m_writing, true);
    if (const QString shown = shownText(); !shown.isValidUtf16())
        setPlainText(wholeCharacters(shown));
    validate();
}

// For Shift+Enter the toolkit inserts U+2028, which other programs do not take for a line end: begin a paragraph
// instead.
void BillTextBox::keyPressEvent(QKeyEvent* event) {
    if (isReadOnly() || !event->matches(QKeySequence::InsertLineSeparator)) {
        QPlainTextEdit::keyPressEvent(event);
        return;
    }
    textCursor().insertBlock();
    ensureCursorVisible();
}

void BillTextBox::insertFromMimeData(const QMimeData* source) {
    QMimeData pasted;
    pasted.setText(source->text().replace(QChar::LineSeparator, u'\n'));
    QPlainTextEdit::insertFromMimeData(&pasted);
}

void BillTextBox::focusInEvent(QFocusEvent* event) {
    QPlainTextEdit::focusInEvent(event);
    m_guard.watch(this);
}

void BillTextBox::focusOutEvent(QFocusEvent* event) {
    QPlainTextEdit::focusOutEvent(event);
    m_guard.watch(nullptr);
    const Qt::FocusReason reason = event->reason();
    const bool borrowed =
        reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason || reason == Qt::MenuBarFocusReason;
    // When a mouse press moves the focus, PressGuard has had the change written already.
    const bool written = std::exchange(m_writtenByPress, false) && !isChanged();
    if (borrowed || m_leftByProgram)
        commitChange();
    else if (!written)
        write();
}
