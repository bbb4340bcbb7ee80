#include "forms/ListKeys.h"

#include "forms/NameListView.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QKeyEvent>

namespace zem {

namespace {

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

void ConnectListKeys(QAbstractItemView& list, const ListButtons& buttons) {
    SelectFocusedRowFirst(list);
    list.installEventFilter(new ListKeyFilter(list, buttons)); // which the list owns
    if (buttons.edit != nullptr)
        QObject::connect(&list, &QAbstractItemView::doubleClicked, buttons.edit, &QAbstractButton::click);
}

} // namespace zem
