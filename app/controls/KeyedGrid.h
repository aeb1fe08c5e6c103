#pragma once

#include <QPersistentModelIndex>
#include <QTableView>
#include <functional>
#include <initializer_list>
#include <vector>

#include "app/controls/CellText.h"

class CellEditing;
class GridHeader;
class GridModel;

/// One column of a KeyedGrid. Widths are in twips (1/1440 inch; 15 of them make one pixel at 96 dpi).
struct GridColumn {
    enum class Look { Text, CheckBox };

    QString key;
    QString caption;
    int twips = 960;
    Qt::Alignment cells = Qt::AlignLeft | Qt::AlignVCenter;
    Qt::Alignment header = Qt::AlignCenter;
    bool shown = true;
    Look look = Look::Text;
};

/// What becomes of an edit that ValidateEdit was asked about.
enum class EditVerdict {
    Accept,    ///< The cell takes the text.
    Restore,   ///< The cell keeps its old text and the editor closes.
    KeepOpen,  ///< The cell keeps its old text and the editor stays open with the typed text selected.
};

/// A grid of keyed columns and flat rows under one fixed header row.
///
/// Columns are found by key, ignoring letter case. Data rows count from 0; -1 stands for the header row ("no current
/// row"). Cells hold texts; those of check boxes are in CheckState.h. A row may be an outline node with a
/// level; an outline grid shows indentation and arrows in one column and lets the user collapse nodes.
///
/// The user may mark rows around the current one, with Shift and the arrows or the mouse, and Ctrl+A marks all: Ctrl+C
/// copies them as a table. They mean nothing else; they go when a row is made current in any other way. Ctrl+V is an
/// edit of the current cell. Several lines are edits of the cells below it, too, until one is refused or there is no
/// row.
///
/// Changing cells by program runs none of the editing hooks. Making another row current, by the user or by setRow(),
/// emits rowChanged(); clearing the rows does not.
class KeyedGrid : public QTableView {
    Q_OBJECT

public:
    explicit KeyedGrid(QWidget* parent = nullptr);
    ~KeyedGrid() override;

    /// Sets the columns, once. Widths that the user chose are remembered under the grid's objectName, when it has one.
    void setColumns(std::vector<GridColumn> columns);
    /// Position of a column, or -1.
    int column(const QString& key) const;
    QString key(int column) const;

    /// Gives column `key` the room that the other columns leave free. In a narrow view it is the first to give way,
    /// down to a third of its own width, unless the user chose its width.
    void setGrowingColumn(const QString& key);

    int rowCount() const;
    bool hasRows() const { return rowCount() > 0; }
    /// Removes all data rows; no row is current then. Emits nothing.
    void clearRows();
    /// Cells of one row by key.
    using Cells = std::initializer_list<std::pair<const char*, CellText>>;
    /// Adds a row at the end, with outline `level`, and gives its number.
    int appendRow(Cells cells, int level = 0);
    /// Rows that are added at the end together: one change for the view, however many they are.
    class Batch {
    public:
        explicit Batch(KeyedGrid& grid) : m_grid(grid) {}
        void append(Cells cells, int level = 0);
        void add();

    private:
        KeyedGrid& m_grid;
        std::vector<GridRow> m_rows;
    };
    /// Inserts a row before row `at` (rowCount() for the end). The current row stays the same row.
    void insertRow(int at, Cells cells, int level = 0);
    /// Removes `count` rows. When the current row is among them no row is current afterwards; emits nothing.
    void removeRows(int first, int count = 1);

    QString text(int row, const QString& key) const;
    void setText(int row, const QString& key, const QString& text);
    /// Whether the cell shows what is not written to the file; it looks different then.
    void setPending(int row, const QString& key, bool pending);
    /// The number that the cell's text begins with; 0 for row -1.
    qint64 value(int row, const QString& key) const;

    /// Current data row, -1 for none.
    int row() const;
    /// Key of the current column.
    QString columnKey() const;
    /// Makes a row current, keeping the column, scrolls it into view; emits rowChanged() when it was not current.
    /// -1 leaves no row current.
    void setRow(int row);
    /// As setRow(), and the cell of column `key`.
    void setCell(int row, const QString& key);

    /// While redrawing is off, many rows may be filled in at the cost of one refresh when it goes on again.
    /// It goes on by itself when the user's event is over.
    void setRedraw(bool on);

