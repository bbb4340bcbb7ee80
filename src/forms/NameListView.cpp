#include "forms/NameListView.h"

#include <QKeyEvent>

namespace zem {

namespace {

bool IsArrow(const QKeyEvent& event) {
    return event.modifiers() == Qt::NoModifier && (event.key() == Qt::Key_Down || event.key() == Qt::Key_Up);
}

class FirstRowFilter : public QObject {
public:
    explicit FirstRowFilter(QAbstractItemView& list) : QObject(&list), list_(list) {}

    bool eventFilter(QObject* watched, QEvent* event) override {
        const bool isArrow = event->type() == QEvent::KeyPress && IsArrow(*static_cast<QKeyEvent*>(event));
        return (isArrow && SelectFocusedRow(list_)) || QObject::eventFilter(watched, event);
    }

private:
    QAbstractItemView& list_;
};

} // namespace

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

bool SelectFocusedRow(QAbstractItemView& list) {
    if (list.selectionModel()->hasSelection() || list.model()->rowCount() == 0)
        return false;
    const QModelIndex focused = list.currentIndex();
    list.setCurrentIndex(QModelIndex()); // so that it changes even if it is the one that is wanted
    list.setCurrentIndex(focused.isValid() ? focused : list.model()->index(0, 0));
    return true;
}

void SelectFocusedRowFirst(QAbstractItemView& list) {
    list.installEventFilter(new FirstRowFilter(list)); // which the list owns
}

} // namespace zem
