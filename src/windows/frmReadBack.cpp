#include "windows/frmReadBack.h"

#include "forms/DialogSize.h"
#include "forms/ListKeys.h"
#include "forms/ListRows.h"
#include "qt/QtText.h"
#include "ui_frmReadBack.h"

#include <algorithm>
#include <cstddef>

namespace zem {

frmReadBack::frmReadBack(const std::vector<LostPlace>& places, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmReadBack>()),
      places_(places) {
    ui_->setupUi(this);
    for (const LostPlace& place : places_)
        ui_->lstPlaces->addItem(ToQt(place.text) + u'.');
    ui_->lstPlaces->setCurrentRow(0);
    ConnectListKeys(*ui_->lstPlaces, {.edit = ui_->butEdit});
    connect(ui_->butEdit, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui_->butCancel, &QPushButton::clicked, this, &QDialog::reject);
    ui_->lstPlaces->setFocus();
    RememberSize(*this);
}

frmReadBack::~frmReadBack() = default;

const LostPlace& frmReadBack::Selected() const {
    return places_[static_cast<std::size_t>(std::max(SelectedRow(*ui_->lstPlaces), 0))];
}

} // namespace zem
