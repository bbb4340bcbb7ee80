#include "script/frmConditional.h"

#include "base/LineText.h"
#include "forms/DialogSize.h"
#include "forms/EarlyEnd.h"
#include "forms/ListClipboard.h"
#include "forms/ListKeys.h"
#include "forms/ListRows.h"
#include "forms/OfferMatches.h"
#include "forms/RunCommand.h"
#include "forms/StorableInput.h"
#include "forms/ToolTip.h"
#include "kel/ScriptRows.h"
#include "prose/HelpWriting.h"
#include "qt/QtText.h"
#include "script/NamePicker.h"
#include "script/ScriptEditing.h"
#include "ui_frmConditional.h"

#include <QScopedValueRollback>

#include <numeric>
#include <utility>

namespace zem {

frmConditional::frmConditional(const EditorContext& context, const std::string& line, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmConditional>()),
      context_(context) {
    ui_->setupUi(this);
    names_ = new NamePicker(*ui_->txtConditionParameter, *ui_->lblConditionNames, *ui_->cmbConditionNames,
                            context.scripts);
    ui_->pnlParts->Use(*ui_->txtConditionParameter, context.scripts, context.dialogs);
    ui_->pnlParts->ComeAfter(*ui_->cmbConditionNames);
    ui_->pnlParts->UseForProse(context);
    const CommandLookup& commands = context.scripts.Commands();
    HelpWriting(*ui_->txtConditionParameter, context,
                PartsOfParameter(commands, [this] { return ui_->pnlParts->Command(); }));
    for (QLineEdit* box :
         {static_cast<QLineEdit*>(ui_->txtThenLine), static_cast<QLineEdit*>(ui_->txtElseLine), ui_->txtRaw})
        HelpWriting(*box, context, PartsOfLine(commands));
    ui_->cmbJoiner->addItems({tr("and"), tr("or")});
    FillConditionChooser();
    for (QLineEdit* box : {ui_->txtConditionParameter, ui_->txtRaw})
        RefuseUnstorableText(*box, context.dialogs);
    RemarkEarlyEnd(*ui_->txtConditionParameter);
    OfferMatches(*ui_->cmbCondition);
    ui_->txtThenLine->Use(context.scripts, context.dialogs, *ui_->lblProblem);
    ui_->txtElseLine->Use(context.scripts, context.dialogs, *ui_->lblProblem);
    ConnectControls();
    ConnectBlock();
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
    onClick(ui_->butThen, [this] { EditBranch(parts_.Then); });
    onClick(ui_->butThenIf, [this] { EditBranchIf(parts_.Then); });
    onClick(ui_->butElse, [this] { EditBranch(parts_.Else); });
    onClick(ui_->butElseIf, [this] { EditBranchIf(parts_.Else); });
    onClick(ui_->butOK, [this] { butOK_Click(); });
    connect(ui_->butCancel, &QPushButton::clicked, this, &QDialog::reject);
    ConnectListKeys(*ui_->lstConditions, {ui_->butAddCondition, ui_->butRemoveCondition, nullptr,
                                          ui_->butConditionUp, ui_->butConditionDown});
    ConnectClipboard(*ui_->lstConditions, context_.dialogs,
                     {[this] { return CopyConditions(); },
                      [this](std::string_view text, const QString&) { PasteConditions(text); },
                      [this] { butRemoveCondition_Click(); }});
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
        ShowBranch(*ui_->txtThen, parts_.Then);
        ShowBranch(*ui_->txtElse, parts_.Else);
        if (!parts_.Else.empty())
            ui_->chkElse->setChecked(true);
        const bool hasElse = ui_->chkElse->isChecked();
        ui_->butElse->setEnabled(hasElse);
        ui_->butElseIf->setEnabled(hasElse);
        ui_->lblElseLine->setEnabled(hasElse);
        ui_->txtElseLine->setEnabled(hasElse);
    }
    ShowCondition();
}

