#include "app/controls/GridModel.h"

#include <algorithm>
#include <iterator>

#include "app/controls/CheckState.h"

using namespace Qt::StringLiterals;

ComboList::ComboList(const QString& list) : source(list) {
    if (list.startsWith(u"|..."_s)) {
        ellipsis = true;
        return;
    }
    if (list.isEmpty())
        return;
    for (const QString& entry : list.split(u'|')) {
        const auto end = entry.indexOf(u';');
        if (entry.startsWith(u'#') && end > 0)
            items.emplace_back(entry.mid(1, end - 1), entry.mid(end + 1));
        else
            items.emplace_back(entry, entry);
    }
}

int ComboList::find(const QString& value) const {
    for (std::size_t i = 0; i < items.size(); ++i)
        if (items[i].first == value)
            return static_cast<int>(i);
    return -1;
}

void GridModel::setColumns(std::vector<GridColumn> columns) {
    beginResetModel();
    m_columns = std::move(columns);
    m_rows.clear();
    m_collapsed = 0;
    m_keys.clear();
    for (const GridColumn& column : m_columns)
        m_keys.push_back(column.key.toUtf8());
    m_lists.assign(m_columns.size(), ComboList());
    endResetModel();
}

int GridModel::find(const QString& key) const {
    for (int i = 0; i < columns(); ++i)
        if (!key.isEmpty() && column(i).key.compare(key, Qt::CaseInsensitive) == 0)
            return i;
    return -1;
}

void GridModel::setList(int column, const QString& list) {
    m_lists[static_cast<std::size_t>(column)] = ComboList(list);
    if (rows() > 0)
        Q_EMIT dataChanged(index(0, column), index(rows() - 1, column));
}

GridModel::Row GridModel::made(KeyedGrid::Cells cells, int level) const {
    Row row{std::vector<CellText>(m_columns.size()), level};
    // Cells mostly come in the order of the columns, so each is looked for from behind the one before.
    std::size_t next = 0;
    for (const auto& [key, text] : cells)
        for (std::size_t tried = 0; tried < m_keys.size(); ++tried) {
            const std::size_t column = (next + tried) % m_keys.size();
            if (qstricmp(key, m_keys[column].constData()) == 0) {
                row.cells[column] = text;
                next = column + 1;
                break;
            }
        }
    return row;
}

void GridModel::insert(int at, std::vector<Row> rows) {
    if (rows.empty())
        return;
    beginInsertRows({}, at, at + static_cast<int>(rows.size()) - 1);
    m_rows.insert(m_rows.begin() + at, std::make_move_iterator(rows.begin()), std::make_move_iterator(rows.end()));
    endInsertRows();
}

void GridModel::remove(int first, int count) {
    beginRemoveRows({}, first, first + count - 1);
    const auto begin = m_rows.begin() + first;
    m_collapsed -= std::count_if(begin, begin + count, [](const Row& row) { return row.collapsed; });
    m_rows.erase(begin, begin + count);
    endRemoveRows();
}

void GridModel::setCollapsed(int row, bool collapsed) {
    bool& was = m_rows[static_cast<std::size_t>(row)].collapsed;
    m_collapsed += int(collapsed) - int(was);
    was = collapsed;
}

QString GridModel::text(int row, int column) const {
    if (!contains(row) || column < 0)
        return {};
    return m_rows[static_cast<std::size_t>(row)].cells[static_cast<std::size_t>(column)].text();
}

void GridModel::setText(int row, int column, const QString& text) {
    if (!contains(row) || column < 0)
        return;
    m_rows[static_cast<std::size_t>(row)].cells[static_cast<std::size_t>(column)] = text;
    Q_EMIT dataChanged(index(row, column), index(row, column));
}

void GridModel::setPending(int row, int column, bool pending) {
    if (!contains(row) || column < 0)
        return;
    quint32& bits = m_rows[static_cast<std::size_t>(row)].pending;
    bits = pending ? bits | 1U << column : bits & ~(1U << column);
    Q_EMIT dataChanged(index(row, column), index(row, column));
}

Qt::ItemFlags GridModel::flags(const QModelIndex& index) const {
    if (!index.isValid())
        return Qt::NoItemFlags;
    const Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
    const GridColumn& look = column(index.column());
    if (look.key.isEmpty())
        return flags;
    return flags | (look.look == GridColumn::Look::Text ? Qt::ItemIsEditable : Qt::ItemIsUserCheckable);
}

/// What only the eye sees of a cell.
QString GridModel::description(int row, int column) const {
    QStringList told;
    if (column == m_outlineColumn) {
        told << u"第 %1 级"_s.arg(this->row(row).level + 1);
        if (isParent(row))
            told << (this->row(row).collapsed ? u"已收起"_s : u"已展开"_s);
    }
    if (list(column).isDropDown())
        told << u"下拉列表"_s;
    if (isPending(row, column))
        told << u"未写入文件"_s;
    return told.join(u'，');
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || !contains(index.row()))
        return {};
    const QString value = text(index.row(), index.column());
    const GridColumn& look = column(index.column());
    switch (role) {
        case Qt::DisplayRole: {
            if (look.look == GridColumn::Look::CheckBox)
                return {};
            const ComboList& choices = list(index.column());
            const int chosen = choices.find(value);
            return chosen < 0 ? value : choices.items[static_cast<std::size_t>(chosen)].second;
        }
        case Qt::EditRole:
            return value;
        case Qt::TextAlignmentRole:
            return QVariant::fromValue(look.cells);
        case Qt::CheckStateRole:
            if (look.look == GridColumn::Look::CheckBox)
                return value == CheckState::checked ? Qt::Checked : Qt::Unchecked;
            return {};
        case Qt::AccessibleTextRole:
            if (look.look == GridColumn::Look::CheckBox)
                return value == CheckState::checked ? u"已勾选"_s : u"未勾选"_s;
            return {};
        case Qt::AccessibleDescriptionRole:
            return description(index.row(), index.column());
        default:
            return {};
    }
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || section < 0 || section >= columns())
        return {};
    if (role == Qt::DisplayRole)
        return column(section).caption;
    if (role == Qt::TextAlignmentRole)
        return QVariant::fromValue(column(section).header);
    return {};
}
