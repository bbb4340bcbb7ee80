#include "script/NamePicker.h"

#include "forms/QtText.h"
#include "kel/ScriptLine.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>

namespace zem {

NamePicker::NamePicker(QLineEdit& parameter, QLabel& label, QComboBox& names, const GameModel& game,
                       const CommandLookup& commands)
    : QObject(&parameter),
      parameter_(parameter),
      label_(label),
      names_(names),
      game_(game),
      commands_(commands) {
    connect(&parameter, &QLineEdit::cursorPositionChanged, this, &NamePicker::Refresh);
    connect(&names, &QComboBox::textActivated, this, &NamePicker::Insert);
    Refresh();
}

void NamePicker::SetSyntax(const std::string& syntax) {
    syntax_ = ReadSyntax(syntax);
    shown_ = NameKind::None;
    Refresh();
}

namespace {

/// Byte for character: the text is kept in one byte a character, so that places in both are the same.
ParameterPart PartAtCaret(const QLineEdit& parameter, const ParameterSyntax& syntax) {
    const QByteArray text = parameter.text().toLatin1();
    return PartAt(std::string_view(text.constData(), static_cast<std::size_t>(text.size())), syntax,
                  static_cast<std::size_t>(parameter.cursorPosition()));
}

} // namespace

void NamePicker::Refresh() {
    const NameKind kind = PartAtCaret(parameter_, syntax_).kind;
    label_.setVisible(kind != NameKind::None);
    names_.setVisible(kind != NameKind::None);
    if (kind == shown_)
        return;
    shown_ = kind;
    names_.clear();
    for (const std::string& name : GameNames(game_, kind, commands_))
        names_.addItem(ToQt(name));
    names_.setCurrentIndex(-1);
}

void NamePicker::Insert(const QString& name) {
    const ParameterPart part = PartAtCaret(parameter_, syntax_);
    QString text = parameter_.text();
    text.replace(static_cast<qsizetype>(part.range.begin), static_cast<qsizetype>(part.range.Size()), name);
    parameter_.setText(text);
    parameter_.setCursorPosition(static_cast<int>(part.range.begin) + static_cast<int>(name.size()));
    parameter_.setFocus();
}

} // namespace zem
