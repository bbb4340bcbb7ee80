#include "panels/RunTreeView.h"

#include "panels/RunStory.h"
#include "play/RunTree.h"
#include "session/RunWatch.h"

#include <QHeaderView>
#include <QSignalBlocker>

#include <algorithm>

namespace zem {

namespace {

enum RunColumn { RunName, RunLines, RunStateColumn };
enum RunData { NumberOfRun = Qt::UserRole, NumberOfLines, IsWholeRun, WorstState };

// From the one that needs the author least.
constexpr play::RunState StatesByNeed[] = {play::RunState::Approved, play::RunState::New,
                                           play::RunState::Changed, play::RunState::CannotBePlayed};

int NeedOf(play::RunState state) {
    return static_cast<int>(std::find(std::begin(StatesByNeed), std::end(StatesByNeed), state) -
                            std::begin(StatesByNeed));
}

} // namespace

RunTreeView::RunTreeView(QWidget* parent) : QTreeWidget(parent) {
    setHeaderLabels({tr("Run"), tr("Lines"), tr("State")});
    setUniformRowHeights(true);
    setAllColumnsShowFocus(true);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    header()->setStretchLastSection(true);
    header()->setSectionResizeMode(RunName, QHeaderView::Interactive);
    header()->setSectionResizeMode(RunLines, QHeaderView::ResizeToContents);
    setColumnWidth(RunName, fontMetrics().horizontalAdvance(QStringLiteral("a run with a name of words ")));
}

void RunTreeView::AddRun(const RunWatch& watch, std::size_t run, QTreeWidgetItem& parent) {
    const play::RecordedRun& shown = watch.Runs()[run];
    auto* item = new QTreeWidgetItem(&parent);
    item->setText(RunName, QString::fromStdString(shown.name));
    item->setToolTip(RunName, item->text(RunName));
    item->setText(RunLines, QString::number(shown.steps.size()));
    item->setTextAlignment(RunLines, Qt::AlignRight | Qt::AlignVCenter);
    item->setData(RunName, NumberOfRun, static_cast<int>(run));
    item->setData(RunName, NumberOfLines, static_cast<int>(shown.steps.size()));
    item->setData(RunName, IsWholeRun, true);
    const play::JudgedRun* judged = watch.JudgedOf(run);
    item->setText(RunStateColumn, judged == nullptr ? tr("being played...") : StateWords(*judged));
    item->setToolTip(RunStateColumn, item->text(RunStateColumn));
    if (judged == nullptr)
        return;
    item->setIcon(RunName, IconOfState(judged->state, palette()));
    for (QTreeWidgetItem* above = &parent; above != nullptr; above = above->parent())
        above->setData(RunName, WorstState,
                       std::max(above->data(RunName, WorstState).toInt(), NeedOf(judged->state)));
}

void RunTreeView::AddBranch(const RunWatch& watch, const play::RunBranch& branch, QTreeWidgetItem& parent) {
    if (branch.branches.empty() && branch.ending.size() == 1) {
        AddRun(watch, branch.ending.front(), parent);
        return;
    }
    const play::RecordedRun& run = watch.Runs()[branch.run];
    const std::size_t lines = branch.end - branch.begin;
    auto* item = new QTreeWidgetItem(&parent);
    const QString last =
        branch.end == 0 ? QString() : QString::fromStdString(run.steps[branch.end - 1].input.written);
    item->setText(RunName, last.isEmpty() ? tr("the beginning")
                           : lines == 1   ? tr("together: %1").arg(last)
                                          : tr("together, up to %1").arg(last));
    item->setToolTip(RunName, item->text(RunName));
    item->setText(RunLines, QString::number(lines));
    item->setTextAlignment(RunLines, Qt::AlignRight | Qt::AlignVCenter);
    item->setData(RunName, NumberOfRun, static_cast<int>(branch.run));
    item->setData(RunName, NumberOfLines, static_cast<int>(branch.end));
    for (const std::size_t ending : branch.ending)
        AddRun(watch, ending, *item);
    for (const play::RunBranch& next : branch.branches)
        AddBranch(watch, next, *item);
    const play::RunState worst = StatesByNeed[item->data(RunName, WorstState).toInt()];
    item->setIcon(RunName, IconOfState(worst, palette()));
}

void RunTreeView::Show(const RunWatch& watch) {
    const QTreeWidgetItem* current = currentItem();
    const QString selected = current == nullptr ? QString() : current->text(RunName);
    {
        const QSignalBlocker quiet(this);
        clear();
        for (const play::RunBranch& branch : play::TreeOfRuns(watch.Runs()))
            AddBranch(watch, branch, *invisibleRootItem());
        expandAll();
        Select(selected);
    }
    emit itemSelectionChanged();
}

void RunTreeView::Select(const QString& name) {
    const QList<QTreeWidgetItem*> found =
        findItems(name, Qt::MatchExactly | Qt::MatchCaseSensitive | Qt::MatchRecursive, RunName);
    setCurrentItem(found.isEmpty() ? topLevelItem(0) : found.front());
}

std::optional<play::RunPoint> RunTreeView::Selected() const {
    const QTreeWidgetItem* item = currentItem();
    if (item == nullptr)
        return std::nullopt;
    return play::RunPoint{static_cast<std::size_t>(item->data(RunName, NumberOfRun).toInt()),
                          static_cast<std::size_t>(item->data(RunName, NumberOfLines).toInt())};
}

bool RunTreeView::IsRunSelected() const {
    return currentItem() != nullptr && currentItem()->data(RunName, IsWholeRun).toBool();
}

} // namespace zem
