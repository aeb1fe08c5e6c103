#include "app/shell/StatusLine.h"

#include "app/controls/Marks.h"

using namespace Qt::StringLiterals;

namespace {

const QString gap = u"　"_s;

}  // namespace

StatusLine::StatusLine(QWidget* parent) : QLabel(parent) {
    setObjectName(u"statusLine"_s);
    // A long text must not widen the window.
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    // The keys that the link names do the same.
    setTextInteractionFlags(Qt::LinksAccessibleByMouse);
}

void StatusLine::showLine(const QString& text, const QString& link) {
    m_line = Theme::oneLine(text);
    m_link = link;
    setToolTip(Theme::plainToolTip(text));
    fit();
}

void StatusLine::resizeEvent(QResizeEvent* event) {
    QLabel::resizeEvent(event);
    fit();
}

void StatusLine::fit() {
    const int room = contentsRect().width() - (m_link.isEmpty() ? 0 : fontMetrics().horizontalAdvance(gap + m_link));
    const QString line = fontMetrics().elidedText(m_line, Qt::ElideMiddle, room);
    setTextFormat(m_link.isEmpty() ? Qt::PlainText : Qt::RichText);
    setText(m_link.isEmpty() ? line : line.toHtmlEscaped() + gap + u"<a href='#'>"_s + m_link + u"</a>"_s);
}
