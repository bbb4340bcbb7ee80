#include "forms/StorableInput.h"

#include "qt/QtText.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <memory>

namespace zem {

namespace {

/// The text with the part of it that `before` has not on one line.
QString WithInsertedPartOnOneLine(const QString& before, const QString& text) {
    const auto shorter = std::min(text.size(), before.size());
    const auto first = std::distance(
        text.begin(), std::mismatch(text.begin(), text.begin() + shorter, before.begin()).first);
    const auto last = std::mismatch(text.rbegin(), text.rbegin() + (shorter - first), before.rbegin()).first;
    const auto length = std::distance(last, text.rend()) - first;
    return text.left(first) + OnOneLine(text.mid(first, length)) + text.mid(first + length);
}

} // namespace

void RefuseUnstorableText(QLineEdit& box, Dialogs& dialogs) {
    struct State {
        QString text;
        int cursor = 0;
    };
    box.setMaxLength(std::numeric_limits<int>::max()); // Texts of the game may have any length.
    const auto good = std::make_shared<State>(State{box.text(), box.cursorPosition()});
    QObject::connect(&box, &QLineEdit::cursorPositionChanged, &box, [&box, good](int, int cursor) {
        if (box.text() == good->text)
            good->cursor = cursor;
    });
    // Comes before textChanged, and only for what the author does.
    QObject::connect(&box, &QLineEdit::textEdited, &box, [&box, good](const QString& text) {
        const QString cleaned = WithInsertedPartOnOneLine(good->text, text);
        if (cleaned == text)
            return;
        const int cursor = box.cursorPosition();
        box.setText(cleaned);
        box.setCursorPosition(cursor);
    });
    QObject::connect(&box, &QLineEdit::textChanged, &box, [&box, &dialogs, good] {
        const std::optional<QString> problem = UnstorableCharacter(box.text());
        if (!problem) {
            good->text = box.text();
            return;
        }
        const int cursor = good->cursor;
        box.setText(good->text); // This emits textChanged again, with a good text.
        box.setCursorPosition(cursor);
        dialogs.ShowMessageBox(box.window(), *problem, QLatin1String(DefaultTitle), QMessageBox::Ok,
                               QMessageBox::Warning);
    });
}

void EditStorableText(QLineEdit& box, const std::string& text, Dialogs& dialogs) {
    box.setMaxLength(std::numeric_limits<int>::max());
    box.setText(ToQt(text));
    RefuseUnstorableText(box, dialogs);
}

} // namespace zem
