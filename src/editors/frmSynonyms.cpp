#include "editors/frmSynonyms.h"

#include "editors/frmSynonymEditor.h"
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
        words_.push_back(entry.Words);
    }
    OnClick(ui_->butAdd, this, context.dialogs, [this] { butAdd_Click(); });
    OnClick(ui_->butEdit, this, context.dialogs, [this] { butEdit_Click(); });
    OnClick(ui_->butRemove, this, context.dialogs, [this] { butRemove_Click(); });
    OnClick(ui_->butOK, this, context.dialogs, [this] { butOK_Click(); });
    connect(ui_->butCancel, &QPushButton::clicked, this, &QDialog::reject);
    ConnectListKeys(*ui_->lstSynonyms, {ui_->butAdd, ui_->butRemove, ui_->butEdit});
    ui_->lstSynonyms->setFocus();
    RememberSize(*this);
}

frmSynonyms::~frmSynonyms() = default;

void frmSynonyms::butAdd_Click() {
    frmSynonymEditor form(context_, {}, this);
    if (form.exec() != QDialog::Accepted)
        return;
    const SynonymEntry entry = form.Entry();
    words_.push_back(entry.Words);
    AppendRow(*ui_->lstSynonyms, entry.ConvertTo);
}

void frmSynonyms::butEdit_Click() {
    const int row = SelectedRow(*ui_->lstSynonyms);
    if (row < 0)
        return;
    std::string& words = words_[static_cast<std::size_t>(row)];
    frmSynonymEditor form(context_, {words, RowText(*ui_->lstSynonyms, row)}, this);
    if (form.exec() != QDialog::Accepted)
        return;
    words = form.Entry().Words;
    ui_->lstSynonyms->item(row)->setText(ToQt(form.Entry().ConvertTo));
}

void frmSynonyms::butRemove_Click() {
    const int row = RemoveSelectedRow(*ui_->lstSynonyms);
    if (row >= 0)
        words_.erase(words_.begin() + row);
}

void frmSynonyms::butOK_Click() {
    context_.door.Change([this](GameModel& game) {
        RowsToTable(*ui_->lstSynonyms, game.Synonyms, [this](SynonymEntry& entry, int row) {
            entry = {words_[static_cast<std::size_t>(row)], RowText(*ui_->lstSynonyms, row)};
        });
    });
    accept();
}

} // namespace zem
