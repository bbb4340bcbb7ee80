#include "editors/frmMenuList.h"

#include "editors/frmSelectionWindow.h"
#include "forms/AskBeforeDiscard.h"
#include "forms/DialogSize.h"
#include "forms/ListKeys.h"
#include "forms/ListRows.h"
#include "forms/RunCommand.h"
#include "qt/QtText.h"
#include "script/ScriptDraft.h"
#include "script/ScriptEditing.h"
#include "ui_frmMenuList.h"

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
    const int k = SelectedMenu();
    if (k == 0)
        return;
    context_.door.Change([&](GameModel& game) { game.SelectionMenus.Remove(k); });
    Refresh();
    ui_->lstMenus->setCurrentRow(std::min(k, ui_->lstMenus->count()) - 1);
}

void frmMenuList::butOK_Click() {
    context_.door.MarkModified(); // Closing this list always counts as a change.
    accept();
}

} // namespace zem
