#include "editors/frmSynonymEditor.h"

#include "base/LineText.h"
#include "forms/DialogSize.h"
#include "forms/ListKeys.h"
#include "forms/ListRows.h"
#include "forms/RunCommand.h"
#include "forms/StorableInput.h"
#include "ui_frmSynonymEditor.h"

namespace zem {

namespace {

/// One row for each of the words, which ";" separates.
void AddWords(QListWidget& list, const std::string& words) {
    if (!words.empty())
        for (const std::string_view word : SplitAt(words, ";"))
            list.addItem(ToQt(Trim(word)));
}

std::string JoinWords(const QListWidget& list) {
    std::string words;
    for (int row = 0; row < list.count(); ++row)
        words.append(row == 0 ? "" : "; ").append(RowText(list, row));
    return words;
}

} // namespace

frmSynonymEditor::frmSynonymEditor(const EditorContext& context, const SynonymEntry& entry, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmSynonymEditor>()),
      context_(context) {
    ui_->setupUi(this);
    AddWords(*ui_->lstWords, entry.Words);
    EditStorableText(*ui_->txtConvertTo, entry.ConvertTo, context.dialogs);
    OnClick(ui_->butAdd, this, context.dialogs, [this] { butAdd_Click(); });
    OnClick(ui_->butRemove, this, context.dialogs, [this] { RemoveSelectedRow(*ui_->lstWords); });
    OnClick(ui_->butOK, this, context.dialogs, [this] { butOK_Click(); });
    connect(ui_->butCancel, &QPushButton::clicked, this, &QDialog::reject);
    ConnectListKeys(*ui_->lstWords, {ui_->butAdd, ui_->butRemove});
    ui_->lstWords->setFocus();
    RememberSize(*this);
}

frmSynonymEditor::~frmSynonymEditor() = default;

SynonymEntry frmSynonymEditor::Entry() const {
    return {JoinWords(*ui_->lstWords), FromQt(ui_->txtConvertTo->text())};
}

void frmSynonymEditor::butAdd_Click() {
    const std::optional<QString> word =
        AskStorableText(context_.dialogs, this,
                        QStringLiteral("Please enter a new word that will be converted to this synonym:"),
                        QStringLiteral("New Word"), {});
    if (word && !word->isEmpty())
        AppendRow(*ui_->lstWords, FromQt(*word));
}

void frmSynonymEditor::butOK_Click() {
    if (ui_->lstWords->count() == 0)
        context_.dialogs.ShowMessageBox(
            this, QStringLiteral("You must specify some words to convert to this synonym."));
    else if (ui_->txtConvertTo->text().isEmpty())
        context_.dialogs.ShowMessageBox(
            this, QStringLiteral("You must specify a word to convert these synonyms to."));
    else
        accept();
}

} // namespace zem
