#pragma once

#include <QAbstractItemView>
#include <QListWidget>

#include <string>

/// What the list forms do with the rows of their lists; rows count from 0.
namespace zem {

/// The selected row; -1 for none.
int SelectedRow(const QAbstractItemView& list);

/// Adds a row at the end and selects it.
void AppendRow(QListWidget& list, const std::string& text);

/// Removes the selected row and returns which it was, -1 for none. The row that takes its place, or the last,
/// is selected.
int RemoveSelectedRow(QListWidget& list);

/// The text of a row.
std::string RowText(const QListWidget& list, int row);

/// Makes the table one of as many records as the list has rows, and writes row `row` to record `row + 1` with
/// `write(record, row)`.
template <class Table, class Write>
void RowsToTable(const QListWidget& list, Table& table, Write write) {
    table.Clear();
    for (int row = 0; row < list.count(); ++row)
        write(table.Append(), row);
}

} // namespace zem
