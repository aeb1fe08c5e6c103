#pragma once

#include <QStyledItemDelegate>

class GridModel;
class KeyedGrid;

/// Paints the cells of a KeyedGrid and knows where their parts are.
class GridDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    explicit GridDelegate(KeyedGrid* grid);

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    /// As wide as the whole cell needs; rows have a height of their own.
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

    /// A part of a cell that the mouse can press.
    enum class Part { None, Arrow, Button, Check, List };
    /// The part of the cell `index` at `position` in the viewport.
    Part partAt(const QPoint& position, const QModelIndex& index) const;
    /// Whether the current cell shows that it has a drop-down list.
    void setListOffered(bool offered) { m_listOffered = offered; }

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
    /// Where the text of the cell `index`, which occupies `cell`, stands.
    QRect textRect(const QRect& cell, const QModelIndex& index) const;
    const GridModel& model() const;

    KeyedGrid* const m_grid;

private:
    QRect arrowRect(const QRect& cell, const QModelIndex& index) const;
    QRect checkRect(const QRect& cell, const QModelIndex& index) const;
    Part endPart(const QModelIndex& index) const;
    QRect endRect(const QRect& cell, const QModelIndex& index) const;
    void paintParts(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const;

    bool m_listOffered = false;
};
