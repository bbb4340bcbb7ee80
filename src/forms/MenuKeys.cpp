#include "forms/MenuKeys.h"

#include <QAbstractButton>
#include <QEvent>
#include <QMainWindow>

namespace zem {

namespace {

/// Qt gives a shared shortcut to whoever registered it first, and menus register only when they are laid out.
/// The buttons therefore register once more after that.
class ButtonsAskAgain : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* window, QEvent* event) override {
        if (event->type() == QEvent::WindowActivate)
            for (QAbstractButton* button : window->findChildren<QAbstractButton*>())
                button->setShortcut(button->shortcut());
        return QObject::eventFilter(window, event);
    }
};

} // namespace

void PutMenusFirst(QMainWindow& window) {
    window.installEventFilter(new ButtonsAskAgain(&window)); // The window owns it.
}

} // namespace zem
