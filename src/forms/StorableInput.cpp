#include "forms/StorableInput.h"

#include "forms/StorablePaste.h"
#include "qt/QtText.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <memory>

namespace zem {

namespace {

/// Where the text differs from an earlier one: what was put into it.
struct Insertion {
    qsizetype first;
    qsizetype length;
};

Insertion FindInsertion(const QString& before, const QString& text) {
    const auto shorter = std::min(text.size(), before.size());
    const auto first = std::distance(
        text.begin(), std::mismatch(text.begin(), text.begin() + shorter, before.begin()).first);
    const auto last = std::mismatch(text.rbegin(), text.rbegin() + (shorter - first), before.rbegin()).first;
    return {first, std::distance(last, text.rend()) - first};
}

/// The text with the part of it that `before` has not on one line.
QString WithInsertedPartOnOneLine(const QString& before, const QString& text) {
    const auto [first, length] = FindInsertion(before, text);
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
        const QString text = box.text();
        if (!UnstorableCharacter(text)) {
            good->text = text;
            return;
        }
        const auto [first, length] = FindInsertion(good->text, text);
        const int cursor = good->cursor;
        box.setText(good->text); // This emits textChanged again, with a good text.
        box.setCursorPosition(cursor);
        const std::optional<QString> rest = AskStorablePaste(text.mid(first, length), dialogs, box.window());
        if (!rest)
            return;
        box.setText(text.left(first) + *rest + text.mid(first + length));
        box.setCursorPosition(static_cast<int>(first + rest->size()));
    });
}

void EditStorableText(QLineEdit& box, const std::string& text, Dialogs& dialogs) {
    box.setMaxLength(std::numeric_limits<int>::max());
    box.setText(ToQt(text));
    RefuseUnstorableText(box, dialogs);
}

} // namespace zem
