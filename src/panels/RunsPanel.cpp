#include "panels/RunsPanel.h"

#include "forms/Dialogs.h"
#include "forms/RunCommand.h"
#include "panels/RunStory.h"
#include "panels/RunTreeView.h"
#include "panels/WalkView.h"
#include "session/RunWatch.h"

#include <QAction>
#include <QEvent>
#include <QFileInfo>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QResizeEvent>
#include <QSignalBlocker>
#include <QSplitter>
#include <QTabBar>
#include <QTabWidget>
#include <QTextBrowser>
#include <QToolBar>
#include <QVBoxLayout>

#include <utility>

namespace zem {

using play::JudgedRun;
using play::RecordedRun;
using play::RunPoint;
using play::RunState;

namespace {

constexpr int GapInRuns = 8; // device-independent pixels

QString CountRuns(std::size_t count) {
    return count == 1 ? QStringLiteral("1 run") : QStringLiteral("%1 runs").arg(count);
}

} // namespace

RunsPanel::RunsPanel(RunWatch& watch, Dialogs& dialogs,
                     std::function<void(const RecordedRun&, std::size_t)> play,
                     std::function<void(const Place&)> open, QWidget* parent)
    : QDockWidget(tr("Runs"), parent),
      watch_(watch),
      dialogs_(dialogs),
      play_(std::move(play)),
      lblRuns_(new QLabel(this)),
      lstRuns_(new RunTreeView(this)),
      lstRunLines_(new QListWidget(this)),
      txtRunStory_(new QTextBrowser(this)),
      parts_(new QSplitter(this)),
      tabs_(new QTabWidget(this)),
      walk_(new WalkView(watch, dialogs, play_, std::move(open), this)) {
    setObjectName(QStringLiteral("dckRuns"));
    tabs_->setObjectName(QStringLiteral("tabRuns"));
    tabs_->addTab(MakeRuns(), tr("Recor&ded"));
    tabs_->addTab(walk_, tr("Wal&ker"));
    tabs_->setDocumentMode(true);
    tabs_->setFocusPolicy(Qt::NoFocus); // the bar with the tabs has the focus, and a name for each
    tabs_->tabBar()->setFocusPolicy(Qt::TabFocus);
    setWidget(tabs_);
    connect(walk_, &WalkView::Kept, this, [this](const QString& name) {
        tabs_->setCurrentIndex(0);
        lstRuns_->Select(name);
    });
    connect(lstRuns_, &QTreeWidget::itemSelectionChanged, this, &RunsPanel::ShowLines);
    connect(lstRunLines_, &QListWidget::currentRowChanged, this, &RunsPanel::ShowStory);
    connect(lstRuns_, &QTreeWidget::itemActivated, this,
            [this] { RunCommand(dialogs_, this, [this] { Continue(); }); });
    connect(lstRunLines_, &QListWidget::itemActivated, this,
            [this] { RunCommand(dialogs_, this, [this] { PlayToLine(); }); });
    lstRuns_->installEventFilter(this);
    connect(&watch_, &RunWatch::RunsChanged, this, &RunsPanel::ShowRuns);
    connect(&watch_, &RunWatch::JudgedAll, this, &RunsPanel::ShowRuns);
    connect(this, &QDockWidget::visibilityChanged, this, &RunsPanel::ShowRuns);
    ShowRuns();
}

QAction* RunsPanel::AddButton(QToolBar& buttons, const char* name, const QString& caption,
                              const QKeySequence& key, void (RunsPanel::*handler)()) {
    auto* action = new QAction(caption, this);
    action->setObjectName(QLatin1String(name));
    action->setShortcut(key);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    action->setIconText(caption);
    action->setToolTip(key.isEmpty()
                           ? caption
                           : QStringLiteral("%1 (%2)").arg(caption, key.toString(QKeySequence::NativeText)));
    connect(action, &QAction::triggered, this,
            [this, handler] { RunCommand(dialogs_, this, [&] { (this->*handler)(); }); });
    addAction(action);
    buttons.addAction(action);
    return action;
}

QWidget* RunsPanel::MakeRuns() {
    auto* page = new QWidget(this);
    auto* buttons = new QToolBar(page);
    buttons->setToolButtonStyle(Qt::ToolButtonTextOnly);
    const auto add = [&](const char* name, const QString& caption, const char* key,
                         void (RunsPanel::*handler)()) {
        return AddButton(*buttons, name, caption, QKeySequence(QLatin1String(key)), handler);
    };
    approve_ = add("actRunApprove", tr("Approve"), "Ctrl+Shift+A", &RunsPanel::Approve);
    approveAll_ = add("actRunApproveAll", tr("Approve all"), "Ctrl+Shift+L", &RunsPanel::ApproveAll);
    continue_ = add("actRunContinue", tr("Continue at its end"), "Ctrl+Shift+C", &RunsPanel::Continue);
    playToLine_ = add("actRunPlay", tr("Play to this line"), "Ctrl+Shift+J", &RunsPanel::PlayToLine);
    cut_ = add("actRunCut", tr("Cut behind this line"), "Ctrl+Shift+X", &RunsPanel::Cut);
    rename_ = add("actRunRename", tr("Rename..."), "Ctrl+Shift+N", &RunsPanel::Rename);
    remove_ = add("actRunDelete", tr("Delete"), "Ctrl+Shift+D", &RunsPanel::Remove);
    takeBack_ = add("actRunTakeBack", tr("Take back"), "Ctrl+Shift+B", &RunsPanel::TakeBack);
    takeBack_->setToolTip(tr("Takes the last change of the runs back (Ctrl+Shift+B)"));
    lblRuns_->setObjectName(QStringLiteral("lblRuns"));
    lblRuns_->setTextFormat(Qt::PlainText);
    lblRuns_->setWordWrap(true);
    lstRuns_->setObjectName(QStringLiteral("lstRuns"));
    lstRuns_->setAccessibleName(tr("Runs"));
    lstRunLines_->setObjectName(QStringLiteral("lstRunLines"));
    lstRunLines_->setAccessibleName(tr("Lines of the run"));
    lstRunLines_->setUniformItemSizes(true);
    const int height = fontMetrics().ascent(); // a row with an icon is as high as one without
    lstRuns_->setIconSize(QSize(height, height));
    lstRunLines_->setIconSize(QSize(height, height));
    txtRunStory_->setObjectName(QStringLiteral("txtRunStory"));
    txtRunStory_->setAccessibleName(tr("What the game tells after the line"));
    txtRunStory_->setTabChangesFocus(true);
    txtRunStory_->setOpenLinks(false);
    parts_->addWidget(lstRuns_);
    parts_->addWidget(lstRunLines_);
    parts_->addWidget(txtRunStory_);
    parts_->setChildrenCollapsible(false);
    for (const auto& [part, share] : {std::pair(0, 4), std::pair(1, 3), std::pair(2, 5)})
        parts_->setStretchFactor(part, share);
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(GapInRuns, GapInRuns, GapInRuns, GapInRuns);
    column->setSpacing(GapInRuns);
    column->addWidget(buttons);
    column->addWidget(lblRuns_);
    column->addWidget(parts_, 1);
    return page;
}

bool RunsPanel::IsBusy() const {
    return watch_.IsJudging() || walk_->IsBusy();
}

void RunsPanel::Select(const std::string& name) {
    lstRuns_->Select(QString::fromStdString(name));
}

// ---- What is shown

void RunsPanel::ShowRuns() {
    if (!isVisible())
        return;
    lstRuns_->Show(watch_);
    ShowSummary();
}

void RunsPanel::ShowSummary() {
    const std::vector<RecordedRun>& runs = watch_.Runs();
    if (!watch_.Problem().isEmpty()) {
        lblRuns_->setText(
            tr("%1 Nothing is written to the file until that is put right.").arg(watch_.Problem()));
        return;
    }
    if (runs.empty()) {
        lblRuns_->setText(
            tr("There are no recorded runs. F5 plays the game; Ctrl+Shift+K keeps what was played, "
               "and from then on it is played again after each change."));
        return;
    }
    std::array<std::size_t, play::RunStateCount> counts{};
    std::size_t waiting = 0;
    for (std::size_t k = 0; k < runs.size(); ++k)
        if (const JudgedRun* judged = watch_.JudgedOf(k))
            ++counts[static_cast<std::size_t>(judged->state)];
        else
            ++waiting;
    QStringList parts;
    const auto tell = [&](RunState state, const QString& words) {
        if (const std::size_t count = counts[static_cast<std::size_t>(state)]; count > 0)
            parts.append(QStringLiteral("%1 %2").arg(count).arg(words));
    };
    tell(RunState::Approved, tr("as approved"));
    tell(RunState::Changed, tr("changed"));
    tell(RunState::New, tr("new"));
    tell(RunState::CannotBePlayed, tr("cannot be played"));
    if (waiting > 0)
        parts.append(tr("%1 being played").arg(waiting));
    const QString file = watch_.Path().isEmpty()
                             ? tr("They are written beside the game when it is saved for the first time.")
                             : tr("They stand in %1.").arg(QFileInfo(watch_.Path()).fileName());
    lblRuns_->setText(
        QStringLiteral("%1: %2. %3").arg(CountRuns(runs.size()), parts.join(QStringLiteral(", ")), file));
}

void RunsPanel::ShowLines() {
    const std::optional<RunPoint> selected = lstRuns_->Selected();
    const int before = lstRunLines_->currentRow();
    const QString beforeText =
        lstRunLines_->currentItem() == nullptr ? QString() : lstRunLines_->currentItem()->text();
    {
        const QSignalBlocker quiet(lstRunLines_);
        lstRunLines_->clear();
        if (selected) {
            const RecordedRun& run = watch_.Runs()[selected->run];
            const JudgedRun* judged = watch_.JudgedOf(selected->run);
            int first = -1; // line that needs the author
            for (std::size_t k = 0; k <= selected->steps; ++k) {
                const QString line =
                    k == 0 ? tr("the beginning") : QString::fromStdString(run.steps[k - 1].input.written);
                auto* item = new QListWidgetItem(line, lstRunLines_);
                const bool isStuck = judged != nullptr && k > judged->result.played.steps.size();
                const bool isOther = judged != nullptr && IsToldOtherwise(*judged, k);
                if (!isOther && !isStuck)
                    continue;
                first = first < 0 ? static_cast<int>(k) : first;
                item->setIcon(IconOfState(isStuck ? RunState::CannotBePlayed : RunState::Changed, palette()));
                item->setText(line + (isStuck ? tr(" (not reached)") : tr(" (told differently)")));
                item->setToolTip(item->text());
            }
            const QListWidgetItem* same = lstRunLines_->item(before);
            const bool isSame = same != nullptr && same->text() == beforeText;
            lstRunLines_->setCurrentRow(first >= 0 ? first : isSame ? before : lstRunLines_->count() - 1);
        }
    }
    ShowStory();
}

void RunsPanel::ShowStory() {
    const std::optional<RunPoint> selected = lstRuns_->Selected();
    const int row = lstRunLines_->currentRow();
    const JudgedRun* judged = selected ? watch_.JudgedOf(selected->run) : nullptr;
    if (judged == nullptr || row < 0)
        txtRunStory_->clear();
    else
        txtRunStory_->setHtml(StoryAsHtml(*judged, static_cast<std::size_t>(row), palette()));
    EnableButtons();
}

void RunsPanel::EnableButtons() {
    const std::optional<RunPoint> selected = lstRuns_->Selected();
    const bool isRun = selected.has_value() && lstRuns_->IsRunSelected();
    const auto canApprove = [this](std::size_t run) {
        const JudgedRun* judged = watch_.JudgedOf(run);
        return judged != nullptr && (judged->state == RunState::Changed || judged->state == RunState::New);
    };
    bool isAny = false;
    for (std::size_t k = 0; k < watch_.Runs().size(); ++k)
        isAny = isAny || canApprove(k);
    approve_->setEnabled(isRun && canApprove(selected->run));
    approveAll_->setEnabled(isAny);
    continue_->setEnabled(selected.has_value());
    continue_->setText(isRun || !selected ? tr("Continue at its end") : tr("Play to its end"));
    playToLine_->setEnabled(selected.has_value() && lstRunLines_->currentRow() >= 0);
    cut_->setEnabled(isRun && lstRunLines_->currentRow() >= 0 &&
                     lstRunLines_->currentRow() < lstRunLines_->count() - 1);
    rename_->setEnabled(isRun);
    remove_->setEnabled(isRun);
    takeBack_->setEnabled(watch_.CanTakeBack());
}

// ---- Commands

void RunsPanel::Continue() {
    if (const std::optional<RunPoint> selected = lstRuns_->Selected())
        play_(watch_.Runs()[selected->run], selected->steps);
}

void RunsPanel::PlayToLine() {
    const std::optional<RunPoint> selected = lstRuns_->Selected();
    if (selected && lstRunLines_->currentRow() >= 0)
        play_(watch_.Runs()[selected->run], static_cast<std::size_t>(lstRunLines_->currentRow()));
}

void RunsPanel::Approve() {
    watch_.Approve({lstRuns_->Selected()->run});
}

void RunsPanel::ApproveAll() {
    std::vector<std::size_t> all;
    for (std::size_t k = 0; k < watch_.Runs().size(); ++k)
        all.push_back(k);
    watch_.Approve(all);
}

void RunsPanel::Cut() {
    watch_.Cut(lstRuns_->Selected()->run, static_cast<std::size_t>(lstRunLines_->currentRow()));
}

void RunsPanel::Rename() {
    const std::size_t run = lstRuns_->Selected()->run;
    const QString before = QString::fromStdString(watch_.Runs()[run].name);
    const std::optional<QString> name =
        dialogs_.AskText(this, tr("Name of the run:"), tr("Rename run"), before);
    if (!name || name->trimmed().isEmpty() || *name == before)
        return;
    watch_.Rename(run, name->toStdString());
    Select(watch_.Runs()[run].name);
}

void RunsPanel::Remove() {
    const std::size_t run = lstRuns_->Selected()->run;
    const QString name = QString::fromStdString(watch_.Runs()[run].name);
    const auto pressed = dialogs_.ShowMessageBox(this, tr("Delete the run \"%1\"?").arg(name),
                                                 tr("Delete run"), QMessageBox::Yes | QMessageBox::No);
    if (pressed == QMessageBox::Yes)
        watch_.Remove(run);
}

void RunsPanel::TakeBack() {
    watch_.TakeBack();
}

// ---- Keys and shape

/// In the list of runs F2 renames and Delete deletes, as in every list; the window has commands of its own
/// for these keys.
bool RunsPanel::eventFilter(QObject* watched, QEvent* event) {
    const bool isKey = event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress;
    if (!isKey || watched != lstRuns_)
        return QDockWidget::eventFilter(watched, event);
    const int key = static_cast<QKeyEvent*>(event)->key();
    QAction* action = key == Qt::Key_F2 ? rename_ : key == Qt::Key_Delete ? remove_ : nullptr;
    if (action == nullptr)
        return QDockWidget::eventFilter(watched, event);
    event->accept();
    if (event->type() == QEvent::KeyPress)
        action->trigger();
    return true;
}

void RunsPanel::resizeEvent(QResizeEvent* event) {
    QDockWidget::resizeEvent(event);
    parts_->setOrientation(event->size().width() > event->size().height() ? Qt::Horizontal : Qt::Vertical);
}

void RunsPanel::changeEvent(QEvent* event) {
    QDockWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        ShowRuns();
}

} // namespace zem
