#pragma once

#include <QListView>

namespace zem {

/// A list in which the author can select another row, but only the program none again.
class NameListView : public QListView {
    Q_OBJECT

public:
    using QListView::QListView;

protected:
    /// A row that is hidden is no place to go to.
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;
};

} // namespace zem
