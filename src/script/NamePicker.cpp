#include "script/NamePicker.h"

#include "forms/QtText.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>

namespace zem {

NamePicker::NamePicker(QLineEdit& parameter, QLabel& label, QComboBox& names, const GameModel& game,
                       const CommandCatalogue& catalogue)
    : QObject(&parameter),
      parameter_(parameter),
      label_(label),
      names_(names),
      game_(game),
      catalogue_(catalogue) {
    connect(&parameter, &QLineEdit::cursorPositionChanged, this, &NamePicker::Refresh);
    connect(&names, &QComboBox::textActivated, this, &NamePicker::Insert);
    Refresh();
}

void NamePicker::SetSyntax(const std::string& syntax) {
    syntax_ = syntax;
    shown_ = NameKind::None;
    Refresh();
}

namespace {

/// Byte for character: the text is kept in one byte a character, so that places in both are the same.
ParameterPart PartAtCaret(const QLineEdit& parameter, const std::string& syntax) {
    const QByteArray text = parameter.text().toLatin1();
    return FindParameterPart(syntax,
                             std::string_view(text.constData(), static_cast<std::size_t>(text.size())),
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
    for (const std::string& name : GameNames(game_, kind, catalogue_))
        names_.addItem(ToQt(name));
    names_.setCurrentIndex(-1);
}

void NamePicker::Insert(const QString& name) {
    const ParameterPart part = PartAtCaret(parameter_, syntax_);
    QString text = parameter_.text();
    text.replace(static_cast<qsizetype>(part.begin), static_cast<qsizetype>(part.end - part.begin), name);
    parameter_.setText(text);
    parameter_.setCursorPosition(static_cast<int>(part.begin) + static_cast<int>(name.size()));
    parameter_.setFocus();
}

} // namespace zem
