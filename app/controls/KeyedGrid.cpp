#include "app/controls/KeyedGrid.h"

#include <QEvent>
#include <QScopedValueRollback>

#include "app/base/Text.h"
#include "app/base/UserEvent.h"
#include "app/controls/GridDelegate.h"
#include "app/controls/GridHeader.h"
#include "app/controls/GridModel.h"

KeyedGrid::KeyedGrid(QWidget* parent)
    : QTableView(parent),
      m_model(new GridModel(this)),
      m_delegate(new GridDelegate(this)),
      m_header(new GridHeader(this)) {
    setModel(m_model);
    setItemDelegate(m_delegate);
    setHorizontalHeader(m_header);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    setSelectionBehavior(SelectRows);
    setSelectionMode(SingleSelection);
    setEditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed);
    setVerticalScrollMode(ScrollPerItem);
    setHorizontalScrollMode(ScrollPerPixel);
    // Tab goes on to the next pane.
    setTabKeyNavigation(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    fitSizes();
    // A procedure that failed half-way through must not leave the grid dead.
    connect(&UserEvent::instance(), &UserEvent::over, this, [this] {
        if (m_model->isCollecting())
            setRedraw(true);
    });
}

KeyedGrid::~KeyedGrid() {
    // An editor that goes with the grid asks nobody: those who would answer may be gone already.
    delete m_delegate;
}

void KeyedGrid::setColumns(std::vector<GridColumn> columns) {
    m_model->setColumns(std::move(columns));
    m_row = -1;
    for (int i = 0; i < m_model->columns(); ++i)
        setColumnHidden(i, !m_model->column(i).shown);
    m_column = firstColumn();
    fitSizes();
}

void KeyedGrid::fitSizes() {
    const int height = fontMetrics().height() + 9;
    verticalHeader()->setMinimumSectionSize(height);
    verticalHeader()->setDefaultSectionSize(height);
    for (int i = 0; i < m_model->columns(); ++i) {
        const GridColumn& column = m_model->column(i);
        if (column.shown)
            setColumnWidth(i, widthOf(i));
        if (column.key.isEmpty())
            m_header->setSectionResizeMode(i, QHeaderView::Fixed);
    }
    growColumn();
}

/// The width that a column is laid out with.
int KeyedGrid::widthOf(int column) const {
    constexpr int twipsPerInch = 1440;
    return qMax(m_model->column(column).twips * logicalDpiX() / twipsPerInch, m_header->captionWidth(column));
}

void KeyedGrid::setGrowingColumn(const QString& key) {
    m_growingColumn = column(key);
    growColumn();
}

void KeyedGrid::growColumn() {
    if (m_growingColumn < 0)
        return;
    const int others = m_header->length() - columnWidth(m_growingColumn);
    setColumnWidth(m_growingColumn, qMax(widthOf(m_growingColumn), viewport()->width() - others));
}

void KeyedGrid::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    growColumn();
}

void KeyedGrid::changeEvent(QEvent* event) {
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        fitSizes();
}

/// The first column that a cell can be current in.
int KeyedGrid::firstColumn() const {
    for (int i = 0; i < m_model->columns(); ++i)
        if (m_model->column(i).shown && !m_model->column(i).key.isEmpty())
            return i;
    return -1;
}

int KeyedGrid::column(const QString& key) const { return m_model->find(key); }

QString KeyedGrid::key(int column) const {
    return column >= 0 && column < m_model->columns() ? m_model->column(column).key : QString();
}

QString KeyedGrid::comboList(const QString& key) const {
    const int found = column(key);
    return found < 0 ? QString() : m_model->list(found).source;
}

void KeyedGrid::setComboList(const QString& key, const QString& list) {
    const int found = column(key);
    if (found >= 0 && m_model->list(found).source != list)
        m_model->setList(found, list);
}

void KeyedGrid::setMergesHeader(bool on) { m_header->setMergesEqual(on); }

int KeyedGrid::rowCount() const { return m_model->rows(); }

void KeyedGrid::clearRows() {
    if (rowCount() > 0)
        removeRows(0, rowCount());
    m_row = -1;
}

int KeyedGrid::appendRow(Cells cells, int level) {
    insertRow(rowCount(), cells, level);
    return rowCount() - 1;
}

void KeyedGrid::insertRow(int at, Cells cells, int level) {
    at = qBound(0, at, rowCount());
    if (m_model->isCollecting())
        cancelEdit();
    m_model->insert(at, cells, level);
    if (m_row >= at)
        ++m_row;
    expandAbove(at);
}

void KeyedGrid::removeRows(int first, int count) {
    const int end = qMin(first + count, rowCount());
    if (first < 0 || first >= end)
        return;
    if (isEditing() && (m_model->isCollecting() || (m_edited.row() >= first && m_edited.row() < end)))
        cancelEdit();
    if (m_row >= end)
        m_row -= end - first;
    else if (m_row >= first)
        m_row = -1;
    if (m_row < 0 && !m_model->isCollecting())
        showCurrent();
    m_model->remove(first, end - first);
    // A node that lost its last row below has nothing left to open.
    if (first > 0 && m_model->row(first - 1).collapsed && !m_model->isParent(first - 1))
        m_model->setCollapsed(first - 1, false);
}

QString KeyedGrid::text(int row, const QString& key) const { return m_model->text(row, column(key)); }

void KeyedGrid::setText(int row, const QString& key, const QString& text) { m_model->setText(row, column(key), text); }

qint64 KeyedGrid::value(int row, const QString& key) const { return numericValue(text(row, key)); }

int KeyedGrid::row() const { return m_row; }

QString KeyedGrid::columnKey() const { return key(m_column); }

void KeyedGrid::setRow(int row) { makeCurrent(row, m_column); }

void KeyedGrid::setCell(int row, const QString& key) {
    const int found = column(key);
    makeCurrent(row, found >= 0 && m_model->column(found).shown ? found : m_column);
}

void KeyedGrid::makeCurrent(int row, int column) {
    row = qBound(-1, row, rowCount() - 1);
    if (isEditing() && (m_edited.row() != row || m_edited.column() != column) && !commitEdit())
        cancelEdit();
    applyStructure();
    expandAbove(row);
    {
        const QScopedValueRollback silent(m_silent, true);
        const QModelIndex index = m_model->index(row, column);
        if (index.isValid())
            setCurrentIndex(index);
        else
            selectionModel()->clear();
        if (index.isValid())
            scrollTo(index);
    }
    announce(row, column);
}

void KeyedGrid::announce(int row, int column) {
    const int oldRow = std::exchange(m_row, row);
    const int oldColumn = std::exchange(m_column, column);
    if (oldRow != row) {
        viewport()->update();
        Q_EMIT rowChanged(oldRow, row);
    }
    if ((oldRow != row || oldColumn != column) && m_row == row && m_column == column)
        Q_EMIT cellChanged(row, columnKey());
}

void KeyedGrid::showCurrent() {
    const QScopedValueRollback silent(m_silent, true);
    const QModelIndex index = m_model->index(m_row, m_column);
    if (index.isValid())
        selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    else
        selectionModel()->clear();
}

void KeyedGrid::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    QTableView::currentChanged(current, previous);
    if (!m_silent && current.isValid())
        announce(current.row(), current.column());
}

/// Lets the view know rows that were filled in while redrawing was off.
void KeyedGrid::applyStructure() {
    if (!m_model->publish())
        return;
    updateHidden(0, rowCount());
    showCurrent();
}

void KeyedGrid::setRedraw(bool on) {
    m_model->collect(!on);
    if (on)
        applyStructure();
    setUpdatesEnabled(on);
}
