#include "prose/LineMarks.h"

#include "session/GameSpelling.h"

#include <QCoreApplication>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <QScopedValueRollback>

#include <algorithm>
#include <utility>

namespace zem {

namespace {

constexpr int WaitForTyping = 50;    // milliseconds
constexpr qsizetype MostSeen = 2000; // characters around the caret, more than a line has room for

} // namespace

LineMarks::LineMarks(QLineEdit& box, GameSpelling* spelling, ProseParts parts)
    : QObject(&box),
      box_(box),
      spelling_(spelling),
      parts_(std::move(parts)) {
    wait_.setSingleShot(true);
    wait_.setInterval(WaitForTyping);
    connect(&wait_, &QTimer::timeout, this, &LineMarks::Update);
    connect(&box, &QLineEdit::textChanged, this, &LineMarks::Wait);
    connect(&box, &QLineEdit::textEdited, this, [this] { typedTo_ = box_.cursorPosition(); });
    connect(&box, &QLineEdit::cursorPositionChanged, this, [this](int, int position) {
        if (position != typedTo_)
            typedTo_ = -1;
        if (box_.text().size() > MostSeen || typedTo_ == -1)
            Wait();
    });
    if (spelling_ != nullptr) {
        spelling_->Begin();
        connect(spelling_, &GameSpelling::SpellerChanged, this, &LineMarks::Wait);
    }
    box.installEventFilter(this);
    Wait();
}

void LineMarks::Wait() {
    if (!wait_.isActive())
        wait_.start();
}

bool LineMarks::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::InputMethod:
        if (!isShowing_)
            isComposing_ = !static_cast<QInputMethodEvent*>(event)->preeditString().isEmpty();
        break;
    case QEvent::FocusIn:
        Wait(); // what is read of the text may be another part now
        break;
    case QEvent::FocusOut:
        typedTo_ = -1;
        Wait();
        break;
    case QEvent::Show:
    case QEvent::PaletteChange:
        shown_.clear();
        Wait();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

/// In a very long text those near the caret.
std::vector<ProseMark> LineMarks::Find() const {
    const QString text = box_.text();
    const int caret = box_.cursorPosition();
    const TextRange seen = text.size() <= MostSeen
                               ? TextRange{0, static_cast<std::size_t>(text.size())}
                               : WholeWordsAround(text, caret - MostSeen / 2, caret + MostSeen / 2);
    const auto partsSeen = [&](std::string_view bytes) {
        std::vector<TextRange> parts = parts_ ? parts_(bytes) : std::vector<TextRange>{{0, bytes.size()}};
        for (TextRange& part : parts)
            part = {std::clamp(part.begin, seen.begin, seen.end), std::clamp(part.end, seen.begin, seen.end)};
        return parts;
    };
    return FindProseMarks(text, partsSeen, SpellerOf(spelling_));
}

void LineMarks::Update() {
    if (isComposing_) {
        Wait();
        return;
    }
    std::vector<ProseMark> marks = Find();
    marks.erase(std::remove_if(marks.begin(), marks.end(),
                               [this](const ProseMark& mark) {
                                   return mark.kind == ProseMark::Unknown &&
                                          mark.end == typedTo_; // not finished
                               }),
                marks.end());
    if (marks == shown_)
        return;
    shown_ = std::move(marks);
    Show();
}

/// A box of one line takes the look of single letters only from an input method. This one writes nothing.
void LineMarks::Show() {
    const QScopedValueRollback<bool> showing(isShowing_, true);
    QList<QInputMethodEvent::Attribute> looks;
    for (const ProseMark& mark : shown_)
        looks.append(QInputMethodEvent::Attribute(QInputMethodEvent::TextFormat,
                                                  mark.begin - box_.cursorPosition(), mark.end - mark.begin,
                                                  LookOf(mark.kind, box_.palette())));
    QInputMethodEvent event(QString(), looks);
    QCoreApplication::sendEvent(&box_, &event);
}

ProseMark LineMarks::UnknownAt(int position) const {
    for (const ProseMark& mark : Find())
        if (mark.kind == ProseMark::Unknown && mark.begin <= position && position <= mark.end)
            return mark;
    return {};
}

bool LineMarks::SelectNextUnknown() {
    const int caret = box_.hasSelectedText() ? box_.selectionEnd() : box_.cursorPosition();
    std::vector<ProseMark> unknown;
    for (const ProseMark& mark : Find())
        if (mark.kind == ProseMark::Unknown)
            unknown.push_back(mark);
    if (unknown.empty())
        return false;
    const auto next = std::find_if(unknown.begin(), unknown.end(),
                                   [caret](const ProseMark& mark) { return mark.begin >= caret; });
    const ProseMark& chosen = next == unknown.end() ? unknown.front() : *next;
    box_.setSelection(chosen.begin, chosen.end - chosen.begin);
    return true;
}

} // namespace zem
