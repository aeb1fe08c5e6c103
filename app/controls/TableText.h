#pragma once

#include <QStringList>

/// The two forms in which tables lie on the clipboard: text with tabs, and a table in HTML.
namespace TableText {

using Table = QList<QStringList>;

/// A line for each row, a tab between cells. A cell with a tab, a line end or a quotation mark in it stands in
/// quotation marks, and its own are doubled.
QString tabbed(const Table& rows);

/// The same table for spreadsheets, which take every cell for a text then: 010101001 keeps its zeros, and =1+1 is no
/// formula.
QString html(const Table& rows);

/// The rows of such a text; the line end of the last one may be missing. Quotation marks count only around a cell that
/// needs them.
Table parse(const QString& tabbed);

}  // namespace TableText
