#include "editors/frmAddNewPlace.h"

#include "forms/DialogSize.h"
#include "forms/EarlyEnd.h"
#include "qt/QtText.h"
#include "ui_frmAddNewPlace.h"

namespace zem {

frmAddNewPlace::frmAddNewPlace(const EditorContext& context, QAbstractItemModel& rooms, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmAddNewPlace>()) {
    ui_->setupUi(this);
    EditParameter(*ui_->txtPrefix, {}, context.dialogs);
    ui_->cmbPlaceNames->Offer(rooms);
    ui_->cmbPlaceNames->RefuseUnstorableText(context.dialogs);
    RemarkEarlyEnd(*ui_->cmbPlaceNames);
    connect(ui_->butAdd, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui_->butCancel, &QPushButton::clicked, this, &QDialog::reject);
    ui_->txtPrefix->setFocus();
    RememberSize(*this);
}

frmAddNewPlace::~frmAddNewPlace() = default;

std::string frmAddNewPlace::Place() const {
    const std::string prefix = FromQt(ui_->txtPrefix->text());
    const std::string room = ui_->cmbPlaceNames->Text();
    return prefix.empty() ? room : prefix + "; " + room;
}

} // namespace zem
