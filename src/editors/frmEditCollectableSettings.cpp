#include "editors/frmEditCollectableSettings.h"

#include "forms/DialogSize.h"
#include "forms/EarlyEnd.h"
#include "forms/RunCommand.h"
#include "ui_frmEditCollectableSettings.h"

namespace zem {

frmEditCollectableSettings::frmEditCollectableSettings(const EditorContext& context,
                                                       const std::string& definition, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmEditCollectableSettings>()),
      context_(context) {
    ui_->setupUi(this);
    ui_->cmbType->addItems({QStringLiteral("Positive number"), QStringLiteral("Any number"),
                            QStringLiteral("Percentage"), QStringLiteral("Range")});
    Fill(ParseCollectable(definition));
    connect(ui_->cmbType, &QComboBox::currentIndexChanged, this, &frmEditCollectableSettings::UpdateControls);
    connect(ui_->chkDontDisplay, &QCheckBox::toggled, this, &frmEditCollectableSettings::UpdateControls);
    UpdateControls();
    OnClick(ui_->butOK, this, context.dialogs, [this] { butOK_Click(); });
    connect(ui_->butCancel, &QPushButton::clicked, this, &QDialog::reject);
    ui_->txtName->setFocus();
    RememberSize(*this);
}

frmEditCollectableSettings::~frmEditCollectableSettings() = default;

void frmEditCollectableSettings::Fill(const CollectableDefinition& definition) {
    EditParameter(*ui_->txtName, definition.Name, context_.dialogs);
    ui_->cmbType->setCurrentIndex(static_cast<int>(definition.Type));
    EditParameter(*ui_->txtMin, definition.Min, context_.dialogs);
    EditParameter(*ui_->txtMax, definition.Max, context_.dialogs);
    EditParameter(*ui_->txtInitValue, definition.InitialValue, context_.dialogs);
    EditParameter(*ui_->txtDisplay, definition.Display, context_.dialogs);
    ui_->chkDontDisplayZero->setChecked(definition.HiddenAtZero);
    ui_->chkDontDisplay->setChecked(definition.HiddenInItems);
}

void frmEditCollectableSettings::UpdateControls() {
    const bool isRange = ui_->cmbType->currentIndex() == static_cast<int>(CollectableType::Range);
    ui_->txtMin->setEnabled(isRange);
    ui_->txtMax->setEnabled(isRange);
    const bool isHidden = ui_->chkDontDisplay->isChecked();
    ui_->txtDisplay->setEnabled(!isHidden);
    if (isHidden)
        ui_->txtDisplay->clear();
}

CollectableDefinition frmEditCollectableSettings::Fields() const {
    CollectableDefinition definition;
    definition.Name = FromQt(ui_->txtName->text());
    definition.Type = static_cast<CollectableType>(ui_->cmbType->currentIndex());
    definition.Min = FromQt(ui_->txtMin->text());
    definition.Max = FromQt(ui_->txtMax->text());
    definition.InitialValue = FromQt(ui_->txtInitValue->text());
    definition.Display = FromQt(ui_->txtDisplay->text());
    definition.HiddenAtZero = ui_->chkDontDisplayZero->isChecked();
    definition.HiddenInItems = ui_->chkDontDisplay->isChecked();
    return definition;
}

std::string frmEditCollectableSettings::Definition() const {
    return BuildCollectable(Fields());
}

void frmEditCollectableSettings::butOK_Click() {
    const std::vector<CollectableProblem> problems = CheckCollectable(Fields());
    for (const CollectableProblem& problem : problems) {
        context_.shell.ShowMessage(QLatin1String(problem.message), QStringLiteral("Error"));
        (problem.field == CollectableProblem::NameField ? ui_->txtName : ui_->txtInitValue)->setFocus();
    }
    if (problems.empty())
        accept();
}

} // namespace zem
