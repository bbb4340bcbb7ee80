#include "editors/frmMenuList.h"

#include "editors/frmSelectionWindow.h"
#include "forms/AskBeforeDiscard.h"
#include "forms/DialogSize.h"
#include "forms/ListClipboard.h"
#include "forms/ListKeys.h"
#include "forms/ListRows.h"
#include "forms/RunCommand.h"
#include "pieces/MoveRecords.h"
#include "pieces/PastePiece.h"
#include "qt/QtText.h"
#include "script/ScriptDraft.h"
#include "script/ScriptEditing.h"
#include "ui_frmMenuList.h"

#include <algorithm>

namespace zem {

frmMenuList::frmMenuList(const EditorContext& context, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmMenuList>()),
      context_(context) {
    ui_->setupUi(this);
    Refresh();
    OnClick(ui_->butAdd, this, context_.dialogs, [this] { butAdd_Click(); });
    OnClick(ui_->butEdit, this, context_.dialogs, [this] { butEdit_Click(); });
    OnClick(ui_->butRemove, this, context_.dialogs, [this] { butRemove_Click(); });
    OnClick(ui_->butOK, this, context_.dialogs, [this] { butOK_Click(); });
    ConnectListKeys(*ui_->lstMenus, {ui_->butAdd, ui_->butRemove, ui_->butEdit});
    ConnectClipboard(*ui_->lstMenus, context_.dialogs,
                     {[this] { return CopyPiece(context_.door.Game(), SelectedPlaces()); },
                      [this](std::string_view text, const QString&) { Paste(text); },
                      [this] { butRemove_Click(); }});
    RememberSize(*this);
}

frmMenuList::~frmMenuList() = default;

void frmMenuList::Refresh() {
    ui_->lstMenus->clear();
    for (const SelectionMenu& menu : context_.door.Game().SelectionMenus)
        ui_->lstMenus->addItem(ToQt(menu.Name));
}

int frmMenuList::SelectedMenu() const {
    return SelectedRow(*ui_->lstMenus) + 1;
}

void frmMenuList::butAdd_Click() {
    const std::optional<QString> name =
        AskName(context_.dialogs, this, QStringLiteral("Please enter a name for this menu"),
                QStringLiteral("Add menu"));
    if (!name)
        return;
    context_.door.Change([&](GameModel& game) { game.SelectionMenus.Append().Name = FromQt(*name); });
    Refresh();
    ui_->lstMenus->setCurrentRow(ui_->lstMenus->count() - 1);
    butEdit_Click();
}

void frmMenuList::butEdit_Click() {
    const int k = SelectedMenu();
    if (k == 0)
        return;
    const ScriptDraft draft(context_.scripts);
    frmSelectionWindow form(context_, context_.door.Game().SelectionMenus[k], this);
    const auto write = [&form, k](GameModel& game) { game.SelectionMenus.Edit(k) = form.Menu(); };
    const GameEdit edit(context_.edits, write);
    AskBeforeDiscard(form, context_.dialogs, edit);
    if (form.exec() == QDialog::Accepted)
        context_.door.Change([&](GameModel& game) {
            draft.Keep(game);
            write(game);
        });
}

void frmMenuList::butRemove_Click() {
    const std::vector<int> rows = SelectedRows(*ui_->lstMenus);
    if (rows.empty())
        return;
    context_.door.Change([places = SelectedPlaces()](GameModel& game) { RemoveRecords(game, places); });
    Refresh();
    ui_->lstMenus->setCurrentRow(std::min(rows.front() + 1, ui_->lstMenus->count()) - 1);
}

std::vector<Place> frmMenuList::SelectedPlaces() const {
    std::vector<Place> places;
    for (const int row : SelectedRows(*ui_->lstMenus))
        places.push_back(Place::Of({{FieldId::GameSelectionMenus, row + 1}}));
    return places;
}

void frmMenuList::Paste(std::string_view text) {
    const Pasted pasted = PastePiece(context_.door.Game(), text, {.only = {FieldId::GameSelectionMenus}},
                                     context_.scripts.Commands());
    context_.door.Change([&](GameModel& game) { game = pasted.game; });
    Refresh();
    std::vector<int> rows;
    for (const Place& place : pasted.added)
        rows.push_back(place.steps.front().entry - 1);
    SelectRows(*ui_->lstMenus, rows);
}

void frmMenuList::butOK_Click() {
    context_.door.MarkModified(); // Closing this list always counts as a change.
    accept();
}

} // namespace zem
