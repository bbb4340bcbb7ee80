#include "forms/NameListView.h"

namespace zem {

QItemSelectionModel::SelectionFlags NameListView::selectionCommand(const QModelIndex& index,
                                                                   const QEvent* event) const {
    if (event == nullptr && index.isValid())
        return QItemSelectionModel::ClearAndSelect; // by the program, whatever keys the author holds down
    const QItemSelectionModel::SelectionFlags flags = QListView::selectionCommand(index, event);
    const QItemSelection& selected = selectionModel()->selection();
    const bool isOneOfSeveral =
        selected.size() > 1 || (!selected.isEmpty() && selected.constFirst().height() > 1);
    const bool isAdded = index.isValid() && !selectionModel()->isSelected(index);
    if (selectionMode() == ExtendedSelection && flags.testFlag(QItemSelectionModel::Toggle) &&
        (isOneOfSeveral || isAdded))
        return flags;
    const bool deselects =
        flags.testFlag(QItemSelectionModel::Toggle) || flags.testFlag(QItemSelectionModel::Deselect) ||
        (flags.testFlag(QItemSelectionModel::Clear) && !flags.testFlag(QItemSelectionModel::Select));
    if (!deselects)
        return flags;
    return index.isValid() ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::NoUpdate;
}

QModelIndex NameListView::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    const QModelIndex next = QListView::moveCursor(action, modifiers);
    if (!next.isValid() || !isRowHidden(next.row()))
        return next;
    const int step = action == MoveEnd || action == MoveDown || action == MovePageDown ? -1 : 1;
    int row = next.row();
    while (row >= 0 && row < model()->rowCount() && isRowHidden(row))
        row += step;
    const QModelIndex seen = model()->index(row, next.column());
    return seen.isValid() ? seen : currentIndex();
}

} // namespace zem
