#pragma once

#include <QAbstractItemView>
#include <QListWidget>

#include <string>
#include <vector>

/// What the list forms do with the rows of their lists; rows count from 0.
namespace zem {

/// The selected row; of several the current one, which the author used last. -1 for none.
int SelectedRow(const QAbstractItemView& list);

/// All selected rows, in order.
std::vector<int> SelectedRows(const QAbstractItemView& list);

/// Selects these rows and no others; the first becomes the current one and is shown.
void SelectRows(QAbstractItemView& list, const std::vector<int>& rows);

/// Adds a row at the end and selects it.
void AppendRow(QListWidget& list, const std::string& text);

/// Removes the selected row and returns which it was, -1 for none. The row that takes its place, or the last,
/// is selected.
int RemoveSelectedRow(QListWidget& list);

/// The same for all selected rows, in order as they were.
std::vector<int> RemoveSelectedRows(QListWidget& list);

/// Takes the entries at the rows, which are in order, out of what the list shows.
template <class Entries>
void EraseRows(Entries& entries, const std::vector<int>& rows) {
    for (auto row = rows.rbegin(); row != rows.rend(); ++row)
        entries.erase(entries.begin() + *row);
}

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
