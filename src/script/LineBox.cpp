#include "script/LineBox.h"

#include "base/LineText.h"
#include "forms/StorableInput.h"
#include "kel/TypedLine.h"
#include "qt/QtText.h"
#include "script/ScriptEditing.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QKeyEvent>
#include <QLabel>
#include <QListView>
#include <QStringListModel>

namespace zem {

namespace {

constexpr int MostMatchesOffered = 60; // more, and one types another letter
constexpr int ShownAtOnce = 12;

/// The text as bytes, a byte for each character, so that places in both are the same.
std::string LineBytesOf(const QString& text) {
    const QByteArray bytes = text.toLatin1();
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

QString WordsOf(const CommandDefinition& command, bool isFriendly) {
    if (isFriendly)
        return ToQt(command.FriendlyName);
    return ToQt(command.Keyword.starts_with("if ") ? command.Keyword.substr(3) : command.Keyword);
}

} // namespace

LineBox::LineBox(QWidget* parent) : QLineEdit(parent) {
    setPlaceholderText(tr("print Hello.   or   give iron key   -   Return adds the line"));
    setWhatsThis(
        tr("Type what happens: a command in plain English or by its keyword, and behind it what it is "
           "about. The commands with your words are offered below, then the names. Return makes it a "
           "line."));
    list_ = new QStringListModel(this);
    matches_ = new QCompleter(list_, this);
    auto* popup = new QListView;
    popup->setUniformItemSizes(true);
    popup->setAccessibleName(tr("Commands and names that fit"));
    matches_->setPopup(popup);
    matches_->setWidget(this);
    matches_->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
    matches_->setMaxVisibleItems(ShownAtOnce);
    connect(this, &QLineEdit::textEdited, this, &LineBox::Offer);
    connect(matches_, qOverload<const QModelIndex&>(&QCompleter::activated), this,
            [this](const QModelIndex& match) { Choose(match.row()); });
}

void LineBox::Use(const ScriptEditing& scripts, Dialogs& dialogs, QLabel& problem) {
    scripts_ = &scripts;
    problem_ = &problem;
    RefuseUnstorableText(*this, dialogs);
}

void LineBox::ShowProblem(const QString& problem) {
    problem_->setText(problem);
    setAccessibleDescription(problem);
}

/// Offers what could stand where the author types: at the end of the text.
void LineBox::Offer() {
    ShowProblem({});
    replacements_.clear();
    QStringList shown;
    const QString text = this->text();
    if (!text.trimmed().isEmpty() && cursorPosition() == text.size()) {
        const bool isFriendly = scripts_->IsFriendly();
        const TypedEnd end = EndOfTyped(LineBytesOf(text), scripts_->Commands());
        const QString before = text.left(static_cast<qsizetype>(end.begin));
        for (const CommandDefinition* command : end.commands) {
            const QString words = WordsOf(*command, isFriendly);
            shown.append(isFriendly ? words
                                    : words + QStringLiteral(" \u2013 ") + ToQt(command->FriendlyName));
            replacements_.append(before + words + QLatin1String(command->RawSyntax == "!" ? "" : " "));
        }
        const QString typed = text.mid(static_cast<qsizetype>(end.part.begin));
        if (end.kind != NameKind::None && end.kind != NameKind::File)
            for (const std::string& name : *scripts_->Names(end.kind)) {
                const QString whole = ToQt(name);
                if (shown.size() >= MostMatchesOffered)
                    break;
                if (!whole.contains(typed, Qt::CaseInsensitive) || whole == typed)
                    continue;
                shown.append(whole);
                replacements_.append(text.left(static_cast<qsizetype>(end.part.begin)) + whole);
            }
    }
    list_->setStringList(shown);
    // An open list would keep Alt and a letter from the window.
    const bool isOnlyItself = replacements_.size() == 1 && replacements_.front().trimmed() == text.trimmed();
    if (shown.isEmpty() || isOnlyItself)
        matches_->popup()->hide();
    else
        matches_->complete();
}

void LineBox::Choose(int row) {
    if (row < 0 || row >= replacements_.size())
        return;
    matches_->popup()->hide();
    setText(QString(replacements_[row]));
    Offer();
}

void LineBox::Enter() {
    const TypedLine typed = ReadTypedLine(FromQt(text()), scripts_->Commands());
    if (!typed.problem.empty()) {
        ShowProblem(ToQt(typed.problem));
        return;
    }
    matches_->popup()->hide();
    ShowProblem({});
    clear();
    emit LineTyped(typed.line);
}

void LineBox::keyPressEvent(QKeyEvent* event) {
    const bool isReturn = (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) &&
                          (event->modifiers() & ~Qt::KeypadModifier) == Qt::NoModifier;
    // Return in an empty box is the window's OK.
    if (!isReturn || text().trimmed().isEmpty()) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    event->accept();
    const bool isOpen = matches_->popup()->isVisible();
    const QModelIndexList chosen =
        isOpen ? matches_->popup()->selectionModel()->selectedIndexes() : QModelIndexList();
    if (!chosen.isEmpty()) {
        Choose(chosen.constFirst().row());
        return;
    }
    // Half a command, such as "print mess", is finished by the first one that fits.
    const bool isLine = ReadTypedLine(FromQt(text()), scripts_->Commands()).problem.empty();
    const bool isHalf = isOpen && EndOfTyped(LineBytesOf(text()), scripts_->Commands()).command == nullptr;
    if (!isLine && isHalf)
        Choose(0);
    else
        Enter();
}

} // namespace zem
