#include "forms/StorableInput.h"

#include "forms/QtText.h"

#include <QSignalBlocker>

#include <memory>

namespace zem {

void RefuseUnstorableText(QLineEdit& box, Dialogs& dialogs) {
    struct State {
        QString text;
        int cursor = 0;
    };
    const auto good = std::make_shared<State>(State{box.text(), box.cursorPosition()});
    QObject::connect(&box, &QLineEdit::cursorPositionChanged, &box, [&box, good](int, int cursor) {
        if (box.text() == good->text)
            good->cursor = cursor;
    });
    QObject::connect(&box, &QLineEdit::textChanged, &box, [&box, &dialogs, good](const QString& text) {
        if (OnOneLine(text) != text) {
            const int cursor = box.cursorPosition();
            box.setText(OnOneLine(text)); // which comes here again
            box.setCursorPosition(cursor);
            return;
        }
        const std::optional<QString> problem = UnstorableCharacter(text);
        if (!problem) {
            good->text = text;
            return;
        }
        {
            const QSignalBlocker blocker(box);
            box.setText(good->text);
            box.setCursorPosition(good->cursor);
        }
        dialogs.ShowMessageBox(box.window(), *problem, QLatin1String(DefaultTitle), QMessageBox::Ok,
                               QMessageBox::Warning);
    });
}

} // namespace zem
