#include "editors/frmSynonyms.h"

#include "editors/frmSynonymEditor.h"
#include "forms/AskBeforeDiscard.h"
#include "forms/DialogSize.h"
#include "forms/ListKeys.h"
#include "forms/ListRows.h"
#include "forms/RunCommand.h"
#include "ui_frmSynonyms.h"

#include <cstddef>

namespace zem {

frmSynonyms::frmSynonyms(const EditorContext& context, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmSynonyms>()),
      context_(context) {
    ui_->setupUi(this);
    for (const SynonymEntry& entry : context.door.Game().Synonyms) {
        ui_->lstSynonyms->addItem(ToQt(entry.ConvertTo));
        entries_.push_back(entry);
    }
    OnClick(ui_->butAdd, this, context.dialogs, [this] { butAdd_Click(); });
    OnClick(ui_->butEdit, this, context.dialogs, [this] { butEdit_Click(); });
    OnClick(ui_->butRemove, this, context.dialogs, [this] { butRemove_Click(); });
    OnClick(ui_->butOK, this, context.dialogs, [this] { butOK_Click(); });
    connect(ui_->butCancel, &QPushButton::clicked, this, &QDialog::reject);
    ConnectListKeys(*ui_->lstSynonyms, {ui_->butAdd, ui_->butRemove, ui_->butEdit});
    ui_->lstSynonyms->setFocus();
    edit_ = std::make_unique<GameEdit>(context_.edits, [this](GameModel& game) { Write(game); });
    AskBeforeDiscard(*this, context_.dialogs, *edit_);
    RememberSize(*this);
}

frmSynonyms::~frmSynonyms() = default;

void frmSynonyms::butAdd_Click() {
    frmSynonymEditor form(context_, {}, this);
    const auto read = [this, &form](GameModel&) {
        std::vector<SynonymEntry> entries = entries_;
        entries.push_back(form.Entry());
        return entries;
    };
    const ValueEdit<std::vector<SynonymEntry>> edit(context_.edits, entries_, read);
    AskBeforeDiscard(form, context_.dialogs, edit);
    if (form.exec() != QDialog::Accepted)
        return;
    entries_.push_back(form.Entry());
    AppendRow(*ui_->lstSynonyms, entries_.back().ConvertTo);
}

void frmSynonyms::butEdit_Click() {
    const int row = SelectedRow(*ui_->lstSynonyms);
    if (row < 0)
        return;
    SynonymEntry& entry = entries_[static_cast<std::size_t>(row)];
    frmSynonymEditor form(context_, entry, this);
    const ValueEdit<SynonymEntry> edit(context_.edits, entry, [&form](GameModel&) { return form.Entry(); });
    AskBeforeDiscard(form, context_.dialogs, edit);
    if (form.exec() != QDialog::Accepted)
        return;
    entry = form.Entry();
    ui_->lstSynonyms->item(row)->setText(ToQt(entry.ConvertTo));
}

void frmSynonyms::butRemove_Click() {
    const int row = RemoveSelectedRow(*ui_->lstSynonyms);
    if (row >= 0)
        entries_.erase(entries_.begin() + row);
}

void frmSynonyms::Write(GameModel& game) const {
    game.Synonyms.Clear();
    for (const SynonymEntry& entry : entries_)
        game.Synonyms.Append(entry);
}

void frmSynonyms::butOK_Click() {
    context_.door.Change([this](GameModel& game) { Write(game); });
    accept();
}

} // namespace zem
