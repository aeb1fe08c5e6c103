#pragma once

#include <QStyledItemDelegate>

class KeyedGrid;

/// Paints the cells of a KeyedGrid and makes their editors. When an edit ends is the grid's affair.
class GridDelegate : public QStyledItemDelegate {
public:
    explicit GridDelegate(KeyedGrid* grid);

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    /// As wide as the whole cell needs; rows have a height of their own.
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override;
    void updateEditorGeometry(QWidget* editor, const QStyleOptionViewItem& option,
                              const QModelIndex& index) const override;
    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

    /// Parts of the cell `index` that occupies `cell`; empty when the cell has no such part.
    QRect arrowRect(const QRect& cell, const QModelIndex& index) const;
    QRect buttonRect(const QRect& cell, const QModelIndex& index) const;
    QRect checkRect(const QRect& cell, const QModelIndex& index) const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QRect textRect(const QRect& cell, const QModelIndex& index) const;
    QFont fontOf(const QStyleOptionViewItem& option, const QModelIndex& index) const;

    KeyedGrid* m_grid;
};
