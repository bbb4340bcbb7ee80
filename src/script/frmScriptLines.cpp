#include "script/frmScriptLines.h"

#include "base/LineText.h"
#include "forms/ColourRoles.h"
#include "forms/DialogSize.h"
#include "forms/ListClipboard.h"
#include "forms/ListKeys.h"
#include "forms/ListRows.h"
#include "forms/RowDrag.h"
#include "forms/RunCommand.h"
#include "forms/ToolTip.h"
#include "pieces/PastePiece.h"
#include "prose/HelpWriting.h"
#include "qt/QtText.h"
#include "script/ReachedLines.h"
#include "script/ScriptEditing.h"
#include "ui_frmScriptLines.h"

#include <QIcon>
#include <QPainter>

#include <algorithm>
#include <numeric>
#include <utility>

namespace zem {

namespace {

/// A dashed ring, as the dashes beside the rows of a whole script.
QIcon IconOfNeverRun(const QPalette& palette) {
    constexpr int Size = 32;
    QPixmap picture(Size, Size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    QPen pen(ColourOf(ColourRole::Warning, palette), 4);
    pen.setDashPattern({1.5, 1});
    painter.setPen(pen);
    painter.drawEllipse(4, 4, Size - 8, Size - 8);
    return QIcon(picture);
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
    ConnectWhole();
    ShowWhole();
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
    ConnectLists();
}

void frmScriptLines::ConnectLists() {
    for (QListWidget* list : {ui_->lstScriptLines, ui_->lstFriendlyLines}) {
        ConnectListKeys(*list, {ui_->butAdd, ui_->butRemove, ui_->butEdit, ui_->butUp, ui_->butDown});
        ConnectClipboard(*list, context_.dialogs,
                         {[this] { return CopyLines(context_.scripts.Game(), SelectedTexts()); },
                          [this](std::string_view text, const QString&) { Paste(text); },
                          [this] { butRemove_Click(); }});
        MoveRowsByDrag(*list, [this](const std::vector<int>& rows, int to) { MoveLines(rows, to); });
        QListWidget* other = list == ui_->lstScriptLines ? ui_->lstFriendlyLines : ui_->lstScriptLines;
        connect(list, &QListWidget::currentRowChanged, other, [other](int row) {
            // It may be where this comes from, with several rows selected.
            if (other->currentRow() != row || !other->selectionModel()->hasSelection())
                other->setCurrentRow(row);
        });
    }
}

void frmScriptLines::OpenScript(const std::string& script) {
    script_ = script;
    for (const std::string& line : UnfoldScript(context_.scripts.Game(), script))
        InsertLine(static_cast<int>(lines_.size()), line);
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
    SelectRows(List(), {index}); // and no others, whatever keys are down
}

std::vector<std::string> frmScriptLines::SelectedTexts() const {
    std::vector<std::string> texts;
    for (const int row : SelectedRows(List()))
        texts.push_back(lines_[static_cast<std::size_t>(row)]);
    return texts;
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
    ShowWhole();
}

void frmScriptLines::butAdd_Click() {
    if (context_.scripts.EditScriptLine(this, newLine_, tr("new line")))
        AddLine(newLine_);
    newLine_.clear();
}

void frmScriptLines::butAddConditional_Click() {
    if (context_.scripts.EditConditional(this, newLine_, tr("new line")))
        AddLine(newLine_);
    newLine_.clear();
}

void frmScriptLines::butEdit_Click() {
    const int index = SelectedLine();
    if (index < 0)
        return;
    std::string& line = lines_[static_cast<std::size_t>(index)];
    const QString what = tr("line %1").arg(index + 1);
    if (BeginsWith(line, "if "))
        context_.scripts.EditConditional(this, line, what);
    else
        context_.scripts.EditScriptLine(this, line, what);
    ShowLine(index);
    ShowWhole();
}

void frmScriptLines::butRemove_Click() {
    const std::vector<int> rows = SelectedRows(List());
    if (rows.empty())
        return;
    EraseRows(lines_, rows);
    for (auto row = rows.rbegin(); row != rows.rend(); ++row)
        for (QListWidget* list : {ui_->lstScriptLines, ui_->lstFriendlyLines})
            delete list->takeItem(*row);
    ShowWhole();
}

/// What is pasted goes behind the selected lines, as what is typed does.
void frmScriptLines::Paste(std::string_view text) {
    Pasted pasted;
    context_.scripts.ChangeScript([&](GameModel& game) {
        pasted = PastePiece(game, text, {.takesLines = true, .only = {FieldId::None}},
                            context_.scripts.Commands());
        game = pasted.game;
        return std::string();
    });
    const std::vector<int> selected = SelectedRows(List());
    int index = selected.empty() ? static_cast<int>(lines_.size()) : selected.back() + 1;
    std::vector<int> rows;
    for (const std::string& line : pasted.lines) {
        rows.push_back(index);
        InsertLine(index++, line);
    }
    SelectRows(List(), rows);
    ShowWhole();
}

/// @param to  the line before which they go
void frmScriptLines::MoveLines(const std::vector<int>& rows, int to) {
    if (rows.empty())
        return;
    lines_ = Moved(lines_, rows, to);
    for (int index = 0; index < static_cast<int>(lines_.size()); ++index)
        ShowLine(index);
    const auto before = std::count_if(rows.begin(), rows.end(), [to](int row) { return row < to; });
    std::vector<int> moved(rows.size());
    std::iota(moved.begin(), moved.end(), to - static_cast<int>(before));
    SelectRows(List(), moved);
    ShowWhole();
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
    ShowWhole();
}

std::string frmScriptLines::FoldLines(GameModel& game) const {
    std::vector<std::string> lines = lines_;
    if (!newLine_.empty())
        lines.push_back(newLine_);
    return FoldScript(game, script_, lines);
}

// ---- The whole script

void frmScriptLines::ConnectWhole() {
    ui_->txtLine->Use(context_.scripts, context_.dialogs, *ui_->lblLineProblem);
    HelpWriting(*ui_->txtLine, context_, PartsOfLine(context_.scripts.Commands()));
    connect(ui_->txtLine, &LineBox::LineTyped, this, &frmScriptLines::LineTyped);
    ui_->butCreate->Use(context_.scripts, context_.dialogs);
    connect(ui_->butCreate, &CreateButton::Created, this, &frmScriptLines::ShowWhole);
    ui_->blkWhole->AllowChanges();
    connect(ui_->blkWhole, &ScriptBlock::PartActivated, this,
            [this](const ScriptPath& path) { RunCommand(context_.dialogs, this, [&] { EditPart(path); }); });
    connect(ui_->blkWhole, &ScriptBlock::RemoveAsked, this, [this](const ScriptPath& path) {
        if (SelectLineOf(path))
            butRemove_Click();
        else
            ChangePart(path, [](GameModel& game, const std::string& line, ScriptPath& part) {
                return ReplaceLine(game, line, part, {});
            });
    });
    connect(ui_->blkWhole, &ScriptBlock::MoveAsked, this, [this](ScriptPath path, int by) {
        if (SelectLineOf(path)) {
            MoveLine(by);
            path.front().line = SelectedLine();
            ui_->blkWhole->SelectPath(path);
        } else
            ChangePart(path, [by](GameModel& game, const std::string& line, ScriptPath& part) {
                return MoveLineAt(game, line, part, by);
            });
    });
}

void frmScriptLines::ShowWhole() {
    ui_->blkWhole->Show(context_.scripts, ScriptText(), script_);
    MarkReached();
    ui_->butCreate->SetScript(ScriptText());
}

/// Says of each line whether it has ever run.
void frmScriptLines::MarkReached() {
    const std::shared_ptr<const ReachedLines> known = context_.scripts.Reached();
    if (known == nullptr || known->lines == nullptr)
        return;
    const GameModel game = context_.scripts.Game();
    const int height = fontMetrics().ascent(); // a row with an icon is as high as one without
    for (QListWidget* list : {ui_->lstScriptLines, ui_->lstFriendlyLines})
        list->setIconSize(QSize(height, height));
    for (int line = 0; line < static_cast<int>(lines_.size()); ++line) {
        const QString remark =
            ReachedRowOf(*known->lines, game, ScriptText(), script_, {ScriptStep{line}}, false).remark;
        for (QListWidget* list : {ui_->lstScriptLines, ui_->lstFriendlyLines}) {
            QListWidgetItem* item = list->item(line);
            item->setIcon(remark.isEmpty() ? QIcon() : IconOfNeverRun(palette()));
            item->setData(Qt::AccessibleTextRole, remark.isEmpty()
                                                      ? QVariant()
                                                      : QStringLiteral("%1 (%2)").arg(item->text(), remark));
        }
    }
}

std::string frmScriptLines::ScriptText() const {
    std::string text;
    for (std::size_t k = 0; k < lines_.size(); ++k)
        text.append(k == 0 ? "" : "\r\n").append(lines_[k]);
    return text;
}

/// Selects the line of a row of the block, if the row shows a line of this very list.
bool frmScriptLines::SelectLineOf(const ScriptPath& path) {
    const bool isHere = path.size() == 1 && path.front().line < static_cast<int>(lines_.size());
    if (isHere)
        SelectLine(path.front().line);
    return isHere;
}

/// What is typed goes behind the selected line, so that one line follows the other.
void frmScriptLines::LineTyped(const std::string& line) {
    const int selected = SelectedLine();
    const int index = selected < 0 ? static_cast<int>(lines_.size()) : selected + 1;
    InsertLine(index, line);
    SelectLine(index);
    ShowWhole();
}

void frmScriptLines::EditPart(const ScriptPath& path) {
    if (SelectLineOf(path)) {
        butEdit_Click();
        return;
    }
    const auto index = static_cast<std::size_t>(path.front().line);
    if (index >= lines_.size())
        return;
    ScriptPath part = path;
    part.front().line = 0; // the line is a script of its own
    if (context_.scripts.EditPart(this, lines_[index], part, tr("line %1").arg(path.front().line + 1)))
        ShowLine(path.front().line);
    ShowWhole();
}

void frmScriptLines::ChangePart(
    ScriptPath path,
    const std::function<std::string(GameModel&, const std::string& line, ScriptPath& path)>& change) {
    const int index = path.front().line;
    if (index >= static_cast<int>(lines_.size()))
        return;
    RunCommand(context_.dialogs, this, [&] {
        std::string& line = lines_[static_cast<std::size_t>(index)];
        path.front().line = 0;
        line = context_.scripts.ChangeScript([&](GameModel& game) { return change(game, line, path); });
        ShowLine(index);
        ShowWhole();
        path.front().line = index;
        ui_->blkWhole->SelectPath(path);
    });
}

void frmScriptLines::butOK_Click() {
    value_ = context_.scripts.ChangeScript([this](GameModel& game) { return FoldLines(game); });
    accept();
}

} // namespace zem
