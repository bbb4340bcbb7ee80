#include "editors/frmMenuList.h"

#include "editors/frmSelectionWindow.h"
#include "forms/CommandError.h"
#include "forms/DialogSize.h"
#include "forms/ListKeys.h"
#include "forms/ListRows.h"
#include "forms/QtText.h"
#include "script/ScriptEditing.h"
#include "ui_frmMenuList.h"

namespace zem {

frmMenuList::frmMenuList(ScriptEditing& scripts, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmMenuList>()),
      scripts_(scripts) {
    ui_->setupUi(this);
    Refresh();
    OnClick(ui_->butAdd, this, scripts_.PlatformDialogs(), [this] { butAdd_Click(); });
    OnClick(ui_->butEdit, this, scripts_.PlatformDialogs(), [this] { butEdit_Click(); });
    OnClick(ui_->butRemove, this, scripts_.PlatformDialogs(), [this] { butRemove_Click(); });
    OnClick(ui_->butOK, this, scripts_.PlatformDialogs(), [this] { butOK_Click(); });
    ConnectListKeys(*ui_->lstMenus, {ui_->butAdd, ui_->butRemove, ui_->butEdit});
    RememberSize(*this);
}

frmMenuList::~frmMenuList() = default;

void frmMenuList::Refresh() {
    ui_->lstMenus->clear();
    for (const SelectionMenu& menu : scripts_.Door().Game().SelectionMenus)
        ui_->lstMenus->addItem(ToQt(menu.Name));
}

int frmMenuList::SelectedMenu() const {
    return SelectedRow(*ui_->lstMenus) + 1;
}

void frmMenuList::butAdd_Click() {
    const std::optional<QString> name =
        AskName(scripts_.PlatformDialogs(), this, QStringLiteral("Please enter a name for this menu"),
                QStringLiteral("Add menu"));
    if (!name)
        return;
    scripts_.Door().Change(QStringLiteral("add menu"),
                           [&](GameModel& game) { game.SelectionMenus.Append().Name = FromQt(*name); });
    Refresh();
    ui_->lstMenus->setCurrentRow(ui_->lstMenus->count() - 1);
    butEdit_Click();
}

void frmMenuList::butEdit_Click() {
    const int k = SelectedMenu();
    if (k == 0)
        return;
    frmSelectionWindow form(scripts_, scripts_.Door().Game().SelectionMenus[k], this);
    if (form.exec() == QDialog::Accepted)
        scripts_.Door().Change(QStringLiteral("edit menu"),
                               [&](GameModel& game) { game.SelectionMenus.Edit(k) = form.Menu(); });
}

void frmMenuList::butRemove_Click() {
    const int k = SelectedMenu();
    if (k == 0)
        return;
    scripts_.Door().Change(QStringLiteral("remove menu"),
                           [&](GameModel& game) { game.SelectionMenus.Remove(k); });
    Refresh();
    ui_->lstMenus->setCurrentRow(std::min(k, ui_->lstMenus->count()) - 1);
}

void frmMenuList::butOK_Click() {
    scripts_.Door().MarkModified(); // also when nothing was changed
    accept();
}

} // namespace zem
