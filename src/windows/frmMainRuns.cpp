// The recorded runs of the game in the main window: how they are told now, their panel, and keeping one.
#include "forms/RunCommand.h"
#include "forms/ToolTip.h"
#include "panels/CoveragePanel.h"
#include "panels/PlayPanel.h"
#include "panels/RunStory.h"
#include "panels/RunsPanel.h"
#include "script/ReachedLines.h"
#include "script/ScriptEditing.h"
#include "session/RunWatch.h"
#include "ui_frmMain.h"
#include "windows/frmMain.h"

#include <QToolButton>

#include <set>
#include <string>

namespace zem {

namespace {

/// The runs that the author should look at, in words: "win: changed after > e".
QStringList RunsToLookAt(const RunWatch& watch) {
    QStringList runs;
    for (std::size_t k = 0; k < watch.Runs().size(); ++k) {
        const play::JudgedRun* judged = watch.JudgedOf(k);
        if (judged != nullptr &&
            (judged->state == play::RunState::Changed || judged->state == play::RunState::CannotBePlayed))
            runs.append(QString::fromStdString(watch.Runs()[k].name) + QStringLiteral(": ") +
                        StateWords(*judged));
    }
    return runs;
}

} // namespace

void frmMain::AddRuns() {
    runs_->Follow(*renames_);
    butRuns_ = new QToolButton(this);
    butRuns_->setObjectName(QStringLiteral("butRuns"));
    butRuns_->setAutoRaise(true);
    butRuns_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    butRuns_->setFocusPolicy(Qt::NoFocus); // the command has a key
    ui_->StatusBar1->addPermanentWidget(butRuns_);
    runsCommand_ = AddPanel(
        QStringLiteral("mnuToolsRuns"), QStringLiteral("Run&s"), QKeySequence(Qt::CTRL | Qt::Key_F5),
        [this] {
            runsPanel_ = new RunsPanel(
                *runs_, dialogs_,
                [this](const play::RecordedRun& run, std::size_t steps) { PlayRunTo(run, steps); },
                [this](const Place& place) { OpenEditor(place); }, this);
            runsPanel_->setProperty("isTabbed", true);
            return runsPanel_.data();
        },
        Qt::BottomDockWidgetArea);
    AddPanel(
        QStringLiteral("mnuToolsCoverage"), QStringLiteral("C&overage"), QKeySequence(Qt::CTRL | Qt::Key_F6),
        [this] {
            auto* panel = new CoveragePanel(
                *runs_, dialogs_, [this](const Place& place) { OpenEditor(place); },
                [this](const auto& judged, const play::Hit& part) { PlayWhatReaches(judged, part); }, this);
            panel->setProperty("isTabbed", true);
            return panel;
        },
        Qt::BottomDockWidgetArea);
    whichRun_ = AddCommand("mnuToolsWhichRun", "Which Run Gets to the Selected Room?", "Ctrl+Shift+F5",
                           [this] { PlayWhatEntersRoom(); });
    connect(butRuns_, &QToolButton::clicked, runsCommand_, &QAction::trigger);
    connect(runs_, &RunWatch::RunsChanged, this, &frmMain::ShowRuns);
    connect(runs_, &RunWatch::JudgedAll, this, &frmMain::ShowRuns);
    connect(runs_, &RunWatch::JudgedAll, this, &frmMain::ShowReached);
    connect(runs_, &RunWatch::RunsChanged, this, &frmMain::ShowReached);
    connect(runs_, &RunWatch::FileProblem, this, [this](const QString& text) { ShowBar(text, {}); });
    ShowRuns();
}

void frmMain::ShowRuns() {
    const std::size_t count = runs_->Runs().size();
    butRuns_->setVisible(count > 0);
    const bool isKnown = runs_->JudgedOf(0) != nullptr;
    if (count == 0 || !isKnown)
        toldRuns_.clear();
    if (count == 0)
        return;
    const QStringList wrong = RunsToLookAt(*runs_);
    const QString all = count == 1 ? QStringLiteral("1 run") : QStringLiteral("%1 runs").arg(count);
    butRuns_->setText(!isKnown          ? QStringLiteral("Runs...")
                      : wrong.isEmpty() ? QStringLiteral("%1 well").arg(all)
                                        : QStringLiteral("%1 of %2 changed").arg(wrong.size()).arg(all));
    butRuns_->setAccessibleName(butRuns_->text());
    butRuns_->setToolTip(ToolTipOf(wrong.isEmpty() ? butRuns_->text() : wrong.join(u'\n')));
    butRuns_->setIcon(wrong.isEmpty() ? QIcon() : IconOfState(play::RunState::Changed, palette()));
    if (!wrong.isEmpty() && wrong != toldRuns_)
        ShowStatus(QStringLiteral("Run %1").arg(wrong.join(QStringLiteral("; "))));
    toldRuns_ = wrong;
}

/// Gives the windows of scripts what runs have reached.
void frmMain::ShowReached() {
    context_.scripts.SetReached(std::make_shared<const ReachedLines>(
        ReachedLines{runs_->Runs().empty() ? nullptr : runs_->Judged(), runs_->Lines(),
                     [this](const auto& judged, const play::Hit& part) { PlayWhatReaches(judged, part); }}));
    ShowProblemsOnMap();
}

/// Marks the rooms that neither a run nor a walk has entered; none where nothing is known.
std::vector<RoomRemark> frmMain::WithRoomsNeverEntered(std::vector<RoomRemark> remarks) const {
    if (runs_->Judged() == nullptr || runs_->Lines() == nullptr)
        return remarks;
    std::set<std::string> entered;
    for (const play::Coverage* coverage : {runs_->Judged()->coverage.get(), runs_->Walked().get()})
        if (coverage != nullptr)
            for (const auto& room : coverage->GetWorld()->AllRooms())
                if (coverage->HitsOf({&room->book, play::Hit::Record}) > 0)
                    entered.insert(room->record->Name);
    const GameModel& game = session_.Game();
    remarks.resize(static_cast<std::size_t>(game.Rooms.Count()));
    std::size_t k = 0;
    for (const Room& room : game.Rooms) {
        RoomRemark& remark = remarks[k++];
        remark.isNeverEntered = !entered.contains(room.Name);
        if (remark.isNeverEntered)
            remark.words += (remark.words.isEmpty() ? QString() : QStringLiteral("\n")) +
                            QStringLiteral("No run and no walk has entered this room.");
    }
    return remarks;
}

void frmMain::PlayWhatEntersRoom() {
    const Place place = SelectedPlace();
    const std::shared_ptr<const play::JudgedRuns> judged = runs_->Judged();
    if (place.Depth() == 0)
        return;
    const std::string name = session_.Game().Rooms[place.steps[0].entry].Name;
    if (judged != nullptr)
        for (const auto& room : judged->world->AllRooms())
            if (room->record->Name == name) {
                PlayWhatReaches(judged, {&room->book, play::Hit::Record});
                return;
            }
    ShowStatus(QStringLiteral("No recorded run gets there."));
}

void frmMain::PlayRunTo(const play::RecordedRun& run, std::size_t steps) {
    ShowPanel(Player());
    Player().PlayRun(run, steps);
}

/// Plays the run that gets to a part of the game with the fewest lines, up to there.
void frmMain::PlayWhatReaches(const std::shared_ptr<const play::JudgedRuns>& judged, const play::Hit& part) {
    std::vector<play::RecordedRun> runs;
    for (const play::JudgedRun& run : judged->runs)
        runs.push_back(run.approved);
    ShowStatus(QStringLiteral("Looking for the run that gets there..."));
    findingRun_.Run(
        *this,
        [judged, runs, part](const IsOutdated& isOutdated) {
            return play::ShortestWayTo(judged->world, runs, part, [&isOutdated] { return !isOutdated; });
        },
        [this, runs](const std::optional<play::RunPoint>& point) {
            if (!point) {
                ShowStatus(QStringLiteral("No recorded run gets there."));
                return;
            }
            const play::RecordedRun& run = runs[point->run];
            ShowStatus(QStringLiteral("The run \"%1\" gets there with line %2 of %3.")
                           .arg(QString::fromStdString(run.name))
                           .arg(point->steps)
                           .arg(run.steps.size()));
            PlayRunTo(run, point->steps);
        });
}

void frmMain::KeepRun() {
    play::RunResult result = Player().AsRun();
    const QString room = ToQt(Player().RoomOfPlayer());
    const QString suggested = room.isEmpty() ? QStringLiteral("run") : QStringLiteral("to %1").arg(room);
    const std::string free = play::FreeRunName(runs_->Runs(), suggested.toStdString());
    const std::optional<QString> name =
        dialogs_.AskText(this, QStringLiteral("Name of the run:"), QStringLiteral("Keep as a run"),
                         QString::fromStdString(free));
    if (!name || name->trimmed().isEmpty())
        return;
    result.played.name = name->toStdString();
    const std::string kept = runs_->Keep(std::move(result.played));
    if (!runsCommand_->isChecked())
        runsCommand_->trigger();
    runsPanel_->Select(kept);
    if (!result.problem.empty())
        ShowBar(QStringLiteral("The game has changed since it was played so: the run \"%1\" ends where it is "
                               "told that %2.")
                    .arg(QString::fromStdString(kept), QString::fromStdString(result.problem)),
                {});
}

} // namespace zem
