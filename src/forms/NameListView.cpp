#include "forms/NameListView.h"

namespace zem {

QItemSelectionModel::SelectionFlags NameListView::selectionCommand(const QModelIndex& index,
                                                                   const QEvent* event) const {
    const QItemSelectionModel::SelectionFlags flags = QListView::selectionCommand(index, event);
    const bool deselects =
        flags.testFlag(QItemSelectionModel::Toggle) || flags.testFlag(QItemSelectionModel::Deselect) ||
        (flags.testFlag(QItemSelectionModel::Clear) && !flags.testFlag(QItemSelectionModel::Select));
    if (!deselects)
        return flags;
    return index.isValid() ? QItemSelectionModel::ClearAndSelect : QItemSelectionModel::NoUpdate;
}

} // namespace zem
