#include "panels/WalkView.h"

#include "forms/RunCommand.h"
#include "panels/ProblemsPanel.h"
#include "panels/ResultList.h"
#include "play/JudgeRuns.h"
#include "play/SourcePlaces.h"
#include "session/RunWatch.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <QSpinBox>
#include <QVBoxLayout>

#include <array>
#include <utility>

namespace zem {

using play::CoveragePart;
using walk::WalkFinding;

/// What a walk came to, ready to be shown.
struct WalkView::Walked {
    std::unique_ptr<const walk::Walker> walker; // null where the game cannot begin
    QString summary;
    std::vector<ResultRow> rows;              // the findings, then what was never reached
    std::vector<std::optional<Place>> places; // of each row
    std::shared_ptr<const play::Coverage> coverage;
};

namespace {

constexpr int FewestTurns = 1000;
constexpr int MostTurns = 10'000'000;
constexpr int UsualTurns = 200'000;
constexpr int RefreshEvery = 200; // milliseconds

/// In the order of WalkFinding::Kind.
constexpr std::array<const char*, 5> FindingGroups = {"Ways to win", "Ways to lose", "Mistakes in scripts",
                                                      "Turns without end",
                                                      "Turns after which nothing can be won"};
constexpr std::array<const char*, 5> FindingNames = {"win", "loss", "mistake", "endless turn", "dead end"};

QString CountOf(std::uint64_t count, const char* word) {
    return QStringLiteral("%1 %2%3").arg(QLocale().toString(qulonglong(count)), QLatin1String(word),
                                         count == 1 ? QString() : QStringLiteral("s"));
}

QString Reached(const play::Coverage& coverage, CoveragePart::Kind kind, const char* words) {
    const play::CoverageCount count = coverage.Count(kind);
    return QStringLiteral("%1 of %2 %3").arg(count.reached).arg(count.all).arg(QLatin1String(words));
}

QString Summary(const walk::Walker& walker) {
    const walk::WalkFigures& figures = walker.Figures();
    const play::Coverage& reached = walker.Reached();
    return QStringLiteral("%1: won %2, lost %3. Reached: %4, %5, %6.")
        .arg(CountOf(figures.turns, "turn"), CountOf(figures.wins, "time"), CountOf(figures.losses, "time"),
             Reached(reached, CoveragePart::Room, "rooms"),
             Reached(reached, CoveragePart::Command, "commands"),
             Reached(reached, CoveragePart::Ending, "endings"));
}

} // namespace

WalkView::WalkView(RunWatch& watch, Dialogs& dialogs,
                   std::function<void(const play::RecordedRun&, std::size_t)> play,
                   std::function<void(const Place&)> open, QWidget* parent)
    : QWidget(parent),
      watch_(watch),
      dialogs_(dialogs),
      play_(std::move(play)),
      open_(std::move(open)),
      butWalk_(new QPushButton(this)),
      spnTurns_(new QSpinBox(this)),
      prgWalk_(new QProgressBar(this)),
      lblWalk_(new QLabel(this)),
      lstFindings_(new ResultList(this)),
      butPlay_(new QPushButton(tr("Play &it"), this)),
      butKeep_(new QPushButton(tr("Keep as a &run..."), this)) {
    butWalk_->setObjectName(QStringLiteral("butWalk"));
    spnTurns_->setObjectName(QStringLiteral("spnTurns"));
    spnTurns_->setRange(FewestTurns, MostTurns);
    spnTurns_->setSingleStep(UsualTurns / 2);
    spnTurns_->setGroupSeparatorShown(true);
    spnTurns_->setValue(UsualTurns);
    prgWalk_->setObjectName(QStringLiteral("prgWalk"));
    prgWalk_->setAccessibleName(tr("Turns of the walk"));
    prgWalk_->setMaximum(1000);
    lblWalk_->setObjectName(QStringLiteral("lblWalk"));
    lblWalk_->setTextFormat(Qt::PlainText);
    lblWalk_->setWordWrap(true);
    lblWalk_->setText(
        tr("A walker plays the game by itself and looks for ways to win and to lose, mistakes in "
           "scripts, turns without end, and rooms that nobody gets to."));
    lstFindings_->setObjectName(QStringLiteral("lstFindings"));
    lstFindings_->setAccessibleName(tr("Findings of the walker"));
    butPlay_->setObjectName(QStringLiteral("butPlayFinding"));
    butKeep_->setObjectName(QStringLiteral("butKeepFinding"));
    auto* lblTurns = new QLabel(tr("T&urns"), this);
    lblTurns->setBuddy(spnTurns_);
    auto* top = new QHBoxLayout;
    top->addWidget(butWalk_);
    top->addWidget(lblTurns);
    top->addWidget(spnTurns_);
    top->addWidget(prgWalk_, 3);
    top->addStretch(1); // without the progress the buttons stay as they are
    top->addWidget(butPlay_);
    top->addWidget(butKeep_);
    auto* column = new QVBoxLayout(this);
    column->addLayout(top);
    column->addWidget(lblWalk_);
    column->addWidget(lstFindings_, 1);
    refresh_.setInterval(RefreshEvery);
    connect(&refresh_, &QTimer::timeout, this, &WalkView::ShowProgress);
    OnClick(butWalk_, this, dialogs_, [this] { StartOrStop(); });
    OnClick(butPlay_, this, dialogs_, [this] { PlaySelected(); });
    OnClick(butKeep_, this, dialogs_, [this] { KeepSelected(); });
    connect(lstFindings_, &ResultList::Chosen, this,
            [this](int row) { RunCommand(dialogs_, this, [&] { Choose(row); }); });
    connect(lstFindings_, &ResultList::SelectedChanged, this, &WalkView::EnableButtons);
    ShowProgress();
    EnableButtons();
}

WalkView::~WalkView() = default;

std::shared_ptr<const WalkView::Walked> WalkView::Walk(const std::shared_ptr<const play::World>& world,
                                                       std::uint64_t turns,
                                                       const std::function<bool()>& goesOn,
                                                       const std::shared_ptr<Progress>& progress) {
    auto walked = std::make_shared<Walked>();
    const std::string why = play::Session(world, 1).WhyItCannotBegin();
    if (!why.empty()) {
        walked->summary = ToQt(why);
        return walked;
    }
    walk::WalkLimits limits;
    limits.turns = turns;
    const walk::Walker* running = nullptr;
    limits.goesOn = [&running, goesOn, progress] {
        if (running != nullptr)
            progress->turns = running->Figures().turns;
        return goesOn() && !progress->isStopped;
    };
    auto walker = std::make_unique<walk::Walker>(world, limits);
    running = walker.get();
    walker->Run();
    const play::SourcePlaces places(world);
    for (const WalkFinding& finding : walker->Findings()) {
        walked->rows.push_back({QLatin1String(FindingGroups[finding.kind]),
                                CountOf(finding.way.size(), "line"), ToQt(places.Describe(finding.source)),
                                ToQt(finding.text)});
        walked->places.push_back(places.PlaceOf(finding.source));
    }
    for (const CoveragePart& part : walker->Reached().Parts()) {
        if (part.hits > 0 || (part.kind != CoveragePart::Room && part.kind != CoveragePart::Ending))
            continue;
        const bool isRoom = part.kind == CoveragePart::Room;
        walked->rows.push_back(
            {isRoom ? QStringLiteral("Rooms never entered") : QStringLiteral("Endings never reached"),
             QString(), ToQt(places.Describe(part.source)), QString()});
        walked->places.push_back(places.PlaceOf(part.source));
    }
    walked->summary = Summary(*walker);
    walked->coverage = std::make_shared<const play::Coverage>(walker->Reached());
    walked->walker = std::move(walker);
    return walked;
}

void WalkView::StartOrStop() {
    if (work_.IsRunning()) {
        progress_->isStopped = true;
        return;
    }
    progress_ = std::make_shared<Progress>();
    const auto turns = static_cast<std::uint64_t>(spnTurns_->value());
    work_.Run(
        *this,
        [compile = watch_.CompileGame(), turns, progress = progress_](const IsOutdated& isOutdated) {
            return Walk(
                compile(), turns, [&isOutdated] { return !isOutdated; }, progress);
        },
        [this](std::shared_ptr<const Walked> walked) {
            walked_ = std::move(walked);
            ShowWalked();
        });
    refresh_.start();
    ShowProgress();
    EnableButtons();
}

void WalkView::ShowProgress() {
    const bool isRunning = work_.IsRunning();
    butWalk_->setText(isRunning ? tr("&Stop the walker") : tr("&Let a walker try"));
    prgWalk_->setVisible(isRunning);
    spnTurns_->setEnabled(!isRunning);
    if (!isRunning)
        return;
    const std::uint64_t turns = progress_->turns;
    prgWalk_->setValue(static_cast<int>(turns * 1000 / static_cast<std::uint64_t>(spnTurns_->value())));
    lblWalk_->setText(tr("%1 so far.").arg(CountOf(turns, "turn")));
}

void WalkView::ShowWalked() {
    refresh_.stop();
    ShowProgress();
    lblWalk_->setText(walked_->summary);
    lstFindings_->SetRows(walked_->rows);
    if (!walked_->rows.empty() && lstFindings_->Selected() < 0)
        lstFindings_->Select(0);
    if (walked_->coverage != nullptr)
        watch_.NoteWalk(walked_->coverage);
    EnableButtons();
}

std::optional<play::RecordedRun> WalkView::SelectedAsRun() const {
    const int row = lstFindings_->Selected();
    if (walked_ == nullptr || walked_->walker == nullptr || row < 0)
        return std::nullopt;
    const std::vector<WalkFinding>& findings = walked_->walker->Findings();
    if (static_cast<std::size_t>(row) >= findings.size())
        return std::nullopt; // something that was never reached
    const WalkFinding& finding = findings[static_cast<std::size_t>(row)];
    return walked_->walker->AsRun(finding, FindingNames[finding.kind]);
}

void WalkView::EnableButtons() {
    const int row = lstFindings_->Selected();
    const bool isFinding = walked_ != nullptr && walked_->walker != nullptr && row >= 0 &&
                           static_cast<std::size_t>(row) < walked_->walker->Findings().size();
    butPlay_->setEnabled(isFinding && !work_.IsRunning());
    butKeep_->setEnabled(isFinding && !work_.IsRunning());
}

/// A mistake is opened where it stands; a way to an ending is played.
void WalkView::Choose(int row) {
    if (const std::optional<Place>& place = walked_->places[static_cast<std::size_t>(row)])
        open_(Place(*place));
    else
        PlaySelected();
}

void WalkView::PlaySelected() {
    if (const std::optional<play::RecordedRun> run = SelectedAsRun())
        play_(*run, run->steps.size());
}

/// Nobody has read yet what the game tells there, so the run is kept as a new one.
void WalkView::KeepSelected() {
    std::optional<play::RecordedRun> run = SelectedAsRun();
    if (!run)
        return;
    const QString suggested = QString::fromStdString(play::FreeRunName(watch_.Runs(), run->name));
    const std::optional<QString> name =
        dialogs_.AskText(this, tr("Name of the run:"), tr("Keep as a run"), suggested);
    if (!name || name->trimmed().isEmpty())
        return;
    run->name = name->toStdString();
    run->beginning.clear();
    for (play::RunStep& step : run->steps)
        step.story.clear();
    emit Kept(QString::fromStdString(watch_.Keep(*std::move(run))));
}

} // namespace zem
