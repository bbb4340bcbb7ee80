#include "forms/PlainTextBox.h"

#include "forms/StorablePaste.h"
#include "forms/Wrapping.h"
#include "qt/QtText.h"

#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMimeData>

#include <algorithm>

namespace zem {

namespace {

/// Pasted text as a game file can hold it: line ends of every kind are one, and the other control characters
/// become blanks, a tab as many as on loading.
QString OnLines(QString text) {
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    for (const QChar lineEnd : {QChar(u'\r'), QChar(QChar::ParagraphSeparator), QChar(QChar::LineSeparator)})
        text.replace(lineEnd, u'\n');
    text.replace(u'\t', QLatin1String("    "));
    for (QChar& character : text)
        if (character.unicode() < 0x20 && character != u'\n')
            character = u' ';
    return text;
}

/// Signs for line ends of other kinds, which a text box would make ordinary ones. A game cannot hold the
/// signs themselves.
constexpr QChar SignForCr(0x240D);
constexpr QChar SignForLf(0x240A);

/// The text with "\n" for CR LF, and signs for the line ends that would become that, too.
QString WithSigns(QString text) {
    text.replace(QLatin1String("\r\n"), QString(QChar(QChar::ParagraphSeparator)));
    text.replace(u'\r', SignForCr);
    text.replace(u'\n', SignForLf);
    return text.replace(QChar(QChar::ParagraphSeparator), u'\n');
}

/// At every key the line is set anew. The letters of a game stand by themselves, so that in a long line
/// nobody waits for what brings pairs of them closer together: it is nearly half of the time.
void ChooseShaping(QWidget& box, QStringView text) {
    constexpr qsizetype LongLine = 10'000; // letters
    const auto lines = text.split(u'\n');
    const bool isLong =
        std::any_of(lines.begin(), lines.end(), [](QStringView line) { return line.size() > LongLine; });
    QFont font = box.font();
    font.setStyleStrategy(isLong ? QFont::PreferNoShaping : QFont::PreferDefault);
    if (font != box.font())
        box.setFont(font);
}

} // namespace

void PlainTextBox::SetText(const std::string& text) {
    given_ = text;
    const QString shown = WithSigns(ToQt(text));
    ChooseWrapping(*this, shown);
    ChooseShaping(*this, shown);
    setPlainText(shown);
    shown_ = document()->toRawText();
}

void PlainTextBox::EditText(const std::string& text, bool goesOn) {
    const QString shown = WithSigns(ToQt(text));
    if (HasEndlessWord(shown))
        ChooseWrapping(*this, shown);
    ChooseShaping(*this, shown);
    QTextCursor cursor(document());
    if (goesOn)
        cursor.joinPreviousEditBlock();
    else
        cursor.beginEditBlock();
    cursor.select(QTextCursor::Document);
    cursor.insertText(shown);
    cursor.endEditBlock();
}

std::string PlainTextBox::Text() const {
    // The plain text of a document has ordinary blanks for no-break ones; its raw text has not.
    QString text = document()->toRawText();
    if (text == shown_)
        return given_;
    text.replace(QChar(QChar::ParagraphSeparator), QLatin1String("\r\n"));
    text.replace(QChar(QChar::LineSeparator), QLatin1String("\r\n"));
    text.replace(SignForCr, u'\r');
    text.replace(SignForLf, u'\n');
    return FromQt(text);
}

bool PlainTextBox::Refuse(const QString& text) {
    const std::optional<QString> problem = UnstorableCharacter(text);
    if (problem && dialogs_ != nullptr)
        dialogs_->ShowMessageBox(window(), *problem, QLatin1String(DefaultTitle), QMessageBox::Ok,
                                 QMessageBox::Warning);
    return problem.has_value();
}

void PlainTextBox::keyPressEvent(QKeyEvent* event) {
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if ((oneLine_ && isReturn) || Refuse(event->text())) {
        event->accept();
        return;
    }
    QPlainTextEdit::keyPressEvent(event);
}

void PlainTextBox::inputMethodEvent(QInputMethodEvent* event) {
    if (Refuse(event->commitString()))
        event->setCommitString(QString(), event->replacementStart(), event->replacementLength());
    QPlainTextEdit::inputMethodEvent(event);
}

void PlainTextBox::insertFromMimeData(const QMimeData* source) {
    const QString text = OnLines(source->text());
    const std::optional<QString> rest =
        dialogs_ == nullptr ? text : AskStorablePaste(text, *dialogs_, window());
    if (!rest)
        return;
    if (HasEndlessWord(*rest))
        ChooseWrapping(*this, *rest);
    insertPlainText(oneLine_ ? OnOneLine(*rest) : *rest);
    ChooseShaping(*this, toPlainText());
    ensureCursorVisible();
}

} // namespace zem
