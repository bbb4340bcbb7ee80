#pragma once

#include <QListView>

namespace zem {

/// A list of which one row can be selected, and no row again only by the program.
class NameListView : public QListView {
    Q_OBJECT

public:
    using QListView::QListView;

protected:
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;
};

/// Selects the row with the focus, or the first one, if nothing is selected. Whether that was so.
bool SelectFocusedRow(QAbstractItemView& list);

/// From now on the first arrow key in a list that has nothing selected selects the row with the focus, and
/// not the one after it.
void SelectFocusedRowFirst(QAbstractItemView& list);

} // namespace zem
