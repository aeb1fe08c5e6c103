#pragma once

#include <QAbstractTableModel>
#include <QStringList>

#include "app/controls/KeyedGrid.h"

/// What a column's drop-down list text says.
struct ComboList {
    QString source;
    bool ellipsis = false;
    std::vector<std::pair<QString, QString>> items;  ///< stored value, text

    explicit ComboList(const QString& list = {});
    bool isDropDown() const { return !ellipsis && !items.empty(); }
    int find(const QString& value) const;
};

/// The rows of a KeyedGrid: flat, keyed, each with an outline level.
class GridModel : public QAbstractTableModel {
public:
    using QAbstractTableModel::QAbstractTableModel;

    using Row = GridRow;

    void setColumns(std::vector<GridColumn> columns);
    const GridColumn& column(int column) const { return m_columns[static_cast<std::size_t>(column)]; }
    int columns() const { return static_cast<int>(m_columns.size()); }
    int find(const QString& key) const;
    const ComboList& list(int column) const { return m_lists[static_cast<std::size_t>(column)]; }
    void setList(int column, const QString& list);

    int rows() const { return static_cast<int>(m_rows.size()); }
    const Row& row(int row) const { return m_rows[static_cast<std::size_t>(row)]; }
    bool contains(int row) const { return row >= 0 && row < rows(); }
    /// A row with these cells, which is not in the grid yet.
    Row made(KeyedGrid::Cells cells, int level) const;
    void insert(int at, std::vector<Row> rows);
    void remove(int first, int count);
    void setCollapsed(int row, bool collapsed);
    bool hasCollapsed() const { return m_collapsed > 0; }
    /// Whether the row after `row` is below it in the outline.
    bool isParent(int row) const { return row + 1 < rows() && this->row(row + 1).level > this->row(row).level; }

    QString text(int row, int column) const;
    void setText(int row, int column, const QString& text);
    bool isPending(int row, int column) const { return m_rows[static_cast<std::size_t>(row)].pending >> column & 1U; }
    void setPending(int row, int column, bool pending);

    /// The column that shows the outline, or -1 when the rows are none.
    int outlineColumn() const { return m_outlineColumn; }
    void setOutlineColumn(int column) { m_outlineColumn = column; }

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : rows(); }
    int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : columns(); }
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QString description(int row, int column) const;

    std::vector<GridColumn> m_columns;
    std::vector<QByteArray> m_keys;
    std::vector<ComboList> m_lists;
    std::vector<Row> m_rows;
    std::ptrdiff_t m_collapsed = 0;
    int m_outlineColumn = -1;
};
