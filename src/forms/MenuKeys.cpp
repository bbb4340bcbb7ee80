#include "forms/MenuKeys.h"

#include <QAbstractButton>
#include <QEvent>
#include <QMainWindow>

namespace zem {

namespace {

/// Of several that ask for a key, the one that asked first gets it first, and the menus ask only when they
/// are laid out. So the buttons ask once more after that.
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
    window.installEventFilter(new ButtonsAskAgain(&window)); // which the window owns
}

} // namespace zem
