#include "editors/frmThingProperties.h"

#include "editors/frmObjectInteract.h"
#include "editors/frmTagEditor.h"
#include "forms/DialogSize.h"
#include "forms/PageButtons.h"
#include "forms/RunCommand.h"
#include "forms/StorableInput.h"
#include "script/ScriptEditing.h"
#include "script/ScriptField.h"
#include "ui_frmThingProperties.h"

namespace zem {

frmThingProperties::frmThingProperties(const EditorContext& context, ThingKind kind, int room, int thing,
                                       QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmThingProperties>()),
      context_(context),
      kind_(kind),
      room_(room),
      thing_(thing) {
    ui_->setupUi(this);
    new PageButtons(*ui_->pages, {ui_->butDetails, ui_->butActions, ui_->butMisc});
    AdaptToKind();
    Fill();
    ConnectMisc(ToQt(Record().Name));
    OnClick(ui_->butOK, this, context_.dialogs, [this] { butOK_Click(); });
    connect(ui_->butCancel, &QPushButton::clicked, this, &QDialog::reject);
    ui_->txtThingName->setFocus();
    RememberSize(*this);
}

frmThingProperties::~frmThingProperties() = default;

const Thing& frmThingProperties::Record() const {
    const Room& room = context_.door.Game().Rooms[room_];
    return (IsCharacter() ? room.Characters : room.Objects)[thing_];
}

void frmThingProperties::AdaptToKind() {
    const auto text = [this](const char* character, const char* object) {
        return QLatin1String(IsCharacter() ? character : object);
    };
    setWindowTitle(text("Character Properties", "Object Properties"));
    ui_->butMoreTags->setText(text("Edit &miscellaneous tags (this 'define character' block)",
                                   "Edit &miscellaneous tags (this 'define object' block)"));
    ui_->lblInteract->setText(text("'&SPEAK' action:", "'&TAKE' action:"));
    ui_->butSpeakAction->setAccessibleName(text("Edit 'SPEAK' action", "Edit 'TAKE' action"));
    for (QWidget* forCharacters :
         {static_cast<QWidget*>(ui_->lblGender), static_cast<QWidget*>(ui_->txtGender),
          static_cast<QWidget*>(ui_->butEditGive)})
        forCharacters->setVisible(IsCharacter());
}

void frmThingProperties::Fill() {
    const Thing thing = Record();
    Dialogs& dialogs = context_.dialogs;
    EditStorableText(*ui_->txtThingName, thing.Name, dialogs);
    EditStorableText(*ui_->txtPrefix, thing.Prefix, dialogs);
    EditStorableText(*ui_->txtSuffix, IsCharacter() ? thing.Suffix : "", dialogs);
    EditStorableText(*ui_->txtGender, IsCharacter() ? thing.Gender : "", dialogs);
    ui_->chkHidden->setChecked(thing.Hidden);
    ui_->chkInvisible->setChecked(thing.Invisible);
    look_ = new ScriptField(context_, *this, *ui_->txtDescription, *ui_->butLookAction, thing.Look);
    interact_ = new ScriptField(context_, *this, *ui_->txtInteract, *ui_->butSpeakAction,
                                IsCharacter() ? thing.Speak : thing.Take);
    gives_.assign(thing.Gives.begin(), thing.Gives.end());
    uses_.assign(thing.Uses.begin(), thing.Uses.end());
    miscTags_ = thing.MiscTags;
}

void frmThingProperties::ConnectMisc(const QString& name) {
    Dialogs& dialogs = context_.dialogs;
    OnClick(ui_->butMoreTags, this, dialogs, [this] { EditTags(context_, miscTags_, this); });
    OnClick(ui_->butEditGive, this, dialogs, [this, name] {
        EditGives(context_, QStringLiteral("Objects that can be GIVEn to %1:").arg(name), gives_, this);
    });
    OnClick(ui_->butEditUse, this, dialogs, [this, name] {
        EditUses(context_, QStringLiteral("Objects that can be USEd on %1:").arg(name), uses_, this);
    });
}

void frmThingProperties::Write(Thing& thing) const {
    thing.Name = FromQt(ui_->txtThingName->text());
    thing.Prefix = FromQt(ui_->txtPrefix->text());
    thing.Hidden = ui_->chkHidden->checkState() == Qt::Checked;
    thing.Invisible = ui_->chkInvisible->checkState() == Qt::Checked;
    thing.Look = look_->Script();
    thing.MiscTags = miscTags_;
    thing.Uses.Assign(uses_);
    if (!IsCharacter()) { // whose suffix is not written, on purpose, whatever was typed
        thing.Take = interact_->Script();
        return;
    }
    thing.Suffix = FromQt(ui_->txtSuffix->text());
    thing.Gender = FromQt(ui_->txtGender->text());
    thing.Speak = interact_->Script();
    thing.Gives.Assign(gives_);
}

void frmThingProperties::butOK_Click() {
    context_.door.Change([this](GameModel& game) {
        Room& room = game.Rooms.Edit(room_);
        Write((IsCharacter() ? room.Characters : room.Objects).Edit(thing_));
    });
    accept();
}

} // namespace zem
