#pragma once

#include <functional>
#include <vector>

class QListWidget;
class QMimeData;

namespace zem {

class NameListModel;

/// The rows of this very list that are being dragged, from 0; none for anything else, such as rows of another
/// window or program.
std::vector<int> RowsDraggedFrom(const NameListModel& list, const QMimeData& data);

/// Lets the selected rows of a list be dragged to another place in it. Let go anywhere else, they stay.
/// @param move  puts the rows, from 0 and in order, before the row `to`; that is the count for the end
void MoveRowsByDrag(QListWidget& list, std::function<void(const std::vector<int>& rows, int to)> move);

/// The items of a list with these at the rows put before the row `to`, in their order.
template <class Item>
std::vector<Item> Moved(const std::vector<Item>& items, const std::vector<int>& rows, int to) {
    std::vector<Item> before;
    std::vector<Item> moved;
    std::vector<Item> behind;
    auto next = rows.begin();
    for (int row = 0; row < static_cast<int>(items.size()); ++row) {
        const bool isMoved = next != rows.end() && *next == row;
        next += isMoved ? 1 : 0;
        (isMoved ? moved : row < to ? before : behind).push_back(items[static_cast<std::size_t>(row)]);
    }
    before.insert(before.end(), moved.begin(), moved.end());
    before.insert(before.end(), behind.begin(), behind.end());
    return before;
}

} // namespace zem
