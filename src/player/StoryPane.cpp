#include "player/StoryPane.h"

#include "forms/ColourRoles.h"
#include "player/StoryColours.h"
#include "qt/QtText.h"

#include <QAccessible>
#include <QMouseEvent>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextFrame>

#include <algorithm>
#include <utility>

namespace zem {

namespace {

constexpr int EntryProperty = QTextFormat::UserProperty + 1;
constexpr int LettersInLine = 68;
constexpr qsizetype LongestPage = 1'000'000; // letters; what is older leaves the page
constexpr int WidestPicture = 480;           // device-independent pixels
constexpr int LeastMargin = 16;              // device-independent pixels
constexpr int Leading = 140;                 // per cent of a line
constexpr int ReadersSize = 12;              // the size in points that authors reckon with

const QString ChoiceLink = QStringLiteral("choice:");

Qt::Alignment AlignmentOf(play::Alignment alignment) {
    switch (alignment) {
    case play::Alignment::Centre:
        return Qt::AlignHCenter;
    case play::Alignment::Right:
        return Qt::AlignRight;
    default:
        return Qt::AlignLeft;
    }
}

/// Tells a screen reader of text that came by itself.
void Announce(QTextBrowser& page, int position, const QString& text) {
    if (!QAccessible::isActive())
        return;
    QAccessibleTextInsertEvent event(&page, position, text);
    QAccessible::updateAccessibility(&event);
}

} // namespace

StoryPane::StoryPane(QWidget* parent) : QTextBrowser(parent) {
    setOpenLinks(false);
    setUndoRedoEnabled(false);
    setAccessibleName(tr("Story"));
    document()->setDocumentMargin(0);
    SetTextSize(textSize_);
    connect(this, &QTextBrowser::anchorClicked, this, [this](const QUrl& link) {
        const QString target = link.toString();
        if (target.startsWith(ChoiceLink))
            emit ChoiceChosen(target.mid(ChoiceLink.size()).toInt());
    });
}

void StoryPane::Show(const play::Piece& piece) {
    Entry entry;
    entry.text = ToQt(piece.text);
    entry.style = piece.style;
    entry.source = piece.source;
    if (piece.source.field == play::ScriptField::Choice &&
        piece.source.line == 0) // not what its script prints
        entry.choice = piece.source.index;
    Add(std::move(entry));
}

void StoryPane::ShowInput(const QString& line) {
    Entry entry;
    entry.kind = Entry::Input;
    entry.text = QStringLiteral("> ") + line + u'\n';
    Add(std::move(entry));
}

void StoryPane::ShowWarning(const QString& text, const play::Source& source) {
    Entry entry;
    entry.kind = Entry::Warning;
    entry.text = text + u'\n';
    entry.source = source;
    Add(std::move(entry));
}

void StoryPane::ShowNote(const QString& text) {
    Entry entry;
    entry.kind = Entry::Note;
    entry.text = text + u'\n';
    Add(std::move(entry));
}

void StoryPane::MapSources(const std::function<play::Source(const play::Source&)>& moved) {
    for (Entry& entry : entries_)
        entry.source = moved(entry.source);
}

void StoryPane::ShowPicture(const QImage& picture, const QString& name) {
    Entry entry;
    entry.kind = Entry::Picture;
    entry.text = name;
    entry.picture = picture;
    Add(std::move(entry));
}

void StoryPane::EndChoices() {
    bool hadChoices = false;
    for (Entry& entry : entries_)
        hadChoices = std::exchange(entry.choice, 0) != 0 || hadChoices;
    if (hadChoices)
        SetAnew();
}

void StoryPane::ClearPage() {
    entries_.clear();
    letters_ = 0;
    newFrom_ = 0;
    document()->clear();
    SetColumn();
}

void StoryPane::SetTextSize(int points) {
    textSize_ = std::clamp(points, 6, 72);
    QFont font(QStringLiteral("serif"), textSize_);
    font.setStyleHint(QFont::Serif);
    document()->setDefaultFont(font);
    SetAnew();
    SetColumn();
}

void StoryPane::Add(Entry entry) {
    letters_ += entry.text.size();
    entries_.push_back(std::move(entry));
    if (letters_ > LongestPage) {
        // Half of the page leaves at once, so that this does not happen with every line.
        while (letters_ > LongestPage / 2 && entries_.size() > 1) {
            letters_ -= entries_.front().text.size();
            entries_.pop_front();
        }
        SetAnew();
        return;
    }
    const int before = document()->characterCount() - 1;
    Insert(entries_.back(), static_cast<int>(entries_.size()) - 1);
    Announce(*this, before, entries_.back().text);
    ShowNew();
}

void StoryPane::Insert(const Entry& entry, int number) {
    QTextCursor cursor(document());
    cursor.movePosition(QTextCursor::End);
    cursor.beginEditBlock();
    QTextBlockFormat block;
    block.setLineHeight(Leading, QTextBlockFormat::ProportionalHeight);
    block.setAlignment(AlignmentOf(entry.style.alignment));
    const QTextCharFormat format = FormatOf(entry, number);
    if (entry.kind == Entry::Picture && !entry.picture.isNull()) {
        block.setLineHeight(100, QTextBlockFormat::ProportionalHeight);
        cursor.setBlockFormat(block);
        const int width = std::min(entry.picture.width(), WidestPicture);
        cursor.insertImage(entry.picture.scaledToWidth(width, Qt::SmoothTransformation), entry.text);
        cursor.insertBlock();
    } else {
        QStringList lines = entry.text.split(u'\n');
        for (qsizetype k = 0; k < lines.size(); ++k) {
            if (k > 0)
                cursor.insertBlock(block, format);
            if (!lines[k].isEmpty()) {
                cursor.setBlockFormat(block);
                cursor.insertText(lines[k], format);
            }
        }
    }
    cursor.endEditBlock();
}

QTextCharFormat StoryPane::FormatOf(const Entry& entry, int number) const {
    QTextCharFormat format;
    format.setProperty(EntryProperty, number);
    format.setFontWeight(entry.style.bold ? QFont::Bold : QFont::Normal);
    format.setFontItalic(entry.style.italic);
    format.setFontUnderline(entry.style.underline);
    if (entry.style.size > 0)
        format.setFontPointSize(static_cast<qreal>(entry.style.size) * textSize_ / ReadersSize);
    if (const QString family = entry.style.font.empty() ? QString() : FontFamily(entry.style.font);
        !family.isEmpty())
        format.setFontFamilies({family});
    if (const QColor tone = ToneOf(entry.style.colour, palette()); tone.isValid())
        format.setForeground(tone);
    if (entry.kind == Entry::Input)
        format.setForeground(ColourOf(ColourRole::Accent, palette()));
    if (entry.kind == Entry::Warning || entry.kind == Entry::Note) {
        format.setForeground(ColourOf(
            entry.kind == Entry::Warning ? ColourRole::Warning : ColourRole::SecondaryText, palette()));
        format.setFontFamilies({font().family()});
        format.setFontPointSize(textSize_ * 0.85);
    }
    if (entry.choice != 0) {
        format.setAnchor(true);
        format.setAnchorHref(ChoiceLink + QString::number(entry.choice));
        format.setForeground(ColourOf(ColourRole::Accent, palette()));
        format.setFontUnderline(true);
    }
    return format;
}

void StoryPane::SetAnew() {
    document()->clear();
    SetColumn();
    for (std::size_t k = 0; k < entries_.size(); ++k)
        Insert(entries_[k], static_cast<int>(k));
    newFrom_ = std::min(newFrom_, document()->characterCount() - 1);
    ShowNew();
}

void StoryPane::BeginTurn() {
    newFrom_ = document()->characterCount() - 1;
}

/// Scrolls to the end, but no further than to where the new text begins: nothing is to be missed.
void StoryPane::ShowNew() {
    QTextCursor begin(document());
    begin.setPosition(newFrom_);
    const int top = cursorRect(begin).top() + verticalScrollBar()->value() - LeastMargin;
    verticalScrollBar()->setValue(std::min(verticalScrollBar()->maximum(), top));
}

/// Keeps lines to a length that is read without effort: the rest of the page is margin.
void StoryPane::SetColumn() {
    const int column = QFontMetrics(document()->defaultFont()).averageCharWidth() * LettersInLine;
    const int rest = viewport()->width() - column - 2 * LeastMargin;
    const int left = LeastMargin + std::max(rest, 0) / 3;
    const int right = LeastMargin + std::max(rest, 0) - std::max(rest, 0) / 3;
    QTextFrameFormat page = document()->rootFrame()->frameFormat();
    if (page.leftMargin() == left && page.rightMargin() == right)
        return;
    page.setLeftMargin(left);
    page.setRightMargin(right);
    page.setTopMargin(LeastMargin);
    page.setBottomMargin(LeastMargin);
    document()->rootFrame()->setFrameFormat(page);
}

void StoryPane::resizeEvent(QResizeEvent* event) {
    QTextBrowser::resizeEvent(event);
    SetColumn();
}

void StoryPane::changeEvent(QEvent* event) {
    QTextBrowser::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        SetAnew();
}

void StoryPane::mouseReleaseEvent(QMouseEvent* event) {
    QTextBrowser::mouseReleaseEvent(event);
    if (event->button() != Qt::LeftButton || textCursor().hasSelection() ||
        !anchorAt(event->position().toPoint()).isEmpty())
        return;
    const QTextCharFormat format = cursorForPosition(event->position().toPoint()).charFormat();
    const int number = format.intProperty(EntryProperty);
    if (!format.hasProperty(EntryProperty) || number >= static_cast<int>(entries_.size()))
        return;
    const play::Source& source = entries_[static_cast<std::size_t>(number)].source;
    if (source.book != nullptr)
        emit SourceChosen(source);
}

} // namespace zem
