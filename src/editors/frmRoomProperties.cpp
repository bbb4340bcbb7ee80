#include "editors/frmRoomProperties.h"

#include "editors/frmAddNewPlace.h"
#include "editors/frmObjectInteract.h"
#include "editors/frmPlayerCommandEditor.h"
#include "editors/frmTagEditor.h"
#include "forms/AskBeforeDiscard.h"
#include "forms/DialogSize.h"
#include "forms/EarlyEnd.h"
#include "forms/EditorHead.h"
#include "forms/ListKeys.h"
#include "forms/ListRows.h"
#include "forms/PageButtons.h"
#include "forms/RunCommand.h"
#include "forms/ToolTip.h"
#include "prose/HelpWriting.h"
#include "prose/ProseRow.h"
#include "script/BlockBeside.h"
#include "script/ScriptEditing.h"
#include "script/ScriptField.h"
#include "ui_frmRoomProperties.h"

#include <algorithm>
#include <iterator>

namespace zem {

namespace {

constexpr const char* NotAccessible = "[not accessible]";

/// The exit of a room in a row of the form.
template <class RoomRecord>
auto& ExitOf(RoomRecord& room, std::size_t exit) {
    return exit == 0 ? room.Out : room.*CompassExits[exit - 1].exit;
}

/// The row of an exit's box for its destination. One that does not exist gets the row for none, and is none
/// after OK.
int RowOfDestination(const Table<Room>& rooms, const std::string& destination, bool isCompassExit) {
    if (destination.empty())
        return 0;
    if (isCompassExit && destination == ActionExit)
        return rooms.Count() + 1;
    const auto found =
        std::find_if(rooms.begin(), rooms.end(), [&](const Room& room) { return room.Name == destination; });
    return found == rooms.end() ? 0 : static_cast<int>(std::distance(rooms.begin(), found)) + 1;
}

} // namespace

frmRoomProperties::frmRoomProperties(const EditorContext& context, int room, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmRoomProperties>()),
      context_(context),
      draft_(context.scripts),
      room_(room) {
    ui_->setupUi(this);
    cmbRoomNames_ = {ui_->cmbRoomNames_0, ui_->cmbRoomNames_1, ui_->cmbRoomNames_2,
                     ui_->cmbRoomNames_3, ui_->cmbRoomNames_4, ui_->cmbRoomNames_5,
                     ui_->cmbRoomNames_6, ui_->cmbRoomNames_7, ui_->cmbRoomNames_8};
    butRoomAction_ = {ui_->butRoomAction_0, ui_->butRoomAction_1, ui_->butRoomAction_2,
                      ui_->butRoomAction_3, ui_->butRoomAction_4, ui_->butRoomAction_5,
                      ui_->butRoomAction_6, ui_->butRoomAction_7, ui_->butRoomAction_8};
    new PageButtons(*ui_->pages, {ui_->butDetails, ui_->butExits, ui_->butActions, ui_->butMisc});
    const Room record = context.door.Game().Rooms[room];
    ShowWhere(*this, tr("Room %1").arg(ToQt(record.Name)));
    FillDetails(record);
    FillExits(record);
    FillPlaces(record);
    enterScript_ = new ScriptField(context, *this, *ui_->txtScript, *ui_->butEditScript, record.Script,
                                   tr("enter action"));
    descriptionScript_ =
        new ScriptField(context, *this, *ui_->txtDescriptionScript, *ui_->butEditDescriptionScript,
                        record.Description, tr("print description action"));
    commands_.assign(record.Commands.begin(), record.Commands.end());
    uses_.assign(record.Uses.begin(), record.Uses.end());
    miscTags_ = record.MiscTags;
    ConnectMisc();
    OnClick(ui_->butOK, this, context_.dialogs, [this] { butOK_Click(); });
    connect(ui_->butCancel, &QPushButton::clicked, this, &QDialog::reject);
    edit_ = std::make_unique<GameEdit>(context_.edits, [this](GameModel& game) { Write(game); });
    AskBeforeDiscard(*this, context_.dialogs, *edit_);
    ui_->txtDescription->setFocus(); // what is written most often
    RememberSize(*this);
}

frmRoomProperties::~frmRoomProperties() = default;

void frmRoomProperties::FillDetails(const Room& room) {
    ui_->txtRoomName->setText(ToQt(room.Name)); // This window never renames a room.
    QPalette readOnly = ui_->txtRoomName->palette();
    readOnly.setColor(QPalette::Base, readOnly.color(QPalette::Window));
    ui_->txtRoomName->setPalette(readOnly);
    Dialogs& dialogs = context_.dialogs;
    EditParameter(*ui_->txtRoomAlias, room.Alias, dialogs);
    EditParameter(*ui_->txtPrefix, room.Prefix, dialogs);
    EditParameter(*ui_->txtInDescription, room.InDescription, dialogs);
    ui_->txtDescription->SetText(room.Look);
    ui_->txtDescription->RefuseUnstorableText(dialogs);
    ui_->txtDescription->HoldOneLine(); // The file holds it on one line.
    RemarkEarlyEnd(*ui_->txtDescription);
    HelpWriting(*ui_->txtInDescription, context_);
    HelpWriting(*ui_->txtDescription, *ui_->rowDescription, context_);
}

void frmRoomProperties::FillExits(const Room& room) {
    const Table<Room> rooms = context_.door.Game().Rooms;
    const int count = rooms.Count();
    const auto name = [rooms, count](int row) {
        if (row == 0)
            return QString(QLatin1String(NotAccessible));
        return row <= count ? ToQt(rooms[row].Name) : QString(QLatin1String(ActionExit));
    };
    outNames_.Reset(count + 1, name);
    compassNames_.Reset(count + 2, name);
    for (std::size_t exit = 0; exit < ExitCount; ++exit) {
        NameBox& box = *cmbRoomNames_[exit];
        box.Offer(exit == 0 ? outNames_ : compassNames_);
        connect(&box, &QComboBox::currentTextChanged, this, [this, exit] { cmbRoomNames_Change(exit); });
        box.setCurrentIndex(RowOfDestination(rooms, ExitOf(room, exit)->Key, exit != 0));
        box.RefuseUnstorableText(context_.dialogs);
        RemarkEarlyEnd(box);
        ShowExitScript(exit, ExitOf(room, exit)->Script);
        OnClick(butRoomAction_[exit], this, context_.dialogs, [this, exit] { butRoomAction_Click(exit); });
    }
}

/// An exit has no box for its script: its button tells it.
void frmRoomProperties::ShowExitScript(std::size_t exit, const std::string& script) {
    constexpr std::size_t MostRows = 30;
    const QString whole = context_.scripts.WholeText(script, MostRows);
    butRoomAction_[exit]->setToolTip(ToolTipOf(whole));
    butRoomAction_[exit]->setAccessibleDescription(whole);
}

void frmRoomProperties::cmbRoomNames_Change(std::size_t exit) {
    const QString text = cmbRoomNames_[exit]->currentText();
    butRoomAction_[exit]->setEnabled(exit == 0 ? text != QLatin1String(NotAccessible)
                                               : text == QLatin1String(ActionExit));
}

/// Writes the action into the game at once: Cancel does not take it back, on purpose.
void frmRoomProperties::butRoomAction_Click(std::size_t exit) {
    std::string script = ExitOf(context_.door.Game().Rooms[room_], exit)->Script;
    const auto write = [&](GameModel& game) {
        draft_.KeepCalled(script, game);
        if (ExitOf(game.Rooms[room_], exit)->Script != script)
            ExitOf(game.Rooms.Edit(room_), exit).Edit().Script = script;
    };
    const GameEdit edit(context_.edits, write);
    const QString what =
        exit == 0 ? tr("exit out") : tr("exit %1").arg(QLatin1String(CompassExits[exit - 1].direction));
    if (!context_.scripts.EditScript(this, script, what))
        return;
    ShowExitScript(exit, script);
    GameModel changed = context_.door.Game();
    write(changed);
    if (!SameGame(changed, context_.door.Game()))
        context_.door.Change(write);
    edit_->Settle(write);
}

void frmRoomProperties::FillPlaces(const Room& room) {
    for (const ScriptPair& place : room.Places) {
        ui_->lstPlaces->addItem(ToQt(place.Key));
        placeScripts_.push_back(place.Script);
    }
    placeScript_ = new SelectedScript(
        context_, *this, *ui_->lstPlaces,
        {[this](int row) -> const std::string& { return placeScripts_[static_cast<std::size_t>(row)]; },
         [this](int row, const std::string& script) {
             placeScripts_[static_cast<std::size_t>(row)] = script;
         },
         [this](int row) { return tr("place %1").arg(ui_->lstPlaces->item(row)->text()); }});
    OnClick(ui_->butAddPlace, this, context_.dialogs, [this] { butAddPlace_Click(); });
    OnClick(ui_->butRemovePlace, this, context_.dialogs, [this] { butRemovePlace_Click(); });
    OnClick(ui_->butScript, this, context_.dialogs, [this] { butScript_Click(); });
    ConnectListKeys(*ui_->lstPlaces, {ui_->butAddPlace, ui_->butRemovePlace, ui_->butScript});
}

void frmRoomProperties::butAddPlace_Click() {
    roomNames_.ShowNames(context_.door.Game().Rooms);
    frmAddNewPlace form(context_, roomNames_, this);
    const ValueEdit<std::string> edit(context_.edits, newPlace_,
                                      [&form](GameModel&) { return form.Place(); });
    AskBeforeDiscard(form, context_.dialogs, edit);
    if (form.exec() != QDialog::Accepted)
        return;
    AppendRow(*ui_->lstPlaces, form.Place());
    placeScripts_.emplace_back();
}

/// The scripts stay where they are, on purpose: the places after this one take over the scripts before
/// theirs.
void frmRoomProperties::butRemovePlace_Click() {
    RemoveSelectedRow(*ui_->lstPlaces);
}

void frmRoomProperties::butScript_Click() {
    const int row = SelectedRow(*ui_->lstPlaces);
    if (row < 0)
        return;
    std::string& script = placeScripts_[static_cast<std::size_t>(row)];
    context_.scripts.EditScript(this, script, tr("place %1").arg(ui_->lstPlaces->item(row)->text()));
    placeScript_->Refresh();
}

void frmRoomProperties::ConnectMisc() {
    Dialogs& dialogs = context_.dialogs;
    OnClick(ui_->butMoreTags, this, dialogs, [this] { EditTags(context_, miscTags_, this); });
    OnClick(ui_->butCommands, this, dialogs, [this] { EditPlayerCommands(context_, commands_, this); });
    OnClick(ui_->butEditUse, this, dialogs, [this] {
        EditUses(context_, QStringLiteral("Objects that can be USEd in this room:"), uses_, this);
    });
    OnClick(ui_->butHelp, this, dialogs,
            [this] { context_.shell.ShowHelp(QStringLiteral("roomhelp"), this); });
}

void frmRoomProperties::WriteDetails(Room& room) const {
    room.Alias = FromQt(ui_->txtRoomAlias->text());
    room.Prefix = FromQt(ui_->txtPrefix->text());
    room.Look = ui_->txtDescription->Text();
    room.InDescription = FromQt(ui_->txtInDescription->text());
    room.Script = enterScript_->Script();
    room.Description = descriptionScript_->Script();
    room.MiscTags = miscTags_;
}

void frmRoomProperties::WriteExits(Room& room) const {
    for (std::size_t exit = 0; exit < ExitCount; ++exit) {
        const std::string text = cmbRoomNames_[exit]->Text();
        const std::string destination = text == NotAccessible ? std::string() : text;
        Shared<ScriptPair>& pair = ExitOf(room, exit);
        if (pair->Key != destination)
            pair.Edit().Key = destination;
    }
}

void frmRoomProperties::WriteLists(Room& room) const {
    RowsToTable(*ui_->lstPlaces, room.Places, [this](ScriptPair& place, int row) {
        place = {RowText(*ui_->lstPlaces, row), placeScripts_[static_cast<std::size_t>(row)]};
    });
    if (!newPlace_.empty())
        room.Places.Append({newPlace_, ""});
    room.Commands.Assign(commands_);
    room.Uses.Assign(uses_);
}

void frmRoomProperties::Write(GameModel& game) const {
    Room& room = game.Rooms.Edit(room_);
    WriteDetails(room);
    WriteExits(room);
    WriteLists(room);
}

void frmRoomProperties::butOK_Click() {
    context_.door.Change([this](GameModel& game) {
        draft_.Keep(game);
        Write(game);
    });
    accept();
}

} // namespace zem
