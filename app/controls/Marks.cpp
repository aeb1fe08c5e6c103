#include "app/controls/Marks.h"

#include <QPainter>
#include <QPainterPath>

#include "app/controls/Style.h"

using namespace Qt::StringLiterals;

namespace {
constexpr qsizetype mostShown = 2000;
}

void Theme::drawArrow(QPainter* painter, const QRect& rect, bool open) {
    const QPointF centre = QRectF(rect).center();
    QPainterPath path;
    if (open) {
        path.moveTo(centre + QPointF(-4, -2));
        path.lineTo(centre + QPointF(0, 2));
        path.lineTo(centre + QPointF(4, -2));
    } else {
        path.moveTo(centre + QPointF(-2, -4));
        path.lineTo(centre + QPointF(2, 0));
        path.lineTo(centre + QPointF(-2, 4));
    }
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(Theme::mutedText, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter->drawPath(path);
    painter->restore();
}

void Theme::drawCheck(QPainter* painter, const QRect& rect, bool checked) {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(checked ? Theme::accent : Theme::mutedText, 1));
    painter->setBrush(checked ? Theme::accent : Theme::paper);
    painter->drawRoundedRect(QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5), 2.5, 2.5);
    if (checked) {
        const QPointF corner = rect.topLeft();
        painter->setPen(QPen(Theme::paper, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter->drawPolyline(
            QPolygonF{corner + QPointF(3.5, 7.5), corner + QPointF(6.5, 10.5), corner + QPointF(11.5, 4.5)});
    }
    painter->restore();
}

void Theme::drawButton(QPainter* painter, const QRect& rect) {
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Theme::headerLine);
    painter->setBrush(Theme::header);
    painter->drawRoundedRect(QRectF(rect).adjusted(0.5, 0.5, -0.5, -0.5), 2.5, 2.5);
    painter->setPen(Qt::NoPen);
    painter->setBrush(Theme::text);
    for (const int x : {-4, 0, 4})
        painter->drawEllipse(QRectF(rect).center() + QPointF(x, 0), 1.2, 1.2);
    painter->restore();
}

void Theme::drawRowMarker(QPainter* painter, const QRect& rect) {
    const QPointF centre = QRectF(rect).center();
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(Qt::NoPen);
    painter->setBrush(Theme::accent);
    painter->drawPolygon(
        QPolygonF{centre + QPointF(-2.5, -4.5), centre + QPointF(2.5, 0), centre + QPointF(-2.5, 4.5)});
    painter->restore();
}

QString Theme::oneLine(const QString& whole) { return whole.left(mostShown).replace(u'\n', u' ').remove(u'\r'); }

QString Theme::plainToolTip(const QString& whole) {
    return u"<div style='white-space: pre-wrap'>%1</div>"_s.arg(whole.left(mostShown).toHtmlEscaped());
}
