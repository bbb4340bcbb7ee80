#include "editors/frmPlayerCommandEditor.h"

#include "forms/DialogSize.h"
#include "forms/ListKeys.h"
#include "forms/RunCommand.h"
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
    commands_ = std::make_unique<ScriptPairList>(*ui_->lstCommands, commands);
    OnClick(ui_->butAdd, this, context_.dialogs, [this] { butAdd_Click(); });
    OnClick(ui_->butEdit, this, context_.dialogs, [this] { butEdit_Click(); });
    OnClick(ui_->butRemove, this, context_.dialogs, [this] { commands_->RemoveSelected(); });
    OnClick(ui_->butUp, this, context_.dialogs, [this] { commands_->MoveSelected(-1); });
    OnClick(ui_->butDown, this, context_.dialogs, [this] { commands_->MoveSelected(1); });
    connect(ui_->butOK, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui_->butCancel, &QPushButton::clicked, this, &QDialog::reject);
    ConnectListKeys(*ui_->lstCommands, {ui_->butAdd, ui_->butRemove, ui_->butEdit, ui_->butUp, ui_->butDown});
    RememberSize(*this);
}

frmPlayerCommandEditor::~frmPlayerCommandEditor() = default;

void frmPlayerCommandEditor::butAdd_Click() {
    frmEditCommand form(context_, {}, {}, this);
    if (form.exec() == QDialog::Accepted)
        commands_->Append({form.Pattern(), form.Action()}); // an empty pattern, too
}

void frmPlayerCommandEditor::butEdit_Click() {
    const int row = commands_->SelectedRow();
    if (row < 0)
        return;
    ScriptPair& command = commands_->Edit(row);
    frmEditCommand form(context_, command.Key, command.Script, this);
    if (form.exec() != QDialog::Accepted)
        return;
    command = {form.Pattern(), form.Action()};
    commands_->Show(row);
}

void EditPlayerCommands(const EditorContext& context, std::vector<ScriptPair>& commands, QWidget* parent) {
    frmPlayerCommandEditor form(context, commands, parent);
    if (form.exec() == QDialog::Accepted)
        commands = form.Commands();
}

} // namespace zem
