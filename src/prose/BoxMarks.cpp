#include "prose/BoxMarks.h"

#include "forms/PlainTextBox.h"
#include "session/GameSpelling.h"

#include <QEvent>
#include <QScrollBar>
#include <QTextBlock>

#include <algorithm>

namespace zem {

namespace {

constexpr int WaitForKeys = 50; // milliseconds

bool LooksAlike(const QList<QTextEdit::ExtraSelection>& a, const QList<QTextEdit::ExtraSelection>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const auto& one, const auto& other) {
        return one.cursor.selectionStart() == other.cursor.selectionStart() &&
               one.cursor.selectionEnd() == other.cursor.selectionEnd() && one.format == other.format;
    });
}

} // namespace

BoxMarks::BoxMarks(PlainTextBox& box, GameSpelling* spelling)
    : QObject(&box),
      box_(box),
      spelling_(spelling) {
    wait_.setSingleShot(true);
    wait_.setInterval(WaitForKeys);
    connect(&wait_, &QTimer::timeout, this, &BoxMarks::Update);
    connect(box.document(), &QTextDocument::contentsChange, this, [this](int position, int, int added) {
        typedTo_ = position + added;
        Wait();
    });
    connect(&box, &QPlainTextEdit::cursorPositionChanged, this, [this] {
        if (typedTo_ == -1 || box_.textCursor().position() == typedTo_)
            return;
        typedTo_ = -1;
        Wait();
    });
    connect(box.verticalScrollBar(), &QScrollBar::valueChanged, this, &BoxMarks::Wait);
    if (spelling_ != nullptr) {
        spelling_->Begin();
        connect(spelling_, &GameSpelling::SpellerChanged, this, &BoxMarks::Wait);
    }
    box.installEventFilter(this);
    Wait();
}

/// Not put off by the next key: otherwise nothing would be marked while the author goes on typing.
void BoxMarks::Wait() {
    if (!wait_.isActive())
        wait_.start();
}

bool BoxMarks::eventFilter(QObject* watched, QEvent* event) {
    switch (event->type()) {
    case QEvent::FocusOut:
        typedTo_ = -1;
        [[fallthrough]];
    case QEvent::Show:
    case QEvent::Resize:
    case QEvent::PaletteChange:
        Wait();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

void BoxMarks::Update() {
    const QRect view = box_.viewport()->rect();
    const int first = box_.cursorForPosition(view.topLeft()).position();
    const int last = box_.cursorForPosition(view.bottomRight()).position();
    QList<QTextEdit::ExtraSelection> selections;
    for (QTextBlock block = box_.document()->findBlock(first); block.isValid() && block.position() <= last;
         block = block.next())
        MarkBlock(block, first - block.position(), last - block.position(), selections);
    if (!LooksAlike(selections, box_.extraSelections()))
        box_.setExtraSelections(selections);
}

/// @param first  character of the block that is in sight, and the last one; may lie outside
void BoxMarks::MarkBlock(const QTextBlock& block, int first, int last,
                         QList<QTextEdit::ExtraSelection>& selections) const {
    const QString text = block.text();
    const TextRange seen = WholeWordsAround(text, first, last);
    const QString part = text.mid(static_cast<qsizetype>(seen.begin), static_cast<qsizetype>(seen.Size()));
    const int begin = block.position() + static_cast<int>(seen.begin);
    const bool isTyping = box_.hasFocus() && box_.textCursor().position() == typedTo_;
    for (const ProseMark& mark : FindProseMarks(part, {}, SpellerOf(spelling_))) {
        if (isTyping && mark.kind == ProseMark::Unknown && begin + mark.end == typedTo_)
            continue; // not finished yet
        QTextEdit::ExtraSelection selection;
        selection.cursor = QTextCursor(box_.document());
        selection.cursor.setPosition(begin + mark.begin);
        selection.cursor.setPosition(begin + mark.end, QTextCursor::KeepAnchor);
        selection.format = LookOf(mark.kind, box_.palette());
        selections.append(selection);
    }
}

ProseMark BoxMarks::UnknownAt(int position) const {
    const QTextBlock block = box_.document()->findBlock(position);
    const QString text = block.text();
    const int within = position - block.position();
    const TextRange seen = WholeWordsAround(text, within, within);
    const QString part = text.mid(static_cast<qsizetype>(seen.begin), static_cast<qsizetype>(seen.Size()));
    const int begin = block.position() + static_cast<int>(seen.begin);
    for (const ProseMark& mark : FindProseMarks(part, {}, SpellerOf(spelling_)))
        if (mark.kind == ProseMark::Unknown && begin + mark.begin <= position && position <= begin + mark.end)
            return {mark.kind, begin + mark.begin, begin + mark.end};
    return {};
}

bool BoxMarks::SelectNextUnknown() {
    const int caret = box_.textCursor().selectionEnd();
    std::vector<ProseMark> unknown;
    for (QTextBlock block = box_.document()->begin(); block.isValid(); block = block.next())
        for (const ProseMark& mark : FindProseMarks(block.text(), {}, SpellerOf(spelling_)))
            if (mark.kind == ProseMark::Unknown)
                unknown.push_back({mark.kind, block.position() + mark.begin, block.position() + mark.end});
    if (unknown.empty())
        return false;
    const auto next = std::find_if(unknown.begin(), unknown.end(),
                                   [caret](const ProseMark& mark) { return mark.begin >= caret; });
    const ProseMark& chosen = next == unknown.end() ? unknown.front() : *next;
    QTextCursor cursor = box_.textCursor();
    cursor.setPosition(chosen.begin);
    cursor.setPosition(chosen.end, QTextCursor::KeepAnchor);
    box_.setTextCursor(cursor);
    return true;
}

} // namespace zem
