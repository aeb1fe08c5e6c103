#include "app/controls/GridHeader.h"

#include <QPainter>
#include <QScopedValueRollback>

#include "app/base/UserSettings.h"
#include "app/controls/GridModel.h"
#include "app/controls/Style.h"

using namespace Qt::StringLiterals;

namespace {

constexpr int margin = 6;

QSettings widthSettings() { return userSettings(u"columns"_s); }

QString widthKey(const KeyedGrid& grid, int column) { return grid.objectName() + u'/' + grid.key(column); }

}  // namespace

GridHeader::GridHeader(KeyedGrid* grid) : QHeaderView(Qt::Horizontal, grid), m_grid(grid) {
    setSectionsClickable(false);
    setHighlightSections(false);
    setSectionResizeMode(QHeaderView::Interactive);
    setMinimumSectionSize(12);
    connect(this, &QHeaderView::sectionResized, this, [this](int section, int, int size) {
        const int least = captionWidth(section);
        if (size > 0 && size < least)
            resizeSection(section, least);
        if (m_userActs)
            m_userResized = section;
    });
}

void GridHeader::mouseMoveEvent(QMouseEvent* event) {
    const QScopedValueRollback userActs(m_userActs, true);
    QHeaderView::mouseMoveEvent(event);
}

void GridHeader::mouseDoubleClickEvent(QMouseEvent* event) {
    const QScopedValueRollback userActs(m_userActs, true);
    QHeaderView::mouseDoubleClickEvent(event);
}

void GridHeader::mouseReleaseEvent(QMouseEvent* event) {
    QHeaderView::mouseReleaseEvent(event);
    const int section = std::exchange(m_userResized, -1);
    if (section < 0)
        return;
    m_chosen.insert(section, sectionSize(section));
    if (!m_grid->objectName().isEmpty())
        widthSettings().setValue(widthKey(*m_grid, section), sectionSize(section));
    grow();
}

int GridHeader::ownWidth(int section) const {
    constexpr int twipsPerInch = 1440;
    const int twips = static_cast<const GridModel*>(model())->column(section).twips;
    return qMax(twips * logicalDpiX() / twipsPerInch, captionWidth(section));
}

void GridHeader::layOut() {
    const QSettings settings = widthSettings();
    for (int section = 0; section < count(); ++section) {
        const int width = settings.value(widthKey(*m_grid, section)).toInt();
        if (width > 0 && !m_grid->objectName().isEmpty())
            m_chosen.insert(section, width);
        if (!isSectionHidden(section))
            resizeSection(section, m_chosen.value(section, ownWidth(section)));
        // The marker column has no text that could need room.
        if (m_grid->key(section).isEmpty())
            setSectionResizeMode(section, Fixed);
    }
    grow();
}

void GridHeader::grow() {
    if (m_growing < 0 || m_chosen.contains(m_growing))
        return;
    const int room = m_grid->viewport()->width() - (length() - sectionSize(m_growing));
    resizeSection(m_growing, qMax(qMax(ownWidth(m_growing) / 3, captionWidth(m_growing)), room));
}

void GridHeader::setMergesEqual(bool on) {
    m_mergesEqual = on;
    viewport()->update();
}

int GridHeader::captionWidth(int section) const {
    const QString caption = model()->headerData(section, orientation(), Qt::DisplayRole).toString();
    return caption.isEmpty() ? 0 : fontMetrics().horizontalAdvance(caption) + 2 * margin;
}

/// Without measuring every caption: the table asks for the height alone.
QSize GridHeader::sizeHint() const { return {length(), fontMetrics().height() + 10}; }

/// The next shown section in that direction when it is to merge with `section`, else -1.
int GridHeader::neighbour(int section, int step) const {
    int visual = visualIndex(section) + step;
    while (visual >= 0 && visual < count() && isSectionHidden(logicalIndex(visual)))
        visual += step;
    if (visual < 0 || visual >= count())
        return -1;
    const int found = logicalIndex(visual);
    const auto caption = [this](int of) { return model()->headerData(of, orientation(), Qt::DisplayRole).toString(); };
    return !caption(section).isEmpty() && caption(section) == caption(found) ? found : -1;
}

void GridHeader::paintEvent(QPaintEvent* event) {
    QHeaderView::paintEvent(event);
    // The row goes on beside the last section.
    const QRect rest = viewport()->rect().adjusted(length() - offset(), 0, 0, 0);
    if (rest.isEmpty())
        return;
    QPainter painter(viewport());
    painter.fillRect(rest, Theme::header);
    painter.setPen(Theme::headerLine);
    painter.drawLine(rest.bottomLeft(), rest.bottomRight());
}

void GridHeader::paintSection(QPainter* painter, const QRect& rect, int section) const {
    QRect cell = rect;
    if (m_mergesEqual) {
        for (int left = neighbour(section, -1); left >= 0; left = neighbour(left, -1))
            cell.setLeft(sectionViewportPosition(left));
        for (int right = neighbour(section, 1); right >= 0; right = neighbour(right, 1))
            cell.setRight(sectionViewportPosition(right) + sectionSize(right) - 1);
    }
    painter->save();
    painter->fillRect(cell, Theme::header);
    painter->setPen(Theme::headerLine);
    painter->drawLine(cell.bottomLeft(), cell.bottomRight());
    painter->drawLine(cell.topRight(), cell.bottomRight());
    painter->setPen(palette().color(QPalette::Text));
    const auto alignment = Qt::Alignment(model()->headerData(section, orientation(), Qt::TextAlignmentRole).toInt());
    painter->drawText(cell.adjusted(margin, 0, -margin, -1), static_cast<int>(alignment | Qt::AlignVCenter),
                      model()->headerData(section, orientation(), Qt::DisplayRole).toString());
    painter->restore();
}
