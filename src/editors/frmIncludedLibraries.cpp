#include "editors/frmIncludedLibraries.h"

#include "forms/CommandError.h"
#include "forms/DialogSize.h"
#include "forms/ListKeys.h"
#include "forms/ListRows.h"
#include "ui_frmIncludedLibraries.h"

namespace zem {

frmIncludedLibraries::frmIncludedLibraries(ChangeDoor& door, Dialogs& dialogs, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmIncludedLibraries>()),
      door_(door),
      dialogs_(dialogs) {
    ui_->setupUi(this);
    for (const std::string& library : door.Game().Includes)
        ui_->lstLibs->addItem(ToQt(library));
    OnClick(ui_->butAdd, this, dialogs, [this] { butAdd_Click(); });
    OnClick(ui_->butRemove, this, dialogs, [this] { RemoveSelectedRow(*ui_->lstLibs); });
    OnClick(ui_->butOK, this, dialogs, [this] { butOK_Click(); });
    connect(ui_->butCancel, &QPushButton::clicked, this, &QDialog::reject);
    ConnectListKeys(*ui_->lstLibs, {ui_->butAdd, ui_->butRemove});
    ui_->lstLibs->setFocus();
    RememberSize(*this);
}

frmIncludedLibraries::~frmIncludedLibraries() = default;

void frmIncludedLibraries::butAdd_Click() {
    const std::optional<QString> name =
        AskName(dialogs_, this, QStringLiteral("Enter filename of library (including extension)"),
                QStringLiteral("Add library"));
    if (name)
        AppendRow(*ui_->lstLibs, FromQt(*name));
}

void frmIncludedLibraries::butOK_Click() {
    door_.Change(QStringLiteral("edit libraries"), [this](GameModel& game) {
        RowsToTable(*ui_->lstLibs, game.Includes,
                    [this](std::string& library, int row) { library = RowText(*ui_->lstLibs, row); });
    });
    accept();
}

} // namespace zem
