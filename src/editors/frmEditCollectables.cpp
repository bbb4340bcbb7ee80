#include "editors/frmEditCollectables.h"

#include "editors/frmEditCollectableSettings.h"
#include "forms/AskBeforeDiscard.h"
#include "forms/DialogSize.h"
#include "forms/ListKeys.h"
#include "forms/ListRows.h"
#include "forms/RunCommand.h"
#include "ui_frmEditCollectables.h"

#include <QSignalBlocker>

namespace zem {

frmEditCollectables::frmEditCollectables(const EditorContext& context, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmEditCollectables>()),
      context_(context) {
    ui_->setupUi(this);
    for (const Collectable& collectable : context.door.Game().Collectables)
        Append(collectable.Name, collectable.Definition);
    ConnectLists();
    OnClick(ui_->butAdd, this, context.dialogs, [this] { butAdd_Click(); });
    OnClick(ui_->butEdit, this, context.dialogs, [this] { butEdit_Click(); });
    OnClick(ui_->butRemove, this, context.dialogs, [this] { butRemove_Click(); });
    OnClick(ui_->butOK, this, context.dialogs, [this] { butOK_Click(); });
    connect(ui_->butCancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(ui_->optExtended, &QRadioButton::toggled, this, &frmEditCollectables::ShowList);
    ui_->lstNames->setFocus();
    edit_ = std::make_unique<GameEdit>(context_.edits, [this](GameModel& game) { Write(game); });
    AskBeforeDiscard(*this, context_.dialogs, *edit_);
    RememberSize(*this);
}

frmEditCollectables::~frmEditCollectables() = default;

/// Selecting a row in either list selects it in the other.
void frmEditCollectables::ConnectLists() {
    for (QListWidget* list : {ui_->lstNames, ui_->lstCollectables}) {
        ConnectListKeys(*list, {ui_->butAdd, ui_->butRemove, ui_->butEdit});
        QListWidget* other = list == ui_->lstNames ? ui_->lstCollectables : ui_->lstNames;
        connect(list, &QListWidget::itemSelectionChanged, this, [list, other] {
            const int row = SelectedRow(*list);
            if (row < other->count() && row != SelectedRow(*other))
                other->setCurrentRow(row);
        });
    }
}

void frmEditCollectables::ShowList(bool extended) {
    QListWidget* list = extended ? ui_->lstCollectables : ui_->lstNames;
    ui_->lists->setCurrentWidget(list);
    ui_->lblCollectables->setBuddy(list);
}

void frmEditCollectables::Append(const std::string& name, const std::string& definition) {
    collectables_.push_back({definition, name});
    ui_->lstNames->addItem(ToQt(name));
    ui_->lstCollectables->addItem(ToQt(definition));
}

void frmEditCollectables::butAdd_Click() {
    Append("Collectable-Name", "Collectable-Name p=0 [Enter display text here]");
    ui_->lstCollectables->setCurrentRow(ui_->lstCollectables->count() - 1);
    butEdit_Click(); // The new row stays even when this is cancelled.
}

void frmEditCollectables::butEdit_Click() {
    const int row = SelectedRow(*ui_->lstCollectables);
    if (row < 0)
        return;
    Collectable& collectable = collectables_[static_cast<std::size_t>(row)];
    frmEditCollectableSettings form(context_, collectable.Definition, this);
    const auto read = [&form](GameModel&) {
        const std::string definition = form.Definition();
        return Collectable{definition, definition.substr(0, definition.find(' '))};
    };
    const ValueEdit<Collectable> edit(context_.edits, collectable, read);
    AskBeforeDiscard(form, context_.dialogs, edit);
    if (form.exec() != QDialog::Accepted)
        return;
    const std::string definition = form.Definition();
    collectable = {definition, definition.substr(0, definition.find(' '))};
    ui_->lstCollectables->item(row)->setText(ToQt(collectable.Definition));
    ui_->lstNames->item(row)->setText(ToQt(collectable.Name));
}

void frmEditCollectables::butRemove_Click() {
    const int row = SelectedRow(*ui_->lstCollectables);
    if (row < 0)
        return;
    // The lists differ for a moment, in which a selection must not be carried over.
    const QSignalBlocker names(ui_->lstNames);
    const QSignalBlocker definitions(ui_->lstCollectables);
    collectables_.erase(collectables_.begin() + row);
    delete ui_->lstNames->takeItem(row);
    RemoveSelectedRow(*ui_->lstCollectables);
    ui_->lstNames->setCurrentRow(SelectedRow(*ui_->lstCollectables));
}

void frmEditCollectables::Write(GameModel& game) const {
    game.Collectables.Clear();
    for (const Collectable& collectable : collectables_)
        game.Collectables.Append(collectable);
}

void frmEditCollectables::butOK_Click() {
    context_.door.Change([this](GameModel& game) { Write(game); });
    accept();
}

} // namespace zem
