#include "script/frmScriptEditor.h"

#include "base/LineText.h"
#include "figures/PrintedWords.h"
#include "forms/DialogSize.h"
#include "forms/EarlyEnd.h"
#include "forms/OfferMatches.h"
#include "forms/RunCommand.h"
#include "forms/StorableInput.h"
#include "forms/ToolTip.h"
#include "kel/CommandGroups.h"
#include "prose/HelpWriting.h"
#include "prose/ProseRow.h"
#include "qt/QtText.h"
#include "script/NamePicker.h"
#include "script/ScriptEditing.h"
#include "ui_frmScriptEditor.h"

#include <QSignalBlocker>
#include <QTreeWidgetItemIterator>

#include <map>

namespace zem {

namespace {

const char* const OtherCommand = "(other)";

} // namespace

frmScriptEditor::frmScriptEditor(const EditorContext& context, const std::string& line, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmScriptEditor>()),
      context_(context) {
    ui_->setupUi(this);
    names_ = new NamePicker(*ui_->txtParameter, *ui_->lblNames, *ui_->cmbNames, context.scripts);
    ui_->cmbCommands->setVisible(!context.scripts.IsFriendly());
    ui_->cmbFriendly->setVisible(context.scripts.IsFriendly());
    ui_->lblCommand->setBuddy(VisibleChooser());
    for (QComboBox* chooser : {ui_->cmbCommands, ui_->cmbFriendly})
        OfferMatches(*chooser);
    for (QLineEdit* box : {ui_->txtParameter, ui_->txtOther})
        RefuseUnstorableText(*box, context.dialogs);
    RemarkEarlyEnd(*ui_->txtParameter);
    ui_->pnlParts->Use(*ui_->txtParameter, context.scripts, context.dialogs);
    ui_->pnlParts->UseForProse(context);
    HelpWriting(*ui_->txtParameter, *ui_->rowParameter, context,
                PartsOfParameter(context.scripts.Commands(), [this] { return ui_->pnlParts->Command(); }));
    ui_->rowParameter->hide();
    ui_->butCreate->Use(context.scripts, context.dialogs);
    FillGroups();
    OpenLine(line);
    OfferToCreate();

    connect(ui_->cmbCommands, &QComboBox::currentIndexChanged, this, &frmScriptEditor::ChooseCommand);
    connect(ui_->cmbFriendly, &QComboBox::currentIndexChanged, this, &frmScriptEditor::ChooseCommand);
    connect(ui_->cmbCommands, &QComboBox::editTextChanged, this, &frmScriptEditor::cmbCommands_Change);
    connect(ui_->cmbFriendly, &QComboBox::editTextChanged, this, &frmScriptEditor::cmbFriendly_Change);
    connect(ui_->treGroups, &QTreeWidget::currentItemChanged, this, &frmScriptEditor::treGroups_Change);
    connect(ui_->txtParameter, &QLineEdit::textChanged, this, &frmScriptEditor::OfferToCreate);
    connect(ui_->chkNoParameter, &QCheckBox::clicked, this, &frmScriptEditor::chkNoParameter_Click);
    connect(ui_->butClear, &QPushButton::clicked, this, &frmScriptEditor::butClear_Click);
    OnClick(ui_->butOK, this, context_.dialogs, [this] { butOK_Click(); });
    connect(ui_->butCancel, &QPushButton::clicked, this, &QDialog::reject);
    VisibleChooser()->setFocus();
    RememberSize(*this);
}

frmScriptEditor::~frmScriptEditor() = default;

QComboBox* frmScriptEditor::VisibleChooser() const {
    return context_.scripts.IsFriendly() ? ui_->cmbFriendly : ui_->cmbCommands;
}

/// Fills both choosers with the commands, conditions left out, and selects the given one in both.
void frmScriptEditor::FillChoosers(const std::string& command) {
    int selected = -1;
    for (const CommandDefinition& entry : context_.scripts.Commands().Catalogue()) {
        if (BeginsWith(entry.Keyword, "if"))
            continue;
        if (entry.Keyword == command)
            selected = ui_->cmbCommands->count();
        ui_->cmbCommands->addItem(ToQt(entry.Keyword));
        ui_->cmbFriendly->addItem(ToQt(entry.FriendlyName));
    }
    ui_->cmbCommands->setCurrentIndex(selected);
    ui_->cmbFriendly->setCurrentIndex(selected);
}

void frmScriptEditor::OpenLine(const std::string& line) {
    const std::size_t open = line.find('<');
    const std::size_t close = line.find('>');
    const bool hasParameter = open != std::string::npos;
    // What is no command with one parameter opens as it stands, so that nothing of it is lost.
    const bool isWhole =
        !hasParameter || (close != std::string::npos && close > open && Trim(line.substr(close + 1)).empty());
    const std::string command(isWhole ? Trim(std::string_view(line).substr(0, open))
                                      : std::string_view(line));
    FillChoosers(command);
    ShowOther(false);
    if (line.empty())
        return;
    const QString parameter = hasParameter && isWhole ? ToQt(GetParameter(line)) : QString();
    if (ui_->cmbCommands->currentIndex() < 0) {
        const int other = ui_->cmbCommands->count() - 1;
        ui_->cmbCommands->setCurrentIndex(other);
        ui_->cmbFriendly->setCurrentIndex(other);
        ui_->txtOther->setText(ToQt(command));
        ui_->chkNoParameter->setChecked(!hasParameter || !isWhole);
    }
    ChooseCommand(ui_->cmbCommands->currentIndex());
    ui_->txtParameter->setText(parameter);
}

void frmScriptEditor::ShowOther(bool isOther) {
    ui_->lblOther->setVisible(isOther);
    ui_->txtOther->setVisible(isOther);
    ui_->chkNoParameter->setVisible(isOther);
}

/// Shows what the command takes.
void frmScriptEditor::ShowCommand(const CommandDefinition& entry) {
    const std::string& syntax = context_.scripts.IsFriendly() ? entry.FriendlyPrompt : entry.RawSyntax;
    const bool takesParameter = syntax != "!";
    ui_->txtParameter->setEnabled(takesParameter);
    if (takesParameter) {
        ui_->txtSyntax->setText(ToQt(syntax));
    } else {
        ui_->txtSyntax->setText(context_.scripts.IsFriendly()
                                    ? QStringLiteral("There are no parameters for this command.")
                                    : QStringLiteral("Function takes no parameters."));
        ui_->txtParameter->clear();
    }
    names_->SetSyntax(entry.RawSyntax);
    ui_->pnlParts->SetCommand(takesParameter ? &entry : nullptr);
    const CommandEntry* found = context_.scripts.Commands().FindKeyword(entry.Keyword);
    ui_->rowParameter->setVisible(found != nullptr && figures::PrintedPart(*found) >= 0);
    OfferToCreate();
    ShowOther(entry.Keyword == OtherCommand);
    if (entry.Keyword == OtherCommand)
        chkNoParameter_Click();
}

void frmScriptEditor::ChooseCommand(int index) {
    const CommandCatalogue& catalogue = context_.scripts.Commands().Catalogue();
    if (index >= 0 && index < catalogue.Count())
        ShowCommand(catalogue[index + 1]); // The choosers leave out the conditions, which come last.
    else
        ui_->txtSyntax->clear();
    SelectInGroups(index);
    for (QComboBox* chooser : {ui_->cmbCommands, ui_->cmbFriendly})
        if (chooser->currentIndex() != index)
            chooser->setCurrentIndex(index);
    // The hidden chooser may have been emptied while the author was still typing into the other.
    QComboBox* hidden = context_.scripts.IsFriendly() ? ui_->cmbCommands : ui_->cmbFriendly;
    if (hidden->currentText() != hidden->itemText(index))
        hidden->setEditText(hidden->itemText(index));
}

// ---- The commands in groups

/// Behind each command stands its place in the choosers, which leave out the conditions at the end.
void frmScriptEditor::FillGroups() {
    const CommandCatalogue& catalogue = context_.scripts.Commands().Catalogue();
    std::map<const CommandDefinition*, int> places;
    for (int k = 1; k <= catalogue.Count(); ++k)
        places.emplace(&catalogue[k], k - 1);
    for (const CommandGroup& group : GroupsOfCommands(context_.scripts.Commands())) {
        auto* top = new QTreeWidgetItem(ui_->treGroups, {QLatin1String(group.name)});
        top->setData(0, Qt::UserRole, -1);
        for (const CommandDefinition* command : group.commands) {
            const std::string& name =
                context_.scripts.IsFriendly() ? command->FriendlyName : command->Keyword;
            auto* item = new QTreeWidgetItem(top, {ToQt(name)});
            item->setData(0, Qt::UserRole, places[command]);
            item->setToolTip(0, ToolTipOf(ToQt(command->Keyword + ": " + command->FriendlyPrompt)));
        }
    }
}

/// Shows the chosen command in the groups, too.
void frmScriptEditor::SelectInGroups(int index) {
    const QSignalBlocker silence(ui_->treGroups);
    const QTreeWidgetItem* current = ui_->treGroups->currentItem();
    if (current != nullptr && current->data(0, Qt::UserRole) == index)
        return;
    ui_->treGroups->setCurrentItem(nullptr);
    for (QTreeWidgetItemIterator item(ui_->treGroups); index >= 0 && *item != nullptr; ++item)
        if ((*item)->data(0, Qt::UserRole) == index)
            ui_->treGroups->setCurrentItem(*item);
}

void frmScriptEditor::treGroups_Change(const QTreeWidgetItem* item) {
    const int index = item == nullptr ? -1 : item->data(0, Qt::UserRole).toInt();
    if (index >= 0)
        VisibleChooser()->setCurrentIndex(index);
}

void frmScriptEditor::OfferToCreate() {
    ui_->butCreate->SetScript(TypedLine());
}

bool frmScriptEditor::ChooseTyped(const QComboBox& chooser, Qt::MatchFlags match) {
    const QString text = chooser.currentText();
    const int current = chooser.currentIndex(); // It goes first, as commands may have the same friendly name.
    const int index = chooser.itemText(current) == text ? current : chooser.findText(text, match);
    if (index >= 0) {
        ChooseCommand(index);
        return true;
    }
    ui_->txtSyntax->clear();
    ui_->txtParameter->setEnabled(true);
    SelectInGroups(-1);
    return false;
}

void frmScriptEditor::cmbCommands_Change() {
    ChooseTyped(*ui_->cmbCommands, Qt::MatchExactly);
}

void frmScriptEditor::cmbFriendly_Change() {
    if (!ChooseTyped(*ui_->cmbFriendly, Qt::MatchFixedString))
        ui_->cmbCommands->setEditText(QString()); // The typed text names no command.
}

void frmScriptEditor::chkNoParameter_Click() {
    ui_->txtParameter->setEnabled(!ui_->chkNoParameter->isChecked());
}

void frmScriptEditor::butClear_Click() {
    ui_->cmbCommands->setCurrentIndex(-1);
    ui_->cmbFriendly->setCurrentIndex(-1);
    ui_->cmbCommands->clearEditText();
    ui_->cmbFriendly->clearEditText();
    ui_->txtParameter->clear();
    ui_->txtSyntax->clear();
    names_->SetSyntax({});
    ui_->pnlParts->SetCommand(nullptr);
    ui_->rowParameter->hide();
    ShowOther(false);
}

std::string frmScriptEditor::TypedLine() const {
    const std::string parameter = " <" + FromQt(ui_->txtParameter->text()) + ">";
    const std::string keyword = FromQt(ui_->cmbCommands->currentText());
    if (keyword != OtherCommand)
        return keyword + parameter; // A command without a parameter gets empty brackets.
    const std::string other = FromQt(ui_->txtOther->text());
    return ui_->chkNoParameter->isChecked() ? other : other + parameter;
}

void frmScriptEditor::butOK_Click() {
    if (ui_->cmbCommands->currentText().isEmpty()) {
        context_.dialogs.ShowMessageBox(this, QStringLiteral("No command has been selected."));
        VisibleChooser()->setFocus();
        return;
    }
    line_ = TypedLine();
    accept();
}

} // namespace zem
