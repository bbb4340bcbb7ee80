#include "script/frmScriptLines.h"

#include "base/LineText.h"
#include "forms/DialogSize.h"
#include "forms/ListKeys.h"
#include "forms/ListRows.h"
#include "forms/RunCommand.h"
#include "forms/ToolTip.h"
#include "kel/InternalCall.h"
#include "model/InternalScripts.h"
#include "qt/QtText.h"
#include "script/ScriptEditing.h"
#include "ui_frmScriptLines.h"

#include <utility>

namespace zem {

namespace {

/// The lines of a script, without the empty ones at its end.
std::vector<std::string_view> SplitLines(std::string_view script) {
    const std::size_t last = script.find_last_not_of(" \r\n");
    if (last == std::string_view::npos)
        return {};
    return SplitAt(script.substr(0, script.find("\r\n", last)), "\r\n");
}

} // namespace

frmScriptLines::frmScriptLines(const EditorContext& context, const std::string& script, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmScriptLines>()),
      context_(context) {
    ui_->setupUi(this);
    ui_->lstScriptLines->setVisible(!context.scripts.IsFriendly());
    ui_->lstFriendlyLines->setVisible(context.scripts.IsFriendly());
    ui_->lblLines->setBuddy(&List());
    OpenScript(script);
    ConnectButtons();
    List().setFocus();
    RememberSize(*this);
}

frmScriptLines::~frmScriptLines() = default;

void frmScriptLines::ConnectButtons() {
    OnClick(ui_->butAdd, this, context_.dialogs, [this] { butAdd_Click(); });
    OnClick(ui_->butAddConditional, this, context_.dialogs, [this] { butAddConditional_Click(); });
    OnClick(ui_->butEdit, this, context_.dialogs, [this] { butEdit_Click(); });
    OnClick(ui_->butRemove, this, context_.dialogs, [this] { butRemove_Click(); });
    OnClick(ui_->butUp, this, context_.dialogs, [this] { MoveLine(-1); });
    OnClick(ui_->butDown, this, context_.dialogs, [this] { MoveLine(1); });
    OnClick(ui_->butOK, this, context_.dialogs, [this] { butOK_Click(); });
    connect(ui_->butCancel, &QPushButton::clicked, this, &QDialog::reject);
    for (QListWidget* list : {ui_->lstScriptLines, ui_->lstFriendlyLines})
        ConnectListKeys(*list, {ui_->butAdd, ui_->butRemove, ui_->butEdit, ui_->butUp, ui_->butDown});
    connect(ui_->lstFriendlyLines, &QListWidget::currentRowChanged, ui_->lstScriptLines,
            qOverload<int>(&QListWidget::setCurrentRow));
    connect(ui_->lstScriptLines, &QListWidget::currentRowChanged, ui_->lstFriendlyLines,
            qOverload<int>(&QListWidget::setCurrentRow));
}

void frmScriptLines::OpenScript(const std::string& script) {
    const GameModel game = context_.scripts.Game();
    procedure_ = CalledInternalProcedure(game, script);
    const std::string text = procedure_ == 0 ? script : game.Procedures[procedure_].Script;
    for (const std::string_view line : SplitLines(text))
        InsertLine(static_cast<int>(lines_.size()), std::string(line));
}

QListWidget& frmScriptLines::List() const {
    return *(context_.scripts.IsFriendly() ? ui_->lstFriendlyLines : ui_->lstScriptLines);
}

int frmScriptLines::SelectedLine() const {
    return SelectedRow(List());
}

void frmScriptLines::ShowLine(int index) {
    const std::string& line = lines_[static_cast<std::size_t>(index)];
    const std::string friendly =
        context_.scripts.Render(line, ScriptForm::Plain, InternalProcedures::ShowCall);
    ui_->lstScriptLines->item(index)->setText(ToQt(line));
    ui_->lstFriendlyLines->item(index)->setText(ToQt(friendly));
    for (QListWidget* list : {ui_->lstScriptLines, ui_->lstFriendlyLines})
        list->item(index)->setToolTip(ToolTipOf(ToQt(line)));
}

void frmScriptLines::SelectLine(int index) {
    List().setCurrentRow(index);
}

void frmScriptLines::InsertLine(int index, const std::string& line) {
    lines_.insert(lines_.begin() + index, line);
    for (QListWidget* list : {ui_->lstScriptLines, ui_->lstFriendlyLines})
        list->insertItem(index, QString());
    ShowLine(index);
}

void frmScriptLines::AddLine(const std::string& line) {
    if (line.empty())
        return;
    InsertLine(static_cast<int>(lines_.size()), line);
    SelectLine(static_cast<int>(lines_.size()) - 1);
}

void frmScriptLines::butAdd_Click() {
    if (context_.scripts.EditScriptLine(this, newLine_))
        AddLine(newLine_);
    newLine_.clear();
}

void frmScriptLines::butAddConditional_Click() {
    if (context_.scripts.EditConditional(this, newLine_))
        AddLine(newLine_);
    newLine_.clear();
}

void frmScriptLines::butEdit_Click() {
    const int index = SelectedLine();
    if (index < 0)
        return;
    std::string& line = lines_[static_cast<std::size_t>(index)];
    if (BeginsWith(line, "if "))
        context_.scripts.EditConditional(this, line);
    else
        context_.scripts.EditScriptLine(this, line);
    ShowLine(index);
}

void frmScriptLines::butRemove_Click() {
    const int index = SelectedLine();
    if (index < 0)
        return;
    lines_.erase(lines_.begin() + index);
    for (QListWidget* list : {ui_->lstScriptLines, ui_->lstFriendlyLines})
        delete list->takeItem(index);
}

void frmScriptLines::MoveLine(int by) {
    const int index = SelectedLine();
    const int target = index + by;
    if (index < 0 || target < 0 || target >= static_cast<int>(lines_.size()))
        return;
    std::swap(lines_[static_cast<std::size_t>(index)], lines_[static_cast<std::size_t>(target)]);
    ShowLine(index);
    ShowLine(target);
    SelectLine(target);
}

std::string frmScriptLines::FoldLines(GameModel& game) const {
    std::vector<std::string> lines = lines_;
    if (!newLine_.empty())
        lines.push_back(newLine_);
    std::string joined;
    for (std::size_t k = 0; k < lines.size(); ++k)
        joined.append(k == 0 ? "" : "\r\n").append(lines[k]);
    if (procedure_ != 0) {
        if (game.Procedures[procedure_].Script != joined)
            game.Procedures.Edit(procedure_).Script = joined;
        return "do <" + game.Procedures[procedure_].Name + ">";
    }
    return lines.size() < 2 ? joined : "do <" + AddInternalProcedure(game, joined) + ">";
}

void frmScriptLines::butOK_Click() {
    ScriptEditing& scripts = context_.scripts;
    GameModel game = scripts.Game();
    value_ = FoldLines(game);
    if (!SameGame(game, scripts.Game()))
        scripts.ChangeProcedures([this](GameModel& changed) { FoldLines(changed); });
    accept();
}

} // namespace zem
