#include "editors/frmTimers.h"

#include "base/LineText.h"
#include "forms/AskBeforeDiscard.h"
#include "forms/DialogSize.h"
#include "forms/EarlyEnd.h"
#include "forms/ListKeys.h"
#include "forms/ListRows.h"
#include "forms/RunCommand.h"
#include "forms/StorableInput.h"
#include "script/ScriptEditing.h"
#include "ui_frmTimers.h"

#include <QScopedValueRollback>
#include <QSignalBlocker>

namespace zem {

frmTimers::frmTimers(const EditorContext& context, QWidget* parent)
    : QDialog(parent),
      ui_(std::make_unique<Ui::frmTimers>()),
      context_(context),
      draft_(context.scripts) {
    ui_->setupUi(this);
    ui_->blkAction->setAccessibleName(tr("Action"));
    for (QLineEdit* box : {ui_->txtName, ui_->txtSeconds}) {
        RefuseUnstorableText(*box, context.dialogs);
        RemarkEarlyEnd(*box);
    }
    Fill();
    ConnectControls();
    if (!timers_.empty())
        ui_->lstTimers->setCurrentRow(0);
    ShowTimer();
    ui_->lstTimers->setFocus();
    edit_ = std::make_unique<GameEdit>(context_.edits, [this](GameModel& game) { Write(game); });
    AskBeforeDiscard(*this, context_.dialogs, *edit_);
    RememberSize(*this);
}

frmTimers::~frmTimers() = default;

void frmTimers::Fill() {
    timers_ = ReadTimers(*context_.door.Game().UnknownBlocks);
    for (const GameTimer& timer : timers_)
        ui_->lstTimers->addItem(ToQt(timer.name));
}

void frmTimers::ConnectControls() {
    const auto onClick = [this](QPushButton* button, auto handler) {
        OnClick(button, this, context_.dialogs, handler);
    };
    onClick(ui_->butAdd, [this] { butAdd_Click(); });
    onClick(ui_->butRemove, [this] { butRemove_Click(); });
    onClick(ui_->butAction, [this] { butAction_Click(); });
    onClick(ui_->butOK, [this] { butOK_Click(); });
    connect(ui_->butCancel, &QPushButton::clicked, this, &QDialog::reject);
    ConnectListKeys(*ui_->lstTimers, {ui_->butAdd, ui_->butRemove});
    connect(ui_->lstTimers, &QListWidget::itemSelectionChanged, this, &frmTimers::ShowTimer);
    connect(ui_->blkAction, &ScriptBlock::PartActivated, this,
            [this](const ScriptPath& path) { RunCommand(context_.dialogs, this, [&] { EditPart(path); }); });
    connect(ui_->txtName, &QLineEdit::textChanged, this, [this](const QString& text) {
        GameTimer* timer = Selected();
        if (showing_ || timer == nullptr || UnstorableCharacter(text))
            return;
        timer->name = Trim(FromQt(text));
        ui_->lstTimers->item(SelectedRow(*ui_->lstTimers))->setText(ToQt(timer->name));
    });
    connect(ui_->txtSeconds, &QLineEdit::textChanged, this, [this](const QString& text) {
        GameTimer* timer = Selected();
        if (!showing_ && timer != nullptr && !UnstorableCharacter(text))
            timer->seconds = Trim(FromQt(text));
    });
}

/// Null when no timer is selected.
GameTimer* frmTimers::Selected() {
    const int row = SelectedRow(*ui_->lstTimers);
    return row < 0 || row >= static_cast<int>(timers_.size()) ? nullptr
                                                              : &timers_[static_cast<std::size_t>(row)];
}

void frmTimers::ShowTimer() {
    const QScopedValueRollback<bool> showing(showing_, true);
    const GameTimer* timer = Selected();
    const bool isEditable = timer != nullptr && timer->isKnown;
    ui_->pnlTimer->setEnabled(isEditable);
    ui_->butRemove->setEnabled(timer != nullptr);
    ui_->txtName->setText(timer == nullptr ? QString() : ToQt(timer->name));
    ui_->txtSeconds->setText(timer == nullptr ? QString() : ToQt(timer->seconds));
    ui_->lblProblem->setText(timer == nullptr || isEditable
                                 ? QString()
                                 : tr("This timer has lines that are not known here, and stays as it is. It "
                                      "can be changed under Edit, "
                                      "Misc KEL."));
    ShowAction();
}

void frmTimers::ShowAction() {
    const GameTimer* timer = Selected();
    ui_->blkAction->Show(context_.scripts, timer == nullptr ? std::string() : timer->action);
}

void frmTimers::butAdd_Click() {
    const std::optional<QString> name =
        AskName(context_.dialogs, this, tr("Enter a name for the timer:"), tr("New timer"));
    if (!name)
        return;
    timers_.push_back({FromQt(*name), "60", ""});
    AppendRow(*ui_->lstTimers, FromQt(*name));
    ui_->txtSeconds->setFocus();
    ui_->txtSeconds->selectAll();
}

void frmTimers::butRemove_Click() {
    const int row = SelectedRow(*ui_->lstTimers);
    if (row < 0)
        return;
    {
        const QSignalBlocker silence(ui_->lstTimers);
        timers_.erase(timers_.begin() + row);
        RemoveSelectedRow(*ui_->lstTimers);
    }
    ShowTimer();
}

void frmTimers::butAction_Click() {
    GameTimer* timer = Selected();
    if (timer != nullptr &&
        context_.scripts.EditScript(this, timer->action, tr("Timer %1").arg(ToQt(timer->name))))
        ShowAction();
}

void frmTimers::EditPart(const ScriptPath& path) {
    GameTimer* timer = Selected();
    if (timer != nullptr && timer->isKnown &&
        context_.scripts.EditPart(this, timer->action, path, tr("Timer %1").arg(ToQt(timer->name))))
        ShowAction();
}

/// Tells what is wrong with a timer, at the control where it can be put right.
bool frmTimers::Refuse(int row, const QString& problem, QWidget& control) {
    ui_->lstTimers->setCurrentRow(row);
    control.setFocus();
    context_.dialogs.ShowMessageBox(this, problem, windowTitle(), QMessageBox::Ok, QMessageBox::Warning);
    return false;
}

bool frmTimers::IsComplete() {
    const std::vector<GameTimer> before = ReadTimers(*context_.door.Game().UnknownBlocks);
    // What stood in the file is judged by the problems and not here.
    const auto isOld = [&](const GameTimer& timer) {
        return timer.block >= 0 && timer == before[static_cast<std::size_t>(timer.block)];
    };
    for (std::size_t k = 0; k < timers_.size(); ++k) {
        const GameTimer& timer = timers_[k];
        if (isOld(timer))
            continue;
        const auto refuse = [&](const QString& problem, QWidget& control) {
            return Refuse(static_cast<int>(k), problem, control);
        };
        const QString name = ToQt(timer.name);
        if (timer.name.empty())
            return refuse(tr("The timer has no name."), *ui_->txtName);
        if (timer.name.find_first_of("<>") != std::string::npos)
            return refuse(tr("A timer cannot have \"<\" or \">\" in its name."), *ui_->txtName);
        for (std::size_t other = 0; other < timers_.size(); ++other)
            if ((other < k || (other > k && isOld(timers_[other]))) &&
                EqualIgnoringCase(timers_[other].name, timer.name))
                return refuse(tr("There is a timer \"%1\" already.").arg(name), *ui_->txtName);
        if (!IsTimerInterval(timer.seconds))
            return refuse(
                tr("The seconds of the timer \"%1\" must be a whole number from 1 to 32767.").arg(name),
                *ui_->txtSeconds);
    }
    return true;
}

void frmTimers::Write(GameModel& game) const {
    const std::string blocks = WriteTimers(*game.UnknownBlocks, timers_);
    if (*game.UnknownBlocks != blocks)
        game.UnknownBlocks = blocks;
}

void frmTimers::butOK_Click() {
    if (!IsComplete())
        return;
    GameModel changed = context_.scripts.Game();
    Write(changed);
    if (!SameGame(changed, context_.door.Game()))
        context_.door.Change([this](GameModel& game) {
            draft_.Keep(game);
            Write(game);
        });
    accept();
}

} // namespace zem
