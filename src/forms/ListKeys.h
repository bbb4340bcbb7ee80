#pragma once

class QAbstractButton;
class QAbstractItemView;

namespace zem {

/// The buttons beside a list; those that it has not are null.
struct ListButtons {
    QAbstractButton* add = nullptr;
    QAbstractButton* remove = nullptr;
    QAbstractButton* edit = nullptr;
    QAbstractButton* up = nullptr;
    QAbstractButton* down = nullptr;
};

/// If nothing is selected, selects the row with the focus, or the first one, and tells that it was so.
bool SelectFocusedRow(QAbstractItemView& list);

/// From now on the first arrow key in a list that has nothing selected selects the row with the focus, and
/// not the one after it.
void SelectFocusedRowFirst(QAbstractItemView& list);

/// Gives the list keys for its buttons: Insert adds, Delete removes, Return and a double-click edit, Ctrl+Up
/// and Ctrl+Down move. What needs a selected row selects one first, where there is none.
void ConnectListKeys(QAbstractItemView& list, const ListButtons& buttons);

} // namespace zem
