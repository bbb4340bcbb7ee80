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

/// Gives the list keys for its buttons: Insert adds, Delete removes, Return and a double-click edit, Ctrl+Up
/// and Ctrl+Down move; its menu has the same with their keys. Where no row is selected, the first of these
/// keys and of the plain arrow keys selects the row with the focus, and does no more.
void ConnectListKeys(QAbstractItemView& list, const ListButtons& buttons);

} // namespace zem
