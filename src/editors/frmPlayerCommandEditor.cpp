#include "editors/frmPlayerCommandEditor.h"

#include "forms/AskBeforeDiscard.h"
#include "forms/DialogSize.h"
#include "forms/EditorHead.h"
#include "forms/ListClipboard.h"
#include "forms/ListKeys.h"
#include "forms/ListRows.h"
#include "forms/RunCommand.h"
#include "pieces/PastePiece.h"
#include "script/BlockBeside.h"
#include "script/ScriptDraft.h"
#include "script/ScriptEditing.h"
#include "script/frmEditCommand.h"
#include "ui_frmPlayerCommandEditor.h"

namespace zem {

frmPlayerCommandEditor::frmPlayerCommandEditor(const EditorContext& context,
                                               const std::vector<ScriptPair>& commands, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmPlayerCommandEditor>()),
      context_(context) {
    ui_->setupUi(this);
    ShowWhere(*this, {});
    commands_ = std::make_unique<ScriptPairList>(*ui_->lstCommands, commands);
    new SelectedScript(
        context, *this, *ui_->lstCommands,
        {[this](int row) -> const std::string& {
             return commands_->Pairs()[static_cast<std::size_t>(row)].Script;
         },
         [this](int row, const std::string& script) {
             commands_->Edit(row).Script = script;
             commands_->Show(row);
         },
         [this](int row) {
             return tr("Command %1").arg(ToQt(commands_->Pairs()[static_cast<std::size_t>(row)].Key));
         }});
    OnClick(ui_->butAdd, this, context_.dialogs, [this] { butAdd_Click(); });
    OnClick(ui_->butEdit, this, context_.dialogs, [this] { butEdit_Click(); });
    OnClick(ui_->butRemove, this, context_.dialogs, [this] { commands_->RemoveSelected(); });
    OnClick(ui_->butUp, this, context_.dialogs, [this] { commands_->MoveSelected(-1); });
    OnClick(ui_->butDown, this, context_.dialogs, [this] { commands_->MoveSelected(1); });
    connect(ui_->butOK, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui_->butCancel, &QPushButton::clicked, this, &QDialog::reject);
    ConnectListKeys(*ui_->lstCommands, {ui_->butAdd, ui_->butRemove, ui_->butEdit, ui_->butUp, ui_->butDown});
    ConnectClipboard(*ui_->lstCommands, context_.dialogs,
                     {[this] { return Copy(); },
                      [this](std::string_view text, const QString&) { Paste(text); },
                      [this] { commands_->RemoveSelected(); }});
    RememberSize(*this);
}

frmPlayerCommandEditor::~frmPlayerCommandEditor() = default;

PieceText frmPlayerCommandEditor::Copy() const {
    GameModel game = context_.scripts.Game();
    game.PlayerCommands.Clear();
    std::vector<Place> places;
    for (const int row : SelectedRows(*ui_->lstCommands)) {
        const ScriptPair& command = Commands()[static_cast<std::size_t>(row)];
        game.PlayerCommands.Append({command.Key, command.Script});
        places.push_back(Place::Of({{FieldId::GamePlayerCommands, game.PlayerCommands.Count()}}));
    }
    return CopyPiece(game, places);
}

void frmPlayerCommandEditor::Paste(std::string_view text) {
    Pasted pasted;
    context_.scripts.ChangeScript([&](GameModel& game) {
        pasted = PastePiece(game, text, {.only = {FieldId::GamePlayerCommands}}, context_.scripts.Commands());
        game.Procedures = pasted.game.Procedures;
        game.NextInternalProcedure = pasted.game.NextInternalProcedure;
        return std::string();
    });
    std::vector<int> rows;
    for (const Place& place : pasted.added) {
        const PlayerCommand& command = pasted.game.PlayerCommands[place.steps.front().entry];
        rows.push_back(commands_->Count());
        commands_->Append({command.Pattern, command.Script});
    }
    SelectRows(*ui_->lstCommands, rows);
}

void frmPlayerCommandEditor::butAdd_Click() {
    ScriptDraft draft(context_.scripts);
    frmEditCommand form(context_, {}, {}, this);
    const auto read = [this, &form](GameModel&) {
        std::vector<ScriptPair> commands = commands_->Pairs();
        commands.push_back({form.Pattern(), form.Action()});
        return commands;
    };
    const ValueEdit<std::vector<ScriptPair>> edit(context_.edits, commands_->EditPairs(), read);
    AskBeforeDiscard(form, context_.dialogs, edit);
    if (form.exec() != QDialog::Accepted)
        return;
    commands_->Append({form.Pattern(), form.Action()}); // The pattern may be empty.
    draft.Keep();
}

void frmPlayerCommandEditor::butEdit_Click() {
    const int row = commands_->SelectedRow();
    if (row < 0)
        return;
    ScriptPair& command = commands_->Edit(row);
    ScriptDraft draft(context_.scripts);
    frmEditCommand form(context_, command.Key, command.Script, this);
    const ValueEdit<ScriptPair> edit(context_.edits, command, [&form](GameModel&) {
        return ScriptPair{form.Pattern(), form.Action()};
    });
    AskBeforeDiscard(form, context_.dialogs, edit);
    if (form.exec() != QDialog::Accepted)
        return;
    command = {form.Pattern(), form.Action()};
    commands_->Show(row);
    draft.Keep();
}

void EditPlayerCommands(const EditorContext& context, std::vector<ScriptPair>& commands, QWidget* parent) {
    ScriptDraft draft(context.scripts);
    frmPlayerCommandEditor form(context, commands, parent);
    const ValueEdit<std::vector<ScriptPair>> edit(context.edits, commands,
                                                  [&form](GameModel&) { return form.Commands(); });
    AskBeforeDiscard(form, context.dialogs, edit);
    if (form.exec() != QDialog::Accepted)
        return;
    commands = form.Commands();
    draft.Keep();
}

} // namespace zem
