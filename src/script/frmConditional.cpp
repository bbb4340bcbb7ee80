#include "script/frmConditional.h"

#include "base/LineText.h"
#include "forms/DialogSize.h"
#include "forms/EarlyEnd.h"
#include "forms/ListKeys.h"
#include "forms/OfferMatches.h"
#include "forms/RunCommand.h"
#include "forms/StorableInput.h"
#include "forms/ToolTip.h"
#include "qt/QtText.h"
#include "script/NamePicker.h"
#include "script/ScriptEditing.h"
#include "ui_frmConditional.h"

#include <QScopedValueRollback>

#include <utility>

namespace zem {

frmConditional::frmConditional(const EditorContext& context, const std::string& line, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmConditional>()),
      context_(context) {
    ui_->setupUi(this);
    names_ = new NamePicker(*ui_->txtConditionParameter, *ui_->lblConditionNames, *ui_->cmbConditionNames,
                            context.scripts);
    ui_->cmbJoiner->addItems({tr("and"), tr("or")});
    FillConditionChooser();
    for (QLineEdit* box : {ui_->txtConditionParameter, ui_->txtRaw})
        RefuseUnstorableText(*box, context.dialogs);
    RemarkEarlyEnd(*ui_->txtConditionParameter);
    OfferMatches(*ui_->cmbCondition);
    ConnectControls();
    if (line.empty()) {
        butAddCondition_Click();
    } else {
        ui_->txtRaw->setText(ToQt(line));
        ui_->lstConditions->setCurrentRow(0);
    }
    ui_->cmbCondition->setFocus();
    RememberSize(*this);
}

frmConditional::~frmConditional() = default;

/// Offers the conditions of the catalogue; behind each stands its keyword without the "if".
void frmConditional::FillConditionChooser() {
    for (const CommandDefinition& entry : context_.scripts.Commands().Catalogue()) {
        if (!BeginsWith(entry.Keyword, "if "))
            continue;
        const std::string keyword = entry.Keyword.substr(3);
        ui_->cmbCondition->addItem(ToQt(context_.scripts.IsFriendly() ? entry.FriendlyName : keyword),
                                   ToQt(keyword));
    }
}

void frmConditional::ConnectControls() {
    const auto onClick = [this](QPushButton* button, auto handler) {
        OnClick(button, this, context_.dialogs, handler);
    };
    onClick(ui_->butAddCondition, [this] { butAddCondition_Click(); });
    onClick(ui_->butRemoveCondition, [this] { butRemoveCondition_Click(); });
    onClick(ui_->butConditionUp, [this] { MoveCondition(-1); });
    onClick(ui_->butConditionDown, [this] { MoveCondition(1); });
    onClick(ui_->butThen, [this] { EditAction(parts_.Then, false); });
    onClick(ui_->butThenIf, [this] { EditAction(parts_.Then, true); });
    onClick(ui_->butElse, [this] { EditAction(parts_.Else, false); });
    onClick(ui_->butElseIf, [this] { EditAction(parts_.Else, true); });
    onClick(ui_->butOK, [this] { butOK_Click(); });
    connect(ui_->butCancel, &QPushButton::clicked, this, &QDialog::reject);
    ConnectListKeys(*ui_->lstConditions, {ui_->butAddCondition, ui_->butRemoveCondition, nullptr,
                                          ui_->butConditionUp, ui_->butConditionDown});
    connect(ui_->lstConditions, &QListWidget::currentRowChanged, this, &frmConditional::ShowCondition);
    connect(ui_->cmbCondition, &QComboBox::editTextChanged, this, &frmConditional::cmbCondition_Change);
    connect(ui_->cmbCondition, &QComboBox::currentIndexChanged, this, &frmConditional::cmbCondition_Change);
    connect(ui_->cmbJoiner, &QComboBox::currentIndexChanged, this, &frmConditional::EditCondition);
    connect(ui_->chkNot, &QCheckBox::clicked, this, &frmConditional::EditCondition);
    connect(ui_->txtConditionParameter, &QLineEdit::textChanged, this, &frmConditional::EditCondition);
    connect(ui_->chkElse, &QCheckBox::clicked, this, &frmConditional::chkElse_Click);
    connect(ui_->txtRaw, &QLineEdit::textChanged, this, &frmConditional::txtRaw_Change);
}

int frmConditional::SelectedCondition() const {
    const int row = ui_->lstConditions->currentRow();
    return row < static_cast<int>(parts_.Conditions.size()) ? row : -1;
}

const CommandDefinition* frmConditional::FindEntry(const std::string& keyword) const {
    const CommandEntry* entry = context_.scripts.Commands().FindKeyword("if " + keyword);
    return entry == nullptr ? nullptr : entry->definition;
}

QString frmConditional::DescribeCondition(std::size_t index) const {
    const Condition& condition = parts_.Conditions[index];
    const CommandDefinition* entry = FindEntry(condition.Keyword);
    QString text = index == 0 ? QString() : condition.JoinedBy == Joiner::And ? tr("and ") : tr("or ");
    if (condition.Negated)
        text += tr("not ");
    text += ToQt(entry != nullptr && context_.scripts.IsFriendly() ? entry->FriendlyName : condition.Keyword);
    if (condition.HasParameter)
        text += QLatin1String(" <") + ToQt(condition.Parameter) + u'>';
    return text;
}

// ---- Showing

/// Fills the controls from the parts; the selected condition stays selected.
void frmConditional::ShowParts() {
    {
        const QScopedValueRollback<bool> showing(showing_, true);
        const int row = ui_->lstConditions->currentRow();
        ui_->lstConditions->clear();
        for (std::size_t k = 0; k < parts_.Conditions.size(); ++k)
            ui_->lstConditions->addItem(DescribeCondition(k));
        ui_->lstConditions->setCurrentRow(std::min(row, ui_->lstConditions->count() - 1));
        ui_->txtThen->setText(
            ToQt(context_.scripts.Render(parts_.Then, ScriptForm::Plain, InternalProcedures::ShowCall)));
        ui_->txtThen->setToolTip(ToolTipOf(ToQt(parts_.Then)));
        ui_->txtElse->setText(
            ToQt(context_.scripts.Render(parts_.Else, ScriptForm::Plain, InternalProcedures::ShowCall)));
        ui_->txtElse->setToolTip(ToolTipOf(ToQt(parts_.Else)));
        if (!parts_.Else.empty())
            ui_->chkElse->setChecked(true);
        const bool hasElse = ui_->chkElse->isChecked();
        ui_->butElse->setEnabled(hasElse);
        ui_->butElseIf->setEnabled(hasElse);
    }
    ShowCondition();
}

/// Shows the selected condition in the controls below the list.
void frmConditional::ShowCondition() {
    if (showing_)
        return;
    const QScopedValueRollback<bool> showing(showing_, true);
    const int index = SelectedCondition();
    ui_->pnlCondition->setEnabled(index >= 0);
    if (index < 0)
        return;
    const Condition& condition = parts_.Conditions[static_cast<std::size_t>(index)];
    ui_->cmbJoiner->setEnabled(index > 0);
    ui_->cmbJoiner->setCurrentIndex(condition.JoinedBy == Joiner::And ? 0 : 1);
    ui_->chkNot->setChecked(condition.Negated);
    if (FromChooser() != condition.Keyword) { // Filling the box would rewrite what is being typed.
        const int row =
            ui_->cmbCondition->findData(ToQt(condition.Keyword), Qt::UserRole, Qt::MatchFixedString);
        ui_->cmbCondition->setCurrentIndex(row);
        if (row < 0)
            ui_->cmbCondition->setEditText(ToQt(condition.Keyword));
    }
    ui_->txtConditionParameter->setEnabled(condition.HasParameter);
    if (ui_->txtConditionParameter->text() != ToQt(condition.Parameter))
        ui_->txtConditionParameter->setText(ToQt(condition.Parameter));
    const CommandDefinition* entry = FindEntry(condition.Keyword);
    ui_->txtConditionParameter->setPlaceholderText(
        entry == nullptr ? QString()
                         : ToQt(context_.scripts.IsFriendly() ? entry->FriendlyPrompt : entry->RawSyntax));
    if (!condition.HasParameter)
        ui_->txtConditionParameter->setPlaceholderText(tr("This condition has no parameter."));
    names_->SetSyntax(entry == nullptr || !condition.HasParameter ? std::string() : entry->RawSyntax);
}

void frmConditional::ShowProblem(const QString& problem) {
    problem_ = problem;
    ui_->lblProblem->setText(problem.isEmpty() ? QString() : tr("Not complete: %1.").arg(problem));
    ui_->lblEnglish->setText(
        problem.isEmpty() ? ToQt(DescribeIfLine(FromQt(ui_->txtRaw->text()), context_.scripts.Commands()))
                          : QString());
}

// ---- Changing

/// A part was changed: the raw line follows, as soon as one can be made.
void frmConditional::PartsChanged() {
    ShowParts();
    try {
        const QScopedValueRollback<bool> showing(showing_, true);
        ui_->txtRaw->setText(ToQt(WriteIfLine(parts_)));
        ui_->txtRaw->setCursorPosition(0);
    } catch (const KelError& error) {
        ShowProblem(ToQt(error.Problem()));
        return;
    }
    ShowProblem({});
}

/// The raw line was changed: the parts follow, if it is understood. If it is not, it is kept as it is.
void frmConditional::txtRaw_Change() {
    if (showing_)
        return;
    try {
        parts_ = ParseIfLine(FromQt(ui_->txtRaw->text()));
    } catch (const KelError& error) {
        ui_->fraParts->setEnabled(false);
        ShowProblem({});
        ui_->lblProblem->setText(tr("The parts cannot be shown: %1. The line is kept as you write it.")
                                     .arg(ToQt(error.Problem())));
        ui_->lblEnglish->clear();
        return;
    }
    ui_->fraParts->setEnabled(true);
    ui_->chkElse->setChecked(!parts_.Else.empty());
    ShowParts();
    ShowProblem({});
}

/// The controls of the selected condition were used.
void frmConditional::EditCondition() {
    const int index = SelectedCondition();
    if (showing_ || index < 0)
        return;
    Condition& condition = parts_.Conditions[static_cast<std::size_t>(index)];
    condition.JoinedBy = ui_->cmbJoiner->currentIndex() == 1 ? Joiner::Or : Joiner::And;
    condition.Negated = ui_->chkNot->isChecked();
    condition.Parameter = FromQt(ui_->txtConditionParameter->text());
    PartsChanged();
}

void frmConditional::cmbCondition_Change() {
    const int index = SelectedCondition();
    if (showing_ || index < 0)
        return;
    Condition& condition = parts_.Conditions[static_cast<std::size_t>(index)];
    const std::optional<std::string> keyword = FromChooser();
    if (!keyword)
        return; // No game can hold such a keyword.
    condition.Keyword = *keyword;
    const CommandDefinition* entry = FindEntry(condition.Keyword);
    condition.HasParameter = entry == nullptr || entry->RawSyntax != "!";
    if (!condition.HasParameter)
        condition.Parameter.clear();
    PartsChanged();
}

/// The keyword of the condition in the chooser, picked or typed; nothing for a text that no game can hold.
std::optional<std::string> frmConditional::FromChooser() const {
    const QString text = ui_->cmbCondition->currentText();
    const int current = ui_->cmbCondition->currentIndex(); // It goes first, as several may read alike.
    const int row = ui_->cmbCondition->itemText(current) == text
                        ? current
                        : ui_->cmbCondition->findText(text, Qt::MatchFixedString);
    if (row >= 0)
        return FromQt(ui_->cmbCondition->itemData(row).toString());
    return UnstorableCharacter(text) ? std::nullopt : std::optional(FromQt(text.simplified()));
}

void frmConditional::butAddCondition_Click() {
    Condition condition;
    if (ui_->cmbCondition->count() > 0)
        condition.Keyword = FromQt(ui_->cmbCondition->itemData(0).toString());
    parts_.Conditions.push_back(condition);
    PartsChanged();
    ui_->lstConditions->setCurrentRow(ui_->lstConditions->count() - 1);
    ui_->cmbCondition->setFocus();
    ui_->cmbCondition->lineEdit()->selectAll();
}

void frmConditional::butRemoveCondition_Click() {
    const int index = SelectedCondition();
    if (index < 0)
        return;
    parts_.Conditions.erase(parts_.Conditions.begin() + index);
    PartsChanged();
}

void frmConditional::MoveCondition(int by) {
    const int index = SelectedCondition();
    const int target = index + by;
    if (index < 0 || target < 0 || target >= static_cast<int>(parts_.Conditions.size()))
        return;
    std::swap(parts_.Conditions[static_cast<std::size_t>(index)],
              parts_.Conditions[static_cast<std::size_t>(target)]);
    parts_.Conditions.front().JoinedBy = Joiner::And; // The first condition has no joiner to keep.
    PartsChanged();
    ui_->lstConditions->setCurrentRow(target);
}

void frmConditional::EditAction(std::string& action, bool asConditional) {
    // Each of the two editors goes on with the action only if it is of its own kind.
    const std::string before = action;
    if (BeginsWith(action, "if ") != asConditional)
        action.clear();
    const std::string opened = action;
    ScriptEditing& scripts = context_.scripts;
    const bool isEdited =
        asConditional ? scripts.EditConditional(this, action) : scripts.EditScriptLine(this, action);
    if (isEdited && action != opened)
        PartsChanged();
    else
        action = before;
}

std::string frmConditional::TypedLine() const {
    const std::string raw = FromQt(ui_->txtRaw->text());
    try {
        if (!ui_->fraParts->isEnabled() || (!raw.empty() && ParseIfLine(raw) == parts_))
            return raw;
        return WriteIfLine(parts_);
    } catch (const KelError&) {
        std::string line = "if";
        for (const Condition& condition : parts_.Conditions)
            line +=
                (condition.Negated ? " not " : " ") + condition.Keyword + " <" + condition.Parameter + '>';
        return line + " then " + parts_.Then + (ui_->chkElse->isChecked() ? " else " + parts_.Else : "");
    }
}

void frmConditional::chkElse_Click() {
    if (!ui_->chkElse->isChecked())
        parts_.Else.clear();
    PartsChanged();
}

void frmConditional::butOK_Click() {
    if (!problem_.isEmpty()) {
        context_.dialogs.ShowMessageBox(this, tr("The line is not complete: %1.").arg(problem_));
        return;
    }
    line_ = FromQt(ui_->txtRaw->text());
    accept();
}

} // namespace zem
