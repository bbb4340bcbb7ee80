#include "player/InputLine.h"

#include <QKeyEvent>

#include <algorithm>

namespace zem {

namespace {

constexpr int LongestLine = 500; // letters, as many as a game takes

} // namespace

InputLine::InputLine(QWidget* parent) : QLineEdit(parent) {
    setMaxLength(LongestLine);
    setAccessibleName(tr("What do you do?"));
    connect(this, &QLineEdit::textEdited, this, &InputLine::OfferWord);
}

void InputLine::SetWords(const QStringList& words) {
    words_ = words;
    words_.sort(Qt::CaseInsensitive);
}

void InputLine::ForgetHistory() {
    history_.clear();
    shown_ = 0;
}

bool InputLine::event(QEvent* event) {
    // Tab takes a completion where there is one; otherwise it goes on to the next control.
    if (event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Tab && key->modifiers() == Qt::NoModifier && HasOffer()) {
            end(false);
            insert(QStringLiteral(" "));
            return true;
        }
    }
    return QLineEdit::event(event);
}

bool InputLine::HasOffer() const {
    return hasOffer_ && hasSelectedText() && selectionEnd() == text().size();
}

void InputLine::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Enter();
        return;
    case Qt::Key_Up:
        ShowEarlier(-1);
        return;
    case Qt::Key_Down:
        ShowEarlier(1);
        return;
    default:
        QLineEdit::keyPressEvent(event);
    }
}

void InputLine::Enter() {
    // What was only offered was not typed.
    const QString line = HasOffer() ? text().left(selectionStart()) : text();
    if (line.trimmed().isEmpty() && !allowsEmpty_)
        return;
    if (!line.trimmed().isEmpty() && (history_.isEmpty() || history_.last() != line))
        history_.append(line);
    shown_ = history_.size();
    clear();
    emit Entered(line);
}

void InputLine::ShowEarlier(int step) {
    const qsizetype wanted = shown_ + step;
    if (wanted < 0 || wanted > history_.size())
        return;
    if (shown_ == history_.size())
        typed_ = text();
    shown_ = wanted;
    setText(shown_ == history_.size() ? typed_ : history_[shown_]);
}

/// Puts the rest of the word that is being typed behind the caret, selected, so that the next letter replaces
/// it.
void InputLine::OfferWord() {
    const QString line = text();
    hasOffer_ = false;
    if (cursorPosition() != line.size() || line.size() < lastSize_) {
        lastSize_ = line.size();
        return;
    }
    lastSize_ = line.size();
    const qsizetype begin = line.lastIndexOf(u' ') + 1;
    const QString word = line.mid(begin);
    if (word.size() < 2)
        return;
    const auto found = std::find_if(words_.cbegin(), words_.cend(), [&](const QString& known) {
        return known.size() > word.size() && known.startsWith(word, Qt::CaseInsensitive);
    });
    if (found == words_.cend())
        return;
    const QString rest = found->mid(word.size());
    setText(line + rest);
    hasOffer_ = true;
    setSelection(static_cast<int>(line.size() + rest.size()), static_cast<int>(-rest.size()));
}

} // namespace zem
