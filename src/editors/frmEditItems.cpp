#include "editors/frmEditItems.h"

#include "forms/CommandError.h"
#include "forms/DialogSize.h"
#include "forms/ListKeys.h"
#include "forms/ListRows.h"
#include "ui_frmEditItems.h"

namespace zem {

frmEditItems::frmEditItems(ChangeDoor& door, Dialogs& dialogs, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmEditItems>()),
      door_(door),
      dialogs_(dialogs) {
    ui_->setupUi(this);
    for (const ItemEntry& entry : door.Game().Items)
        Append(entry.Name, entry.IsStartItem);
    OnClick(ui_->butAdd, this, dialogs, [this] { butAdd_Click(); });
    OnClick(ui_->butRemove, this, dialogs, [this] { RemoveSelectedRow(*ui_->lstItems); });
    OnClick(ui_->butOK, this, dialogs, [this] { butOK_Click(); });
    connect(ui_->butCancel, &QPushButton::clicked, this, &QDialog::reject);
    ConnectListKeys(*ui_->lstItems, {ui_->butAdd, ui_->butRemove});
    ui_->lstItems->setFocus();
    RememberSize(*this);
}

frmEditItems::~frmEditItems() = default;

void frmEditItems::Append(const std::string& name, bool isStartItem) {
    auto* row = new QListWidgetItem(ToQt(name), ui_->lstItems);
    row->setFlags(row->flags() | Qt::ItemIsUserCheckable);
    row->setCheckState(isStartItem ? Qt::Checked : Qt::Unchecked);
}

void frmEditItems::butAdd_Click() {
    const std::optional<QString> name = AskName(
        dialogs_, this, QStringLiteral("Please enter a name for this item:"), QStringLiteral("New item"));
    if (!name)
        return;
    Append(FromQt(*name), false);
    ui_->lstItems->setCurrentRow(ui_->lstItems->count() - 1);
}

void frmEditItems::butOK_Click() {
    door_.Change(QStringLiteral("edit items"), [this](GameModel& game) {
        RowsToTable(*ui_->lstItems, game.Items, [this](ItemEntry& entry, int row) {
            entry = {RowText(*ui_->lstItems, row), ui_->lstItems->item(row)->checkState() == Qt::Checked};
        });
    });
    accept();
}

} // namespace zem