    /// A free text the owner keeps with the grid.
    QString tag() const { return m_tag; }
    void setTag(const QString& tag) { m_tag = tag; }

    /// Shows rows as an outline whose arrows stand in column `key`.
    void setOutlineColumn(const QString& key);
    int level(int row) const;
    /// Row after the last row below `row` in the outline (its whole subtree).
    int nodeEnd(int row) const;
    /// Next node of the same level under the same parent, or -1.
    int nextSibling(int row) const;
    bool isCollapsed(int row) const;
    void setCollapsed(int row, bool collapsed);

    /// What stands in the grid, in a light colour, while it has no rows.
    void setEmptyHint(const QString& text);
    QString emptyHint() const { return m_emptyHint; }

    /// Equal neighbouring header captions merge into one.
    void setMergesHeader(bool on);

    /// Drop-down list of a column: "#1;text|#2;text" shows the texts and stores the values; empty for none; a leading
    /// "|..." stands for an editable text with an ellipsis button. Cells whose value is not in the list show the value.
    void setComboList(const QString& key, const QString& list);
    QString comboList(const QString& key) const;

    /// Called before an editor opens or ends and before a check box changes. True when the rows have been read anew:
    /// the current cell takes the place of the one meant, and what was typed is open in it again.
    std::function<bool()> beforeEdit;
    /// May the cell be edited? Asked before an editor opens or a check box changes. Default: no.
    std::function<bool(int row, const QString& key)> startEdit;
    /// Longest text the cell's editor takes, in characters; 0 for no limit.
    std::function<int(int row, const QString& key)> editLimit;
    /// Decides about an edit; may replace the text. For a drop-down list the text is the stored value.
    std::function<EditVerdict(int row, const QString& key, QString& text)> validateEdit;

    /// Called for a paste of several lines, each of which is an edit: runs them, as one step for instance.
    std::function<void(const std::function<void()>& edits)> pasteLines;

    using QTableView::edit;
    /// Ends an open editor as Enter would. False when validateEdit kept it open.
    bool commitEdit();
    /// Ends an open editor as Esc would.
    void cancelEdit();
    bool isEditing() const;
    /// What is typed in an open editor; null when none is open, nothing was typed or it is a list.
    QString typedText() const;
    /// In answer to afterEdit(): what the edit was to bring about failed, and the cell has its old text again.
    void revokeEdit();
    /// Opens the current cell with `typed` in its editor, as if it had been typed there. False when it may not be
    /// edited.
    bool typeAgain(const QString& typed);

Q_SIGNALS:
    /// Another row is current; -1 for none.
    void rowChanged(int oldRow, int newRow);
    /// Another cell is current.
    void cellChanged(int row, const QString& key);
    /// An accepted edit is in the cell.
    void afterEdit(int row, const QString& key);
    /// The ellipsis button of a cell was clicked.
    void cellButtonClicked(int row, const QString& key);
    /// A data cell was double-clicked, not on an arrow, check box, button or drop-down cell.
    void rowDoubleClicked(int row);
    /// A text was typed, by keys or an input method, where it opens no editor.
    void textTyped(const QString& text);
    /// A context menu is wanted at a global position: right button released, on the header too, or the menu key
    /// at the current cell. A right click on a data cell has made that cell current before.
    void contextMenuWanted(const QPoint& position);

protected:
    bool edit(const QModelIndex& index, EditTrigger trigger, QEvent* event) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event = nullptr) const override;
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyboardSearch(const QString& search) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void fitSizes();
    int firstColumn() const;
    void makeCurrent(int row, int column);
    void wantMenu(const QPoint& globalPosition);

    void updateHidden(int first, int end);
    void expandAbove(int row);
    bool toggleByKey(int key);
    void clickCellButton();

    void clearMarks();
    QString shownText(int row, int column) const;
    void copy() const;
    bool enter(const QString& text);
    void paste();

    GridModel* m_model;
    CellEditing* m_editing;
    GridHeader* m_header;
    QString m_tag;
    QString m_emptyHint;
    /// The column of the current cell. It stays while no row is current: the next row is made current in it.
    int m_column = -1;
    bool m_menuWanted = false;
    /// The cell whose button, check box or list the mouse was pressed on.
    QPersistentModelIndex m_pressed;
    bool m_viewPressed = false;
};
