#include "editors/frmProcedureEditor.h"

#include "base/LineText.h"
#include "forms/DialogSize.h"
#include "forms/ListClipboard.h"
#include "forms/ListKeys.h"
#include "forms/ListRows.h"
#include "forms/RunCommand.h"
#include "pieces/MoveRecords.h"
#include "pieces/PastePiece.h"
#include "script/BlockBeside.h"
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
    Fill();
    ShowScripts();
    OnClick(ui_->butAdd, this, context.dialogs, [this] { butAdd_Click(); });
    OnClick(ui_->butEdit, this, context.dialogs, [this] { butEdit_Click(); });
    OnClick(ui_->butRemove, this, context.dialogs, [this] { butRemove_Click(); });
    connect(ui_->butClose, &QPushButton::clicked, this, &QDialog::accept);
    ConnectListKeys(*ui_->cmbProcedures, {ui_->butAdd, ui_->butRemove, ui_->butEdit});
    ConnectClipboard(*ui_->cmbProcedures, context.dialogs,
                     {[this] { return CopyPiece(context_.door.Game(), SelectedPlaces()); },
                      [this](std::string_view text, const QString&) { Paste(text); },
                      [this] { butRemove_Click(); }});
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
    const std::vector<Place> places = SelectedPlaces();
    if (places.empty())
        return;
    context_.door.Change([&](GameModel& game) { RemoveRecords(game, places); });
    // The list is not filled anew: that would hide what was added under a name like an internal one's.
    EraseRows(procedures_, RemoveSelectedRows(*ui_->cmbProcedures));
    for (int& later : procedures_)
        later -= static_cast<int>(std::count_if(places.begin(), places.end(), [&](const Place& removed) {
            return removed.steps.front().entry < later;
        }));
    script_->Refresh();
}

std::vector<Place> frmProcedureEditor::SelectedPlaces() const {
    std::vector<Place> places;
    for (const int row : SelectedRows(*ui_->cmbProcedures))
        places.push_back(Place::Of({{FieldId::GameProcedures, procedures_[static_cast<std::size_t>(row)]}}));
    return places;
}

void frmProcedureEditor::Paste(std::string_view text) {
    const Pasted pasted = PastePiece(context_.door.Game(), text, {.only = {FieldId::GameProcedures}},
                                     context_.scripts.Commands());
    context_.door.Change([&](GameModel& game) { game = pasted.game; });
    std::vector<int> rows;
    for (const Place& place : pasted.added) {
        rows.push_back(ui_->cmbProcedures->count());
        procedures_.push_back(place.steps.front().entry);
        ui_->cmbProcedures->addItem(ToQt(pasted.game.Procedures[procedures_.back()].Name));
    }
    SelectRows(*ui_->cmbProcedures, rows);
}

} // namespace zem
