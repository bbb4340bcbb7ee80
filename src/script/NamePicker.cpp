#include "script/NamePicker.h"

#include "kel/ScriptLine.h"
#include "qt/QtText.h"
#include "script/ScriptEditing.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>

namespace zem {

namespace {

constexpr int ShownCharacters = 12; // at least

} // namespace

NamePicker::NamePicker(QLineEdit& parameter, QLabel& label, QComboBox& names, const ScriptEditing& scripts)
    : QObject(&parameter),
      parameter_(parameter),
      label_(label),
      names_(names),
      scripts_(scripts) {
    // Otherwise the box measures every name, and there may be 32,767.
    names.setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    names.setMinimumContentsLength(ShownCharacters);
    names.setModel(&list_);
    static_cast<QListView*>(names.view())->setUniformItemSizes(true);
    names.installEventFilter(this);
    names.view()->installEventFilter(this);
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
    const bool hasNames = kind != NameKind::None && kind != NameKind::File; // files are no part of the game
    label_.setVisible(hasNames);
    names_.setVisible(hasNames);
    if (kind == shown_)
        return;
    shown_ = kind;
    const auto names = scripts_.Names(kind);
    list_.Reset(static_cast<int>(names->size()),
                [names](int row) { return ToQt((*names)[static_cast<std::size_t>(row)]); });
    names_.setCurrentIndex(-1);
}

void NamePicker::Insert(const QString& name) {
    const ParameterPart part = PartAtCaret(parameter_, syntax_);
    QString text = parameter_.text();
    text.replace(static_cast<qsizetype>(part.range.begin), static_cast<qsizetype>(part.range.Size()), name);
    parameter_.setText(text);
    parameter_.setCursorPosition(static_cast<int>(part.range.begin) + static_cast<int>(name.size()));
    // A letter or an arrow key chooses in the closed box, too; the next one belongs to the same name.
    if (isFromList_)
        parameter_.setFocus();
}

bool NamePicker::eventFilter(QObject* watched, QEvent* event) {
    if (watched == names_.view() && event->type() == QEvent::Show)
        isFromList_ = true;
    else if (watched == &names_ && (event->type() == QEvent::KeyPress || event->type() == QEvent::Wheel))
        isFromList_ = false;
    return QObject::eventFilter(watched, event);
}

} // namespace zem