/// Shows a branch in one line, its own lines one after the other.
void frmConditional::ShowBranch(QLineEdit& box, const std::string& action) const {
    RowOptions options;
    options.friendly = context_.scripts.IsFriendly();
    std::string text;
    for (const ScriptRow& row :
         RowsOfScript(context_.scripts.Game(), action, context_.scripts.Commands(), options))
        text.append(text.empty() ? "" : "; ").append(row.Text());
    box.setText(ToQt(text));
    box.setCursorPosition(0);
    box.setToolTip(ToolTipOf(ToQt(action)));
}

/// Shows the line with its branches; of one that is not complete as far as it goes.
void frmConditional::ShowWhole() {
    std::string line = FromQt(ui_->txtRaw->text());
    if (!problem_.isEmpty()) {
        IfLine parts = parts_;
        if (parts.Then.empty())
            parts.Then = "(nothing yet)";
        try {
            line = WriteIfLine(parts);
        } catch (const KelError&) {
            line.clear();
        }
    }
    ui_->blkWhole->Show(context_.scripts, line);
    ui_->butCreate->SetScript(line);
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
    ui_->pnlParts->SetCommand(condition.HasParameter ? entry : nullptr);
    names_->SetSyntax(entry == nullptr || !condition.HasParameter ? std::string() : entry->RawSyntax);
}

void frmConditional::ShowProblem(const QString& problem) {
    problem_ = problem;
    ui_->lblProblem->setText(problem.isEmpty() ? QString() : tr("Not complete: %1.").arg(problem));
    ShowWhole();
}

// ---- Changing

