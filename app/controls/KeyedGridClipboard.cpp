// Marked rows of a KeyedGrid, and what the clipboard takes from it and brings into it.

#include <QApplication>
#include <QClipboard>
#include <QInputEvent>
#include <QMimeData>
#include <set>

#include "app/controls/CellEditing.h"
#include "app/controls/CheckState.h"
#include "app/controls/GridModel.h"
#include "app/controls/KeyedGrid.h"
#include "app/controls/Marks.h"
#include "app/controls/TableText.h"

using namespace Qt::StringLiterals;

/// Shift extends the marks from the row where they began. Whatever else makes a row current leaves that row alone.
QItemSelectionModel::SelectionFlags KeyedGrid::selectionCommand(const QModelIndex&, const QEvent* event) const {
    const auto* input = event && event->isInputEvent() ? static_cast<const QInputEvent*>(event) : nullptr;
    const bool extends = input && input->modifiers().testFlag(Qt::ShiftModifier) && row() >= 0;
    return (extends ? QItemSelectionModel::SelectCurrent : QItemSelectionModel::ClearAndSelect) |
           QItemSelectionModel::Rows;
}

void KeyedGrid::clearMarks() {
    if (row() >= 0)
        setCurrentIndex(currentIndex());
}

QString KeyedGrid::shownText(int row, int column) const {
    if (m_model->column(column).look == GridColumn::Look::CheckBox)
        return m_model->text(row, column) == CheckState::checked ? u"√"_s : QString();
    return m_model->index(row, column).data().toString();
}

void KeyedGrid::copy() const {
    std::set<int> rows;
    for (const QItemSelectionRange& range : selectionModel()->selection())
        for (int row = range.top(); row <= range.bottom(); ++row)
            if (!isRowHidden(row))
                rows.insert(row);
    if (rows.size() < 2) {
        // A cell alone is one line, as it is in its editor.
        if (row() >= 0)
            QApplication::clipboard()->setText(Theme::inOneLine(shownText(row(), m_column)));
        return;
    }
    TableText::Table table;
    for (const int row : rows) {
        QStringList cells;
        for (int column = 0; column < m_model->columns(); ++column)
            if (!isColumnHidden(column) && !key(column).isEmpty())
                cells << shownText(row, column);
        table << cells;
    }
    auto* copied = new QMimeData;
    copied->setText(TableText::tabbed(table));
    copied->setHtml(TableText::html(table));
    QApplication::clipboard()->setMimeData(copied);
}

/// False when the edit was refused, or none could begin.
bool KeyedGrid::enter(const QString& text) { return typeAgain(text) && commitEdit() && m_editing->isTaken(); }

void KeyedGrid::paste() {
    // After rows were read anew the row that was meant may be another one.
    if (row() < 0 || m_model->list(m_column).isDropDown() || (beforeEdit && beforeEdit()))
        return;
    const TableText::Table lines = TableText::parse(QApplication::clipboard()->text());
    const auto goDown = [&] {
        for (const QStringList& line : lines) {
            const int next = m_editing->shownRow(row(), true);
            if (!enter(line.first()) || next < 0)
                return;
            if (&line != &lines.last())
                setRow(next);
        }
    };
    if (lines.size() > 1 && pasteLines)
        pasteLines(goDown);
    else
        goDown();
}
