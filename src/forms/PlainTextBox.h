#pragma once

#include "forms/Dialogs.h"

#include <QPlainTextEdit>
#include <QString>

#include <string>

namespace zem {

/// Edits text of the game in a box of several lines, without loss: the text that nobody touched comes back as
/// it was, byte for byte. Only plain text goes in; what a game file cannot hold is refused with a message as
/// it is typed or pasted.
class PlainTextBox : public QPlainTextEdit {
    Q_OBJECT

public:
    using QPlainTextEdit::QPlainTextEdit;

    /// Must come before the author types.
    /// @param dialogs  outlives the box
    void RefuseUnstorableText(Dialogs& dialogs) { dialogs_ = &dialogs; }

    /// From now on the box holds one line, which is only shown on several: Return does nothing and pasted
    /// line ends become blanks.
    void HoldOneLine() { oneLine_ = true; }
    bool HoldsOneLine() const { return oneLine_; }

    /// Shows a text whose lines are joined with CR LF.
    void SetText(const std::string& text);

    /// Puts another text in the place of all of it, as an author would: one step that Ctrl+Z takes back.
    /// @param goesOn  the step is the one before, too
    void EditText(const std::string& text, bool goesOn = false);

    /// The text, its lines joined with CR LF; there is no line end after the last.
    std::string Text() const;

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void insertFromMimeData(const QMimeData* source) override;

private:
    bool Refuse(const QString& text);

    Dialogs* dialogs_ = nullptr;
    bool oneLine_ = false;
    std::string given_;
    QString shown_; // The given text as the box shows it.
};

} // namespace zem
