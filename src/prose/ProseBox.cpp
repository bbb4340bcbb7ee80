#include "prose/ProseBox.h"

#include "forms/PlainTextBox.h"
#include "qt/QtText.h"

namespace zem {

ProseBox::ProseBox(PlainTextBox& box) : area_(&box) {}

ProseBox::ProseBox(QLineEdit& box) : line_(&box) {}

QWidget& ProseBox::Widget() const {
    return area_ != nullptr ? static_cast<QWidget&>(*area_) : *line_;
}

bool ProseBox::CanBeChanged() const {
    return Widget().isEnabled() && !(area_ != nullptr ? area_->isReadOnly() : line_->isReadOnly());
}

QString ProseBox::Text() const {
    if (area_ == nullptr)
        return line_->text();
    return area_->document()->toRawText().replace(QChar(QChar::ParagraphSeparator), u'\n');
}

ProseBox::Selection ProseBox::Selected() const {
    if (area_ != nullptr)
        return {area_->textCursor().selectionStart(), area_->textCursor().selectionEnd()};
    if (line_->hasSelectedText())
        return {line_->selectionStart(), line_->selectionEnd()};
    return {line_->cursorPosition(), line_->cursorPosition()};
}

void ProseBox::Select(int begin, int end) const {
    if (area_ != nullptr) {
        QTextCursor cursor = area_->textCursor();
        cursor.setPosition(begin);
        cursor.setPosition(end, QTextCursor::KeepAnchor);
        area_->setTextCursor(cursor);
    } else {
        line_->setCursorPosition(begin);
        if (end > begin)
            line_->setSelection(begin, end - begin);
    }
}

void ProseBox::Replace(int begin, int end, const QString& text) const {
    if (line_ != nullptr) { // A move of the caret parts the step from what was typed before it.
        line_->end(false);
        line_->home(false);
    }
    Select(begin, end);
    if (area_ == nullptr)
        return line_->insert(text);
    QTextCursor cursor = area_->textCursor();
    cursor.beginEditBlock(); // or what was typed just before it would go with it
    cursor.insertText(text);
    cursor.endEditBlock();
}

std::string ProseBox::Bytes() const {
    return area_ != nullptr ? area_->Text() : FromQt(line_->text());
}

bool ProseBox::HoldsOneLine() const {
    return area_ == nullptr || area_->HoldsOneLine();
}

void ProseBox::SetBytes(const std::string& text, bool goesOn) const {
    if (area_ != nullptr) {
        area_->EditText(text, goesOn);
        return;
    }
    line_->selectAll();
    line_->insert(ToQt(text));
}

void ProseBox::Connect(QObject* receiver, const std::function<void()>& changed) const {
    if (area_ != nullptr)
        // The document tells of what a form shows without a word about it, too.
        QObject::connect(area_->document(), &QTextDocument::contentsChanged, receiver, changed);
    else
        QObject::connect(line_, &QLineEdit::textChanged, receiver, changed);
}

} // namespace zem
