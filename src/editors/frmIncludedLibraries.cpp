#include "editors/frmIncludedLibraries.h"

#include "forms/AskBeforeDiscard.h"
#include "forms/DialogSize.h"
#include "forms/ListKeys.h"
#include "forms/ListRows.h"
#include "forms/RunCommand.h"
#include "ui_frmIncludedLibraries.h"

namespace zem {

frmIncludedLibraries::frmIncludedLibraries(const EditorContext& context, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmIncludedLibraries>()),
      context_(context) {
    ui_->setupUi(this);
    for (const std::string& library : context.door.Game().Includes)
        ui_->lstLibs->addItem(ToQt(library));
    OnClick(ui_->butAdd, this, context.dialogs, [this] { butAdd_Click(); });
    OnClick(ui_->butRemove, this, context.dialogs, [this] { RemoveSelectedRow(*ui_->lstLibs); });
    OnClick(ui_->butOK, this, context.dialogs, [this] { butOK_Click(); });
    connect(ui_->butCancel, &QPushButton::clicked, this, &QDialog::reject);
    ConnectListKeys(*ui_->lstLibs, {ui_->butAdd, ui_->butRemove});
    ui_->lstLibs->setFocus();
    edit_ = std::make_unique<GameEdit>(context_.edits, [this](GameModel& game) { Write(game); });
    AskBeforeDiscard(*this, context_.dialogs, *edit_);
    RememberSize(*this);
}

frmIncludedLibraries::~frmIncludedLibraries() = default;

void frmIncludedLibraries::butAdd_Click() {
    const std::optional<QString> name =
        AskName(context_.dialogs, this, QStringLiteral("Enter filename of library (including extension)"),
                QStringLiteral("Add library"));
    if (name)
        AppendRow(*ui_->lstLibs, FromQt(*name));
}

void frmIncludedLibraries::Write(GameModel& game) const {
    RowsToTable(*ui_->lstLibs, game.Includes,
                [this](std::string& library, int row) { library = RowText(*ui_->lstLibs, row); });
}

void frmIncludedLibraries::butOK_Click() {
    context_.door.Change([this](GameModel& game) { Write(game); });
    accept();
}

} // namespace zem
