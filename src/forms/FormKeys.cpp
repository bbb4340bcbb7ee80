#include "forms/FormKeys.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>

namespace zem {

namespace {

/// The buttons that end a form with what it holds. The first of them that a form has counts.
constexpr const char* Confirming[] = {"butOK", "butClose", "butAdd"};

Qt::KeyboardModifiers Modifiers(const QKeyEvent& key) {
    return key.modifiers() & ~Qt::KeypadModifier;
}

bool IsConfirmKey(const QKeyEvent& key) {
    return Modifiers(key) == Qt::ControlModifier &&
           (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter);
}

bool IsAltCharacter(const QKeyEvent& key) {
    return (Modifiers(key) & ~Qt::ShiftModifier) == Qt::AltModifier && !key.text().isEmpty() &&
           key.text().front().isPrint();
}

/// Closes a list of matches, or the list of a chooser, whose keys belong to the form behind it.
void CloseOpenList() {
    QWidget* popup = QApplication::activePopupWidget();
    if (popup != nullptr && qobject_cast<QMenu*>(popup) == nullptr)
        popup->close();
}

/// The button of the form, and of no other window that belongs to it.
QAbstractButton* ConfirmingButton(const QDialog& form) {
    for (const char* name : Confirming)
        for (auto* button : form.findChildren<QAbstractButton*>(QLatin1String(name)))
            if (button->window() == &form)
                return button;
    return nullptr;
}

bool PressConfirmingButton(const QWidget& window) {
    const auto* form = qobject_cast<const QDialog*>(&window);
    QAbstractButton* button = form == nullptr ? nullptr : ConfirmingButton(*form);
    if (button == nullptr)
        return false;
    button->setFocus(); // Lets a box take over what was typed in it, as a click does.
    button->click();
    return true;
}

class FormKeys : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override {
        const bool isOverride = event->type() == QEvent::ShortcutOverride;
        if ((!isOverride && event->type() != QEvent::KeyPress) || !watched->isWidgetType() ||
            qobject_cast<QMenu*>(watched) != nullptr || qobject_cast<QMenuBar*>(watched) != nullptr)
            return false;
        const auto& key = static_cast<const QKeyEvent&>(*event);
        if (IsAltCharacter(key)) {
            CloseOpenList();    // The shortcut leads out of it.
            return !isOverride; // A key that comes after this stands for no control.
        }
        return !isOverride && IsConfirmKey(key) && Confirm(static_cast<QWidget&>(*watched));
    }

private:
    static bool Confirm(const QWidget& focused) {
        const bool isList = focused.window()->windowType() == Qt::Popup;
        CloseOpenList();
        const QWidget* window = isList ? QApplication::activeWindow() : focused.window();
        return window != nullptr && PressConfirmingButton(*window);
    }
};

} // namespace

void HandleFormKeys(QApplication& application) {
    application.installEventFilter(new FormKeys(&application)); // The application owns it.
}

} // namespace zem
