#include "editors/frmEditItems.h"

#include "forms/AskBeforeDiscard.h"
#include "forms/DialogSize.h"
#include "forms/ListClipboard.h"
#include "forms/ListKeys.h"
#include "forms/ListRows.h"
#include "forms/RunCommand.h"
#include "pieces/PastePiece.h"
#include "script/ScriptEditing.h"
#include "ui_frmEditItems.h"

namespace zem {

frmEditItems::frmEditItems(const EditorContext& context, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmEditItems>()),
      context_(context) {
    ui_->setupUi(this);
    for (const ItemEntry& entry : context.door.Game().Items)
        Append(entry.Name, entry.IsStartItem);
    OnClick(ui_->butAdd, this, context.dialogs, [this] { butAdd_Click(); });
    OnClick(ui_->butRemove, this, context.dialogs, [this] { RemoveSelectedRows(*ui_->lstItems); });
    OnClick(ui_->butOK, this, context.dialogs, [this] { butOK_Click(); });
    connect(ui_->butCancel, &QPushButton::clicked, this, &QDialog::reject);
    ConnectListKeys(*ui_->lstItems, {ui_->butAdd, ui_->butRemove});
    ConnectClipboard(*ui_->lstItems, context.dialogs,
                     {[this] { return Copy(); },
                      [this](std::string_view text, const QString&) { Paste(text); },
                      [this] { RemoveSelectedRows(*ui_->lstItems); }});
    ui_->lstItems->setFocus();
    edit_ = std::make_unique<GameEdit>(context_.edits, [this](GameModel& game) { Write(game); });
    AskBeforeDiscard(*this, context_.dialogs, *edit_);
    RememberSize(*this);
}

frmEditItems::~frmEditItems() = default;

void frmEditItems::Append(const std::string& name, bool isStartItem) {
    auto* row = new QListWidgetItem(ToQt(name), ui_->lstItems);
    row->setFlags(row->flags() | Qt::ItemIsUserCheckable);
    row->setCheckState(isStartItem ? Qt::Checked : Qt::Unchecked);
}

void frmEditItems::butAdd_Click() {
    const std::optional<QString> name =
        AskName(context_.dialogs, this, QStringLiteral("Please enter a name for this item:"),
                QStringLiteral("New item"));
    if (!name)
        return;
    Append(FromQt(*name), false);
    ui_->lstItems->setCurrentRow(ui_->lstItems->count() - 1);
}

/// The game with the items of this window, which it does not have before OK.
GameModel frmEditItems::Game() const {
    GameModel game = context_.door.Game();
    Write(game);
    return game;
}

PieceText frmEditItems::Copy() const {
    std::vector<Place> places;
    for (const int row : SelectedRows(*ui_->lstItems))
        places.push_back(Place::Of({{FieldId::GameItems, row + 1}}));
    return CopyPiece(Game(), places);
}

void frmEditItems::Paste(std::string_view text) {
    const Pasted pasted =
        PastePiece(Game(), text, {.only = {FieldId::GameItems}}, context_.scripts.Commands());
    std::vector<int> rows;
    for (const Place& place : pasted.added) {
        const ItemEntry& item = pasted.game.Items[place.steps.front().entry];
        rows.push_back(ui_->lstItems->count());
        Append(item.Name, item.IsStartItem);
    }
    SelectRows(*ui_->lstItems, rows);
}

void frmEditItems::Write(GameModel& game) const {
    RowsToTable(*ui_->lstItems, game.Items, [this](ItemEntry& entry, int row) {
        entry = {RowText(*ui_->lstItems, row), ui_->lstItems->item(row)->checkState() == Qt::Checked};
    });
}

void frmEditItems::butOK_Click() {
    context_.door.Change([this](GameModel& game) { Write(game); });
    accept();
}

} // namespace zem
