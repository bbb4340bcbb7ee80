#include "editors/frmThingProperties.h"

#include "editors/frmObjectInteract.h"
#include "editors/frmTagEditor.h"
#include "forms/AskBeforeDiscard.h"
#include "forms/DialogSize.h"
#include "forms/EarlyEnd.h"
#include "forms/EditorHead.h"
#include "forms/PageButtons.h"
#include "forms/RunCommand.h"
#include "script/ScriptEditing.h"
#include "script/ScriptField.h"
#include "ui_frmThingProperties.h"

namespace zem {

frmThingProperties::frmThingProperties(const EditorContext& context, ThingKind kind, int room, int thing,
                                       QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmThingProperties>()),
      context_(context),
      draft_(context.scripts),
      kind_(kind),
      room_(room),
      thing_(thing) {
    ui_->setupUi(this);
    new PageButtons(*ui_->pages, {ui_->butDetails, ui_->butActions, ui_->butMisc});
    AdaptToKind();
    const QString inRoom = ToQt(context.door.Game().Rooms[room_].Name);
    ShowWhere(
        *this,
        (IsCharacter() ? tr("Character %1 in %2") : tr("Object %1 in %2")).arg(ToQt(Record().Name), inRoom));
    Fill();
    ConnectMisc();
    OnClick(ui_->butOK, this, context_.dialogs, [this] { butOK_Click(); });
    connect(ui_->butCancel, &QPushButton::clicked, this, &QDialog::reject);
    ui_->txtThingName->setFocus();
    edit_ = std::make_unique<GameEdit>(context_.edits, [this](GameModel& game) { Write(game); });
    AskBeforeDiscard(*this, context_.dialogs, *edit_);
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
    EditParameter(*ui_->txtThingName, thing.Name, dialogs);
    EditParameter(*ui_->txtPrefix, thing.Prefix, dialogs);
    ui_->chkHidden->setChecked(thing.Hidden);
    ui_->chkInvisible->setChecked(thing.Invisible);
    look_ =
        new ScriptField(context_, *this, *ui_->txtDescription, *ui_->butLookAction, thing.Look, tr("look"));
    interact_ =
        new ScriptField(context_, *this, *ui_->txtInteract, *ui_->butSpeakAction,
                        IsCharacter() ? thing.Speak : thing.Take, IsCharacter() ? tr("speak") : tr("take"));
    miscTags_ = thing.MiscTags;
    uses_.assign(thing.Uses.begin(), thing.Uses.end());
    if (IsCharacter()) {
        EditParameter(*ui_->txtSuffix, thing.Suffix, dialogs);
        EditParameter(*ui_->txtGender, thing.Gender, dialogs);
        gives_.assign(thing.Gives.begin(), thing.Gives.end());
    }
}

void frmThingProperties::ConnectMisc() {
    Dialogs& dialogs = context_.dialogs;
    OnClick(ui_->butMoreTags, this, dialogs, [this] { EditTags(context_, miscTags_, this); });
    OnClick(ui_->butEditGive, this, dialogs, [this] {
        const QString name = ui_->txtThingName->text();
        EditGives(context_, QStringLiteral("Objects that can be GIVEn to %1:").arg(name), gives_, this);
    });
    OnClick(ui_->butEditUse, this, dialogs, [this] {
        const QString name = ui_->txtThingName->text();
        EditUses(context_, QStringLiteral("Objects that can be USEd on %1:").arg(name), uses_, this);
    });
}

void frmThingProperties::WriteThing(Thing& thing) const {
    thing.Name = FromQt(ui_->txtThingName->text());
    thing.Prefix = FromQt(ui_->txtPrefix->text());
    thing.Hidden = ui_->chkHidden->checkState() == Qt::Checked;
    thing.Invisible = ui_->chkInvisible->checkState() == Qt::Checked;
    thing.Look = look_->Script();
    (IsCharacter() ? thing.Speak : thing.Take) = interact_->Script();
    thing.MiscTags = miscTags_;
    thing.Uses.Assign(uses_);
    if (IsCharacter()) { // An object keeps the suffix that its file had, whatever is typed.
        thing.Suffix = FromQt(ui_->txtSuffix->text());
        thing.Gender = FromQt(ui_->txtGender->text());
        thing.Gives.Assign(gives_);
    }
}

void frmThingProperties::Write(GameModel& game) const {
    Room& room = game.Rooms.Edit(room_);
    WriteThing((IsCharacter() ? room.Characters : room.Objects).Edit(thing_));
}

void frmThingProperties::butOK_Click() {
    context_.door.Change([this](GameModel& game) {
        draft_.Keep(game);
        Write(game);
    });
    accept();
}

} // namespace zem
