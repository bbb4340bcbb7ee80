#include "editors/frmProcedureEditor.h"

#include "base/LineText.h"
#include "forms/DialogSize.h"
#include "forms/ListKeys.h"
#include "forms/ListRows.h"
#include "forms/RunCommand.h"
#include "script/ScriptEditing.h"
#include "ui_frmProcedureEditor.h"

#include <algorithm>
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
    Refresh();
    OnClick(ui_->butAdd, this, context.dialogs, [this] { butAdd_Click(); });
    OnClick(ui_->butEdit, this, context.dialogs, [this] { butEdit_Click(); });
    OnClick(ui_->butRemove, this, context.dialogs, [this] { butRemove_Click(); });
    connect(ui_->butClose, &QPushButton::clicked, this, &QDialog::accept);
    ConnectListKeys(*ui_->cmbProcedures, {ui_->butAdd, ui_->butRemove, ui_->butEdit});
    ui_->cmbProcedures->setFocus();
    RememberSize(*this);
}

frmProcedureEditor::~frmProcedureEditor() = default;

void frmProcedureEditor::Refresh() {
    ui_->cmbProcedures->clear();
    procedures_.clear();
    int k = 0;
    for (const Procedure& procedure : context_.door.Game().Procedures) {
        ++k;
        if (IsInternal(procedure.Name))
            continue;
        ui_->cmbProcedures->addItem(ToQt(procedure.Name));
        procedures_.push_back(k);
    }
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
    if (IsInternal(FromQt(*name)))
        return; // a name that hides it
    procedures_.push_back(context_.door.Game().Procedures.Count());
    AppendRow(*ui_->cmbProcedures, FromQt(*name));
    butEdit_Click();
}

void frmProcedureEditor::butEdit_Click() {
    const int k = SelectedProcedure();
    if (k == 0)
        return;
    const std::string script = context_.scripts.EditScript(this, context_.door.Game().Procedures[k].Script);
    context_.door.Change([&](GameModel& game) { game.Procedures.Edit(k).Script = script; });
}

void frmProcedureEditor::butRemove_Click() {
    const int k = SelectedProcedure();
    if (k == 0)
        return;
    context_.door.Change([&](GameModel& game) { game.Procedures.Remove(k); });
    const int row = SelectedRow(*ui_->cmbProcedures);
    Refresh();
    ui_->cmbProcedures->setCurrentRow(std::min(row, ui_->cmbProcedures->count() - 1));
}

} // namespace zem
