#include "editors/frmProcedureEditor.h"

#include "base/LineText.h"
#include "forms/DialogSize.h"
#include "forms/ListKeys.h"
#include "forms/ListRows.h"
#include "forms/RunCommand.h"
#include "script/BlockBeside.h"
#include "script/ScriptEditing.h"
#include "ui_frmProcedureEditor.h"

#include <cstddef>

namespace zem {

namespace {

bool IsInternal(const std::string& name) {
    constexpr std::string_view Prefix = InternalProcedure;
    return EqualIgnoringCase(std::string_view(name).substr(0, Prefix.size()), Prefix);
}

} // namespace

frmProcedureEditor::frmProcedureEditor(const EditorContext& context, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmProcedureEditor>()),
      context_(context) {
    ui_->setupUi(this);
    Fill();
    ShowScripts();
    OnClick(ui_->butAdd, this, context.dialogs, [this] { butAdd_Click(); });
    OnClick(ui_->butEdit, this, context.dialogs, [this] { butEdit_Click(); });
    OnClick(ui_->butRemove, this, context.dialogs, [this] { butRemove_Click(); });
    connect(ui_->butClose, &QPushButton::clicked, this, &QDialog::accept);
    ConnectListKeys(*ui_->cmbProcedures, {ui_->butAdd, ui_->butRemove, ui_->butEdit});
    ui_->cmbProcedures->setFocus();
    RememberSize(*this);
}

frmProcedureEditor::~frmProcedureEditor() = default;

/// Lists the author's own procedures; those that the editor made of scripts stay hidden.
void frmProcedureEditor::Fill() {
    int k = 0;
    for (const Procedure& procedure : context_.door.Game().Procedures) {
        ++k;
        if (IsInternal(procedure.Name))
            continue;
        ui_->cmbProcedures->addItem(ToQt(procedure.Name));
        procedures_.push_back(k);
    }
}

void frmProcedureEditor::ShowScripts() {
    const auto procedure = [this](int row) -> const Procedure& {
        return context_.door.Game().Procedures[procedures_[static_cast<std::size_t>(row)]];
    };
    script_ = new SelectedScript(
        context_, *this, *ui_->cmbProcedures,
        {[procedure](int row) -> const std::string& { return procedure(row).Script; },
         [this](int row, const std::string& script) {
             const int k = procedures_[static_cast<std::size_t>(row)];
             context_.door.Change([&](GameModel& game) { game.Procedures.Edit(k).Script = script; });
         },
         [procedure](int row) { return tr("Procedure %1").arg(ToQt(procedure(row).Name)); }});
}

int frmProcedureEditor::SelectedProcedure() const {
    const int row = SelectedRow(*ui_->cmbProcedures);
    return row < 0 ? 0 : procedures_[static_cast<std::size_t>(row)];
}

void frmProcedureEditor::butAdd_Click() {
    const std::optional<QString> name =
        AskName(context_.dialogs, this, QStringLiteral("Enter a name for this new procedure:"),
                QStringLiteral("New Procedure"));
    if (!name)
        return;
    context_.door.Change([&](GameModel& game) { game.Procedures.Append().Name = FromQt(*name); });
    procedures_.push_back(context_.door.Game().Procedures.Count());
    AppendRow(*ui_->cmbProcedures, FromQt(*name));
    butEdit_Click();
}

void frmProcedureEditor::butEdit_Click() {
    const int k = SelectedProcedure();
    if (k == 0)
        return;
    std::string script = context_.door.Game().Procedures[k].Script;
    const auto write = [&script, k](GameModel& game) { game.Procedures.Edit(k).Script = script; };
    const GameEdit edit(context_.edits, write);
    context_.scripts.EditScript(this, script,
                                tr("Procedure %1").arg(ToQt(context_.door.Game().Procedures[k].Name)));
    context_.door.Change(write);
    script_->Refresh();
}

void frmProcedureEditor::butRemove_Click() {
    const int k = SelectedProcedure();
    if (k == 0)
        return;
    context_.door.Change([&](GameModel& game) { game.Procedures.Remove(k); });
    // The list is not filled anew: that would hide what was added under a name like an internal one's.
    procedures_.erase(procedures_.begin() + SelectedRow(*ui_->cmbProcedures));
    for (int& later : procedures_)
        later -= later > k ? 1 : 0;
    RemoveSelectedRow(*ui_->cmbProcedures);
    script_->Refresh();
}

} // namespace zem
