#pragma once

#include "play/Outcome.h"

#include <QImage>
#include <QString>
#include <QTextBrowser>

#include <deque>
#include <functional>

namespace zem {

/// The story as a page of a book: what the game prints, what the player typed, and beside it what only the
/// author is told. It shows and is never typed into.
class StoryPane : public QTextBrowser {
    Q_OBJECT

public:
    explicit StoryPane(QWidget* parent = nullptr);

    /// Adds text that the game has printed. The choices of a menu can be clicked until EndChoices. Other
    /// kinds of pieces are the caller's.
    void Show(const play::Piece& piece);

    /// What is added from here on is new: it is scrolled to, and its beginning stays in sight.
    void BeginTurn();

    /// Repeats a line of the player.
    void ShowInput(const QString& line);

    /// Adds a remark that is no part of the story, in the colour of warnings.
    /// @param source  given to SourceChosen when the remark is clicked
    void ShowWarning(const QString& text, const play::Source& source);

    /// Adds a remark of the program, which is neither part of the story nor wrong.
    void ShowNote(const QString& text);

    /// Gives everything on the page another source: the game has changed, and its texts with it.
    void MapSources(const std::function<play::Source(const play::Source&)>& moved);

    /// Shows a picture, with its name for who cannot see it.
    void ShowPicture(const QImage& picture, const QString& name);

    /// The choices shown so far can be clicked no longer.
    void EndChoices();

    /// Makes the page empty.
    void ClearPage();

    /// The size of the story's text in points, from 6 to 72.
    void SetTextSize(int points);
    int TextSize() const { return textSize_; }

signals:
    /// A choice was clicked, from 1.
    void ChoiceChosen(int number);

    /// A word that a script printed, or a remark, was clicked.
    void SourceChosen(const play::Source& source);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    /// What stands on the page, so that it can be set anew in other colours and sizes.
    struct Entry {
        enum Kind { Story, Input, Warning, Note, Picture };
        Kind kind = Story;
        QString text;
        play::Style style;
        play::Source source;
        int choice = 0; // its number while it can be clicked
        QImage picture;
    };

    void Add(Entry entry);
    void Insert(const Entry& entry, int number);
    QTextCharFormat FormatOf(const Entry& entry, int number) const;
    void SetAnew();
    void SetColumn();
    void ShowNew();

    int textSize_ = 12;
    std::deque<Entry> entries_;
    qsizetype letters_ = 0;
    int newFrom_ = 0; // a position in the document
};

} // namespace zem
