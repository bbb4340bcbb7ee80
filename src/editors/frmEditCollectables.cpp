#include "editors/frmEditCollectables.h"

#include "editors/frmEditCollectableSettings.h"
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
    ui_->lstNames->addItem(ToQt(name));
    ui_->lstCollectables->addItem(ToQt(definition));
}

void frmEditCollectables::butAdd_Click() {
    Append("Collectable-Name", "Collectable-Name p=0 [Enter display text here]");
    ui_->lstCollectables->setCurrentRow(ui_->lstCollectables->count() - 1);
    butEdit_Click(); // whose Cancel leaves the new row there, on purpose
}

void frmEditCollectables::butEdit_Click() {
    const int row = SelectedRow(*ui_->lstCollectables);
    if (row < 0)
        return;
    frmEditCollectableSettings form(context_, RowText(*ui_->lstCollectables, row), this);
    if (form.exec() != QDialog::Accepted)
        return;
    const QString definition = ToQt(form.Definition());
    ui_->lstCollectables->item(row)->setText(definition);
    ui_->lstNames->item(row)->setText(definition.section(u' ', 0, 0));
}

void frmEditCollectables::butRemove_Click() {
    const int row = SelectedRow(*ui_->lstCollectables);
    if (row < 0)
        return;
    // The lists differ for a moment, in which a selection must not be carried over.
    const QSignalBlocker names(ui_->lstNames);
    const QSignalBlocker definitions(ui_->lstCollectables);
    delete ui_->lstNames->takeItem(row);
    RemoveSelectedRow(*ui_->lstCollectables);
    ui_->lstNames->setCurrentRow(SelectedRow(*ui_->lstCollectables));
}

void frmEditCollectables::butOK_Click() {
    context_.door.Change([this](GameModel& game) {
        RowsToTable(*ui_->lstCollectables, game.Collectables, [this](Collectable& collectable, int row) {
            collectable = {RowText(*ui_->lstCollectables, row), RowText(*ui_->lstNames, row)};
        });
    });
    accept();
}

} // namespace zem
