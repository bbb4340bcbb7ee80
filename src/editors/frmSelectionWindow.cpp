#include "editors/frmSelectionWindow.h"

#include "forms/DialogSize.h"
#include "forms/EarlyEnd.h"
#include "forms/EditorHead.h"
#include "forms/ListKeys.h"
#include "forms/RunCommand.h"
#include "prose/HelpWriting.h"
#include "prose/ProseRow.h"
#include "qt/QtText.h"
#include "script/BlockBeside.h"
#include "script/ScriptEditing.h"
#include "ui_frmSelectionWindow.h"

namespace zem {

frmSelectionWindow::frmSelectionWindow(const EditorContext& context, const SelectionMenu& menu,
                                       QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmSelectionWindow>()),
      context_(context),
      menu_(menu) {
    ui_->setupUi(this);
    ShowWhere(*this, tr("Menu %1").arg(ToQt(menu.Name)));
    EditParameter(*ui_->txtInfo, menu.Info, context.dialogs);
    HelpWriting(*ui_->txtInfo, *ui_->rowInfo, context);
    choices_ = std::make_unique<ScriptPairList>(*ui_->lstMenu, menu.Choices);
    new SelectedScript(
        context, *this, *ui_->lstMenu,
        {[this](int row) -> const std::string& {
             return choices_->Pairs()[static_cast<std::size_t>(row)].Script;
         },
         [this](int row, const std::string& script) {
             choices_->Edit(row).Script = script;
             choices_->Show(row);
         },
         [this](int row) {
             return tr("choice %1").arg(ToQt(choices_->Pairs()[static_cast<std::size_t>(row)].Key));
         }});
    OnClick(ui_->butAdd, this, context_.dialogs, [this] { butAdd_Click(); });
    OnClick(ui_->butEdit, this, context_.dialogs, [this] { butEdit_Click(); });
    OnClick(ui_->butRename, this, context_.dialogs, [this] { butRename_Click(); });
    OnClick(ui_->butRemove, this, context_.dialogs, [this] { choices_->RemoveSelected(); });
    OnClick(ui_->butMoveUp, this, context_.dialogs, [this] { choices_->MoveSelected(-1); });
    OnClick(ui_->butMoveDown, this, context_.dialogs, [this] { choices_->MoveSelected(1); });
    connect(ui_->butOK, &QPushButton::clicked, this, &QDialog::accept);
    connect(ui_->butCancel, &QPushButton::clicked, this, &QDialog::reject);
    ConnectListKeys(*ui_->lstMenu,
                    {ui_->butAdd, ui_->butRemove, ui_->butEdit, ui_->butMoveUp, ui_->butMoveDown});
    RememberSize(*this);
}

frmSelectionWindow::~frmSelectionWindow() = default;

SelectionMenu frmSelectionWindow::Menu() const {
    SelectionMenu menu;
    menu.Name = menu_.Name;
    menu.Info = FromQt(ui_->txtInfo->text());
    menu.Choices.Assign(choices_->Pairs());
    return menu;
}

void frmSelectionWindow::butAdd_Click() {
    const std::optional<QString> text = AskName(
        context_.dialogs, this, QStringLiteral("Please enter the text to display for this menu choice:"),
        QStringLiteral("New Menu Choice"));
    if (!text)
        return;
    choices_->Append({FromQt(*text), ""});
    butEdit_Click();
}

void frmSelectionWindow::butEdit_Click() {
    const int row = choices_->SelectedRow();
    if (row < 0)
        return;
    ScriptPair& choice = choices_->Edit(row);
    context_.scripts.EditScript(this, choice.Script, tr("choice %1").arg(ToQt(choice.Key)));
    choices_->Show(row);
}

void frmSelectionWindow::butRename_Click() {
    const int row = choices_->SelectedRow();
    if (row < 0)
        return;
    ScriptPair& choice = choices_->Edit(row);
    const std::optional<QString> text =
        AskName(context_.dialogs, this, QStringLiteral("Enter a new name for this menu choice:"),
                QStringLiteral("Rename"), ToQt(choice.Key));
    if (!text)
        return;
    choice.Key = FromQt(*text);
    choices_->Show(row);
}

} // namespace zem