/// A part was changed: the raw line follows, as soon as one can be made.
void frmConditional::PartsChanged() {
    ShowParts();
    try {
        const QScopedValueRollback<bool> showing(showing_, true);
        const std::string line =
            context_.scripts.ChangeScript([this](GameModel& game) { return WriteWholeIfLine(game, parts_); });
        parts_ = ParseIfLine(line); // an action may have gone into a procedure, because of the other one
        ui_->txtRaw->setText(ToQt(line));
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
    EraseRows(parts_.Conditions, SelectedRows(*ui_->lstConditions));
    PartsChanged();
}

PieceText frmConditional::CopyConditions() const {
    std::vector<Condition> conditions;
    for (const int row : SelectedRows(*ui_->lstConditions))
        conditions.push_back(parts_.Conditions[static_cast<std::size_t>(row)]);
    return {WriteConditions(conditions), {}};
}

/// What is pasted goes behind the selected conditions.
void frmConditional::PasteConditions(std::string_view text) {
    const std::vector<Condition> pasted = ReadConditions(text);
    if (!BeginsWith(text, "if ")) // which says that they are conditions, even of an add-on
        for (const Condition& condition : pasted)
            if (FindEntry(condition.Keyword) == nullptr)
                throw KelError("this is no condition: " + QuoteShortly(condition.Keyword));
    const std::vector<int> selected = SelectedRows(*ui_->lstConditions);
    int row = selected.empty() ? static_cast<int>(parts_.Conditions.size()) : selected.back() + 1;
    parts_.Conditions.insert(parts_.Conditions.begin() + row, pasted.begin(), pasted.end());
    PartsChanged();
    std::vector<int> rows(pasted.size());
    std::iota(rows.begin(), rows.end(), row);
    SelectRows(*ui_->lstConditions, rows);
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
    SelectRows(*ui_->lstConditions, {target}); // and no others, although Ctrl is down
}

QString frmConditional::WhatIs(const std::string& action) const {
    return &action == &parts_.Then ? tr("then") : tr("otherwise");
}

void frmConditional::EditBranch(std::string& action) {
    if (context_.scripts.EditScript(this, action, WhatIs(action)))
        PartsChanged();
}

/// Opens the "if" that is all the branch does, or adds one to its lines.
void frmConditional::EditBranchIf(std::string& action) {
    const std::string before = action;
    std::vector<std::string> lines = UnfoldScript(context_.scripts.Game(), action);
    const bool isOnlyIf = lines.size() == 1 && BeginsWith(lines.front(), "if ");
    std::string line = isOnlyIf ? lines.front() : std::string();
    const auto fold = [&](GameModel& game) {
        std::vector<std::string> all = lines;
        if (isOnlyIf)
            all.front() = line;
        else if (!line.empty())
            all.push_back(line);
        return FoldScript(game, before, all);
    };
    const ValueEdit<std::string> edit(context_.edits, action, fold);
    if (!context_.scripts.EditConditional(this, line, WhatIs(action)))
        return;
    action = context_.scripts.ChangeScript(fold);
    PartsChanged();
}

void frmConditional::AddToBranch(std::string& action, const std::string& line) {
    RunCommand(context_.dialogs, this, [&] {
        action = context_.scripts.ChangeScript([&](GameModel& game) {
            std::vector<std::string> lines = UnfoldScript(game, action);
            lines.push_back(line);
            return FoldScript(game, action, lines);
        });
        PartsChanged();
    });
}

// ---- The whole line as a block

void frmConditional::ConnectBlock() {
    ui_->butCreate->Use(context_.scripts, context_.dialogs);
    connect(ui_->butCreate, &CreateButton::Created, this, &frmConditional::ShowWhole);
    ui_->blkWhole->AllowChanges();
    connect(ui_->txtThenLine, &LineBox::LineTyped, this,
            [this](const std::string& line) { AddToBranch(parts_.Then, line); });
    connect(ui_->txtElseLine, &LineBox::LineTyped, this,
            [this](const std::string& line) { AddToBranch(parts_.Else, line); });
    connect(ui_->blkWhole, &ScriptBlock::PartActivated, this,
            [this](const ScriptPath& path) { RunCommand(context_.dialogs, this, [&] { EditPart(path); }); });
    connect(ui_->blkWhole, &ScriptBlock::RemoveAsked, this, [this](const ScriptPath& path) {
        ChangePart(
            [&](GameModel& game, const std::string& line) { return ReplaceLine(game, line, path, {}); });
    });
    connect(ui_->blkWhole, &ScriptBlock::MoveAsked, this, [this](ScriptPath path, int by) {
        ChangePart(
            [&](GameModel& game, const std::string& line) { return MoveLineAt(game, line, path, by); });
        ui_->blkWhole->SelectPath(path);
    });
}

/// A line inside a branch opens in its own editor; the whole line is in this one already.
void frmConditional::EditPart(const ScriptPath& path) {
    if (!problem_.isEmpty() || !ui_->fraParts->isEnabled()) {
        ui_->txtThenLine->setFocus();
        return;
    }
    if (path.size() == 1) {
        ui_->lstConditions->setFocus();
        return;
    }
    std::string line = FromQt(ui_->txtRaw->text());
    if (context_.scripts.EditPart(this, line, path))
        TakeLine(line);
}

void frmConditional::ChangePart(
    const std::function<std::string(GameModel&, const std::string& line)>& change) {
    RunCommand(context_.dialogs, this, [&] {
        const std::string line = FromQt(ui_->txtRaw->text());
        if (!problem_.isEmpty() || !ui_->fraParts->isEnabled() || ui_->blkWhole->CurrentPath().size() < 2)
            return;
        TakeLine(context_.scripts.ChangeScript([&](GameModel& game) { return change(game, line); }));
    });
}

void frmConditional::TakeLine(const std::string& line) {
    ui_->txtRaw->setText(ToQt(line));
    ui_->txtRaw->setCursorPosition(0);
    ShowWhole(); // the line may be the same, and a procedure that it calls another
    ShowParts();
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
    if (ui_->chkElse->isChecked())
        ui_->txtElseLine->setFocus();
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
