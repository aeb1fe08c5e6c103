#include "app/controls/KeyedGrid.h"

#include <QEvent>
#include <QPainter>

#include "app/base/Text.h"
#include "app/base/UserEvent.h"
#include "app/controls/CellEditing.h"
#include "app/controls/GridHeader.h"
#include "app/controls/GridModel.h"

KeyedGrid::KeyedGrid(QWidget* parent)
    : QTableView(parent),
      m_model(new GridModel(this)),
      m_editing(new CellEditing(this)),
      m_header(new GridHeader(this)) {
    setModel(m_model);
    setItemDelegate(m_editing);
    setHorizontalHeader(m_header);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ContiguousSelection);
    setEditTriggers(DoubleClicked | EditKeyPressed | AnyKeyPressed);
    setVerticalScrollMode(ScrollPerItem);
    setHorizontalScrollMode(ScrollPerPixel);
    // Tab goes on to the next pane.
    setTabKeyNavigation(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    fitSizes();
    connect(m_editing, &CellEditing::buttonClicked, this, &KeyedGrid::clickCellButton);
    m_header->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_header, &QWidget::customContextMenuRequested, this,
            [this](const QPoint& position) { wantMenu(m_header->viewport()->mapToGlobal(position)); });
    // A procedure that failed half-way through must not leave the grid dead.
    connect(&UserEvent::instance(), &UserEvent::over, this, [this] {
        if (!updatesEnabled())
            setRedraw(true);
    });
}

KeyedGrid::~KeyedGrid() {
    // An editor closes with its grid, and would ask the validateEdit of a pane that is half destroyed.
    delete m_editing;
}

void KeyedGrid::setColumns(std::vector<GridColumn> columns) {
    m_model->setColumns(std::move(columns));
    for (int i = 0; i < m_model->columns(); ++i)
        setColumnHidden(i, !m_model->column(i).shown);
    m_column = firstColumn();
    fitSizes();
}

void KeyedGrid::fitSizes() {
    const int height = fontMetrics().height() + 9;
    verticalHeader()->setMinimumSectionSize(height);
    verticalHeader()->setDefaultSectionSize(height);
    m_header->layOut();
}

void KeyedGrid::setGrowingColumn(const QString& key) {
    m_header->setGrowing(column(key));
    m_header->grow();
}

void KeyedGrid::resizeEvent(QResizeEvent* event) {
    QTableView::resizeEvent(event);
    m_header->grow();
}

void KeyedGrid::paintEvent(QPaintEvent* event) {
    QTableView::paintEvent(event);
    if (hasRows() || m_emptyHint.isEmpty())
        return;
    constexpr int margin = 12;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(viewport()->rect().adjusted(margin, margin, -margin, -margin), Qt::AlignCenter | Qt::TextWordWrap,
                     m_emptyHint);
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

void KeyedGrid::setEmptyHint(const QString& text) {
    if (std::exchange(m_emptyHint, text) != text)
        viewport()->update();
}

void KeyedGrid::setMergesHeader(bool on) { m_header->setMergesEqual(on); }

int KeyedGrid::rowCount() const { return m_model->rows(); }

void KeyedGrid::clearRows() { removeRows(0, rowCount()); }

int KeyedGrid::appendRow(Cells cells, int level) {
    insertRow(rowCount(), cells, level);
    return rowCount() - 1;
}

void KeyedGrid::insertRow(int at, Cells cells, int level) {
    at = qBound(0, at, rowCount());
    std::vector<GridRow> rows;
    rows.push_back(m_model->made(cells, level));
    m_model->insert(at, std::move(rows));

    expandAbove(at);
}

void KeyedGrid::Batch::append(Cells cells, int level) { m_rows.push_back(m_grid.m_model->made(cells, level)); }

void KeyedGrid::Batch::add() { m_grid.m_model->insert(m_grid.rowCount(), std::move(m_rows)); }

void KeyedGrid::removeRows(int first, int count) {
    const int end = qMin(first + count, rowCount());
    if (first < 0 || first >= end)
        return;
    const auto goes = [=](int row) { return row >= first && row < end; };
    if (isEditing() && goes(m_editing->cell().row()))
        cancelEdit();
    // The view would make a neighbouring row current.
    if (goes(row()))
        selectionModel()->clear();
    m_model->remove(first, end - first);
    // A node that lost its last row below has nothing left to open.
    if (first > 0 && m_model->row(first - 1).collapsed && !m_model->isParent(first - 1))
        m_model->setCollapsed(first - 1, false);
}

QString KeyedGrid::text(int row, const QString& key) const { return m_model->text(row, column(key)); }

void KeyedGrid::setText(int row, const QString& key, const QString& text) { m_model->setText(row, column(key), text); }

qint64 KeyedGrid::value(int row, const QString& key) const { return numericValue(text(row, key)); }

void KeyedGrid::setPending(int row, const QString& key, bool pending) {
    m_model->setPending(row, column(key), pending);
}

int KeyedGrid::row() const { return currentIndex().row(); }

QString KeyedGrid::columnKey() const { return key(m_column); }

void KeyedGrid::setRow(int row) { makeCurrent(row, m_column); }

void KeyedGrid::setCell(int row, const QString& key) {
    const int found = column(key);
    makeCurrent(row, found >= 0 && m_model->column(found).shown ? found : m_column);
}

void KeyedGrid::makeCurrent(int row, int column) {
    row = qBound(-1, row, rowCount() - 1);
    if (isEditing() && m_editing->cell() != m_model->index(row, column) && !commitEdit())
        cancelEdit();
    expandAbove(row);
    const QPersistentModelIndex cell = m_model->index(row, column);
    if (cell.isValid()) {
        setCurrentIndex(cell);
        if (cell.isValid())
            scrollTo(cell);
        return;
    }
    const int oldRow = this->row();
    m_column = column;
    selectionModel()->clear();
    if (oldRow < 0)
        return;
    Q_EMIT rowChanged(oldRow, -1);
    Q_EMIT cellChanged(-1, columnKey());
}

void KeyedGrid::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    const int row = current.row();
    const int oldRow = previous.row();
    const int oldColumn = m_column;
    QTableView::currentChanged(current, previous);
    // That no row is current is told by setRow() alone, not when rows are removed.
    if (!current.isValid())
        return;
    m_column = current.column();
    m_editing->setListOffered(m_model->list(m_column).isDropDown() && m_editing->mayEdit(current));
    viewport()->update();
    if (oldRow != row)
        Q_EMIT rowChanged(oldRow, row);
    // Who heard of the row may have gone on to another cell.
    if ((oldRow != row || oldColumn != m_column) && current == currentIndex())
        Q_EMIT cellChanged(row, columnKey());
}

void KeyedGrid::setRedraw(bool on) { setUpdatesEnabled(on); }

bool KeyedGrid::isEditing() const { return m_editing->isOpen(); }

bool KeyedGrid::commitEdit() { return m_editing->commit(); }

void KeyedGrid::cancelEdit() { m_editing->cancel(); }

QString KeyedGrid::typedText() const { return m_editing->typedText(); }

void KeyedGrid::revokeEdit() { m_editing->revoke(); }

bool KeyedGrid::typeAgain(const QString& typed) {
    if (!edit(currentIndex(), AllEditTriggers, nullptr))
        return false;
    m_editing->setTypedText(typed);
    return true;
}
