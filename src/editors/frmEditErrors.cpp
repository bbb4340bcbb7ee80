#include "editors/frmEditErrors.h"

#include "forms/DialogSize.h"
#include "forms/EarlyEnd.h"
#include "forms/ListKeys.h"
#include "forms/ListRows.h"
#include "prose/HelpWriting.h"
#include "prose/ProseRow.h"
#include "qt/QtText.h"
#include "ui_frmEditErrors.h"

namespace zem {

frmEditErrors::frmEditErrors(const EditorContext& context, const Table<ErrorMessage>& errors, bool friendly,
                             QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmEditErrors>()),
      errors_(errors) {
    ui_->setupUi(this);
    ui_->txtError->setEnabled(false);
    EditParameter(*ui_->txtError, {}, context.dialogs);
    HelpWriting(*ui_->txtError, *ui_->rowError, context);
    for (const ErrorMessage& error : errors_)
        ui_->lstErrors->addItem(ToQt(friendly ? error.Description : error.Name));
    ConnectListKeys(*ui_->lstErrors, {}); // The arrow keys then select the first row.
    connect(ui_->lstErrors, &QListWidget::itemSelectionChanged, this, &frmEditErrors::lstErrors_Click);
    connect(ui_->butOK, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui_->butCancel, &QPushButton::clicked, this, &QDialog::reject);
    RememberSize(*this);
}

frmEditErrors::~frmEditErrors() = default;

Table<ErrorMessage> frmEditErrors::Errors() const {
    Table<ErrorMessage> errors = errors_;
    if (remembered_ >= 0)
        errors.Edit(remembered_ + 1).GameText = FromQt(ui_->txtError->text());
    return errors;
}

void frmEditErrors::lstErrors_Click() {
    const int row = SelectedRow(*ui_->lstErrors);
    if (row < 0)
        return;
    ui_->txtError->setEnabled(true);
    errors_ = Errors();
    remembered_ = row;
    ui_->txtError->setText(ToQt(errors_[remembered_ + 1].GameText));
}

} // namespace zem
