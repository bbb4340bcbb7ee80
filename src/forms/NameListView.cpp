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

} // namespace zem
