#include "app/shell/LibraryArea.h"

#include <QMdiSubWindow>
#include <QPainter>

using namespace Qt::StringLiterals;

LibraryArea::LibraryArea(QWidget* parent) : QMdiArea(parent) {
    setBackground(palette().color(QPalette::Window).darker(110));
    // A window that leaves room beside it would leave the words there.
    connect(this, &QMdiArea::subWindowActivated, viewport(), qOverload<>(&QWidget::update));
}

void LibraryArea::paintEvent(QPaintEvent* event) {
    QMdiArea::paintEvent(event);
    if (!subWindowList().isEmpty())
        return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::WindowText));
    painter.drawText(viewport()->rect(), Qt::AlignCenter, u"按 Ctrl+O 打开清单库，按 Ctrl+N 新建清单库"_s);
}
