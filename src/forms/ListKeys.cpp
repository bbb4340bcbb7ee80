#include "forms/ListKeys.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAction>
#include <QKeyEvent>

#include <utility>
#include <vector>

namespace zem {

namespace {

bool IsArrow(const QKeyEvent& event) {
    return event.modifiers() == Qt::NoModifier && (event.key() == Qt::Key_Down || event.key() == Qt::Key_Up);
}

class ListKeyFilter : public QObject {
public:
    ListKeyFilter(QAbstractItemView& list, const ListButtons& buttons)
        : QObject(&list),
          list_(list),
          buttons_(buttons) {
        list.setContextMenuPolicy(Qt::ActionsContextMenu);
        AddCommand(buttons.edit, "Return");
        AddCommand(buttons.add, "Insert");
        AddCommand(buttons.remove, "Delete");
        AddCommand(buttons.up, "Ctrl+Up");
        AddCommand(buttons.down, "Ctrl+Down");
        list.installEventFilter(this);
        list.viewport()->installEventFilter(this);
    }

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::ContextMenu)
            ShowWhatCanBeDone();
        const bool isUsed =
            watched == &list_ && event->type() == QEvent::KeyPress && Use(*static_cast<QKeyEvent*>(event));
        return isUsed || QObject::eventFilter(watched, event);
    }

private:
    /// A key that needs a selected row only selects one where there is none, so that it shows which row it is
    /// about before it does anything to it.
    bool Use(const QKeyEvent& key) {
        QAbstractButton* button = ButtonFor(key);
        if (button == nullptr)
            return IsArrow(key) && SelectFocusedRow(list_);
        if (button == buttons_.add || !SelectFocusedRow(list_))
            button->click();
        return true;
    }

    /// Puts what a button does into the menu of the list, with its key, which this filter looks after.
    void AddCommand(QAbstractButton* button, const char* key) {
        if (button == nullptr)
            return;
        const QString name = button->accessibleName().isEmpty() ? button->text() : button->accessibleName();
        auto* command = new QAction(name + u'\t' + QLatin1String(key), &list_);
        QObject::connect(command, &QAction::triggered, button, &QAbstractButton::click);
        list_.addAction(command);
        commands_.push_back({button, command});
    }

    void ShowWhatCanBeDone() {
        const bool isSelected = list_.selectionModel()->hasSelection();
        for (const auto& [button, command] : commands_) {
            const bool needsRow = button != buttons_.add;
            command->setEnabled(button->isEnabled() && (isSelected || !needsRow));
            command->setStatusTip(command->isEnabled() ? button->toolTip()
                                  : !isSelected        ? QObject::tr("Select something in the list first.")
                                                : QObject::tr("This cannot be done with what is selected."));
        }
    }

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
    std::vector<std::pair<QAbstractButton*, QAction*>> commands_;
};

} // namespace

bool SelectFocusedRow(QAbstractItemView& list) {
    if (list.selectionModel()->hasSelection() || list.model()->rowCount() == 0)
        return false;
    const QModelIndex focused = list.currentIndex();
    list.setCurrentIndex(QModelIndex()); // Makes the next line a change in any case.
    list.setCurrentIndex(focused.isValid() ? focused : list.model()->index(0, 0));
    return true;
}

void ConnectListKeys(QAbstractItemView& list, const ListButtons& buttons) {
    new ListKeyFilter(list, buttons); // The list owns it.
    if (buttons.edit != nullptr)
        QObject::connect(&list, &QAbstractItemView::doubleClicked, buttons.edit, &QAbstractButton::click);
}

} // namespace zem
