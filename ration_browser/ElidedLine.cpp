#include "ration_browser/ElidedLine.h"

#include <QPainter>
#include <QStyle>

#include "app/controls/Marks.h"

ElidedLine::ElidedLine(QWidget* parent) : QLabel(parent) {
    setTextFormat(Qt::PlainText);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void ElidedLine::setLine(const QString& line) {
    setText(Theme::oneLine(line));
    setToolTip(Theme::plainToolTip(line));
}

QSize ElidedLine::minimumSizeHint() const { return {0, fontMetrics().height()}; }

void ElidedLine::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideMiddle, contentsRect().width());
    style()->drawItemText(&painter, contentsRect(), Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, palette(),
                          isEnabled(), shown, foregroundRole());
}
