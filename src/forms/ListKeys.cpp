#include "forms/ListKeys.h"

#include <QAbstractButton>
#include <QAbstractItemView>
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

class ListKeyFilter : public QObject {
public:
    ListKeyFilter(QAbstractItemView& list, const ListButtons& buttons)
        : QObject(&list),
          list_(list),
          buttons_(buttons) {}

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::KeyPress)
            if (QAbstractButton* button = ButtonFor(*static_cast<QKeyEvent*>(event))) {
                // The key shows which row it is about before it does anything to it.
                if (button == buttons_.add || !SelectFocusedRow(list_))
                    button->click();
                return true;
            }
        return QObject::eventFilter(watched, event);
    }

private:
    QAbstractButton* ButtonFor(const QKeyEvent& event) const {
        const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
        const bool control = modifiers == Qt::ControlModifier;
        if (!control && modifiers != Qt::NoModifier)
            return nullptr;
        switch (event.key()) {
        case Qt::Key_Insert:
            return control ? nullptr : buttons_.add;
        case Qt::Key_Delete:
            return control ? nullptr : buttons_.remove;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return control ? nullptr : buttons_.edit;
        case Qt::Key_Up:
            return control ? buttons_.up : nullptr;
        case Qt::Key_Down:
            return control ? buttons_.down : nullptr;
        default:
            return nullptr;
        }
    }

    QAbstractItemView& list_;
    ListButtons buttons_;
};

} // namespace

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

void ConnectListKeys(QAbstractItemView& list, const ListButtons& buttons) {
    SelectFocusedRowFirst(list);
    list.installEventFilter(new ListKeyFilter(list, buttons)); // which the list owns
    if (buttons.edit != nullptr)
        QObject::connect(&list, &QAbstractItemView::doubleClicked, buttons.edit, &QAbstractButton::click);
}

} // namespace zem
