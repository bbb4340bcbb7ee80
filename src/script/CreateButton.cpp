#include "script/CreateButton.h"

#include "forms/RunCommand.h"
#include "script/MissingNames.h"
#include "script/ScriptEditing.h"

namespace zem {

namespace {

QString CaptionOf(NameKind kind) {
    switch (kind) {
    case NameKind::Procedure:
        return CreateButton::tr("Create procedure \"%1\"...");
    case NameKind::TextSection:
        return CreateButton::tr("Create text block \"%1\"...");
    case NameKind::Menu:
        return CreateButton::tr("Create menu \"%1\"");
    case NameKind::Room:
        return CreateButton::tr("Create room \"%1\"");
    default:
        return CreateButton::tr("Create item \"%1\"");
    }
}

constexpr qsizetype LongestName = 40; // letters on the button

} // namespace

CreateButton::CreateButton(QWidget* parent) : QPushButton(parent) {
    setAutoDefault(false);
    setWhatsThis(
        tr("Makes what the script names and the game does not have yet. With Cancel of the editor around it "
           "it is gone again."));
    hide();
}

void CreateButton::Use(ScriptEditing& scripts, Dialogs& dialogs) {
    scripts_ = &scripts;
    dialogs_ = &dialogs;
    OnClick(this, window(), dialogs, [this] { Create(); });
}

void CreateButton::SetScript(const std::string& script) {
    script_ = script;
    const std::optional<NamedThing> missing = FirstMissingName(*scripts_, script);
    setVisible(missing.has_value());
    if (!missing)
        return;
    name_ = missing->name;
    kind_ = missing->kind;
    QString shown = ToQt(name_);
    if (shown.size() > LongestName)
        shown = shown.left(LongestName) + QChar(u'…');
    const QString caption = CaptionOf(kind_).arg(shown);
    setAccessibleName(caption);
    setText(QString(caption).replace(u'&', QLatin1String("&&")));
}

void CreateButton::Create() {
    if (!scripts_->Create(window(), kind_, name_))
        return;
    SetScript(script_);
    emit Created();
}

} // namespace zem
