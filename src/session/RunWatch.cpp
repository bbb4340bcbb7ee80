#include "session/RunWatch.h"

#include "commands/GameFolder.h"
#include "play/Libraries.h"
#include "play/RunsAfterRename.h"
#include "qt/CommandError.h"
#include "qt/QtText.h"
#include "session/GameSession.h"
#include "session/RenameTrail.h"

#include <algorithm>
#include <filesystem>
#include <utility>

namespace zem {

namespace {

constexpr int WaitBeforeRuns = 200; // milliseconds, so that a row of changes is played once
constexpr std::size_t NotJudged = SIZE_MAX;

std::shared_ptr<const play::World> CompileForRuns(GameModel game, const std::string& path) {
    play::NameMessages(game);
    const std::string folder =
        path.empty() ? std::string() : std::filesystem::path(path).parent_path().string();
    return play::World::Compile(play::WithLibraries(std::move(game), [&](const std::string& name) {
        return path.empty() ? std::nullopt : play::ReadBesideGame(folder, name);
    }));
}

bool IsSameStep(const play::RunStep& a, const play::RunStep& b) {
    return a.input.written == b.input.written && a.story == b.story;
}

/// Whether the runs are alike but for their names.
bool IsSameRun(const play::RecordedRun& a, const play::RecordedRun& b) {
    return a.seed == b.seed && a.beginning == b.beginning &&
           std::equal(a.steps.begin(), a.steps.end(), b.steps.begin(), b.steps.end(), IsSameStep);
}

} // namespace

RunWatch::RunWatch(GameSession& session, QObject* parent) : QObject(parent), session_(session) {
    wait_.setSingleShot(true);
    wait_.setInterval(WaitBeforeRuns);
    connect(&wait_, &QTimer::timeout, this, &RunWatch::Judge);
    connect(&session_, &GameSession::Changed, this, &RunWatch::JudgeSoon);
    connect(&session_, &GameSession::Replaced, this, &RunWatch::Open);
    connect(&session_, &GameSession::Saved, this, &RunWatch::NoteSaved);
    Open();
}

void RunWatch::Follow(const RenameTrail& trail) {
    trail_ = &trail;
    connect(&trail, &RenameTrail::Followed, this, &RunWatch::CheckDisk);
}

/// Another game is open.
void RunWatch::Open() {
    file_.Open(session_.FileName());
    earlier_.clear();
    judged_ = nullptr;
    lines_ = nullptr;
    walked_ = nullptr;
    judgedRuns_.clear();
    toldProblem_.clear();
    NoteRuns();
    TellProblem();
}

void RunWatch::Reload() {
    file_.Reload();
    earlier_.clear();
    NoteRuns();
    TellProblem();
}

void RunWatch::CheckDisk() {
    if (file_.IsOutdated())
        Reload();
}

void RunWatch::TellProblem() {
    if (toldProblem_ == Problem())
        return;
    toldProblem_ = Problem();
    if (!toldProblem_.isEmpty())
        emit FileProblem(QStringLiteral("%1 No recorded run is played, and nothing is written to this file, "
                                        "until that is put right.")
                             .arg(toldProblem_));
}

void RunWatch::NoteSaved() {
    try {
        file_.MoveTo(session_.FileName());
    } catch (const CommandError& error) {
        emit FileProblem(
            QStringLiteral("The recorded runs of this game are not in a file yet. %1").arg(error.Text()));
    }
    NoteRuns();
    TellProblem();
}

void RunWatch::JudgeSoon() {
    if (!Runs().empty() || wantsCoverage_ || judged_ != nullptr)
        wait_.start();
}

void RunWatch::WantCoverage() {
    if (std::exchange(wantsCoverage_, true))
        return;
    if (judged_ == nullptr)
        JudgeSoon();
}

void RunWatch::NoteWalk(std::shared_ptr<const play::Coverage> walked) {
    walked_ = std::move(walked);
    wantsCoverage_ = true;
    JudgeSoon();
}

std::function<std::shared_ptr<const play::World>()> RunWatch::CompileGame() const {
    return [game = session_.Game(), path = PathFromQt(session_.FileName())] {
        return CompileForRuns(game, path);
    };
}

void RunWatch::Judge() {
    if (trail_ != nullptr && trail_->IsBusy()) { // the file gets the new names at this moment
        wait_.start();
        return;
    }
    const std::vector<NameChange> names = trail_ == nullptr ? std::vector<NameChange>() : trail_->Names();
    work_.Run(
        *this,
        [compile = CompileGame(), runs = Runs(), names, walked = walked_](const IsOutdated& isOutdated) {
            const auto goesOn = [&isOutdated] { return !isOutdated; };
            const std::shared_ptr<const play::World> world = compile();
            Judgement judgement;
            judgement.runs = runs;
            judgement.judged = std::make_shared<const play::JudgedRuns>(play::JudgeRuns(
                world, names.empty() ? runs : play::RenameInRuns(runs, world, names, goesOn).runs, goesOn));
            if (!runs.empty() || walked != nullptr)
                judgement.lines =
                    std::make_shared<const play::LineCoverage>(*judgement.judged->coverage, walked.get());
            return judgement;
        },
        [this](Judgement judgement) {
            judged_ = std::move(judgement.judged);
            lines_ = std::move(judgement.lines);
            judgedRuns_ = std::move(judgement.runs);
            MatchJudged();
            emit JudgedAll();
        });
}

const play::JudgedRun* RunWatch::JudgedOf(std::size_t run) const {
    return run < judgedIndex_.size() && judgedIndex_[run] != NotJudged ? &judged_->runs[judgedIndex_[run]]
                                                                       : nullptr;
}

void RunWatch::NoteRuns() {
    MatchJudged();
    JudgeSoon();
    emit RunsChanged();
}

/// Finds again what was judged of the runs that are alike.
void RunWatch::MatchJudged() {
    judgedIndex_.assign(Runs().size(), NotJudged);
    for (std::size_t k = 0; k < Runs().size(); ++k) {
        const auto same = std::find_if(judgedRuns_.begin(), judgedRuns_.end(),
                                       [&](const auto& run) { return IsSameRun(run, Runs()[k]); });
        if (same != judgedRuns_.end())
            judgedIndex_[k] = static_cast<std::size_t>(same - judgedRuns_.begin());
    }
}

void RunWatch::Change(std::vector<play::RecordedRun> runs) {
    if (trail_ != nullptr && trail_->IsBusy())
        throw CommandError(QStringLiteral("The recorded runs are just getting the new names of this game. "
                                          "Please do it again in a moment."),
                           QStringLiteral("Recorded runs"));
    std::vector<play::RecordedRun> before = Runs();
    try {
        file_.Write(runs);
    } catch (const CommandError&) {
        CheckDisk();
        throw;
    }
    earlier_.push_back(std::move(before));
    NoteRuns();
}

std::string RunWatch::Keep(play::RecordedRun run) {
    CheckDisk(); // another run is no reason to refuse those of another program
    std::vector<play::RecordedRun> runs = Runs();
    run.name = play::FreeRunName(runs, run.name);
    runs.push_back(run);
    Change(std::move(runs));
    return run.name;
}

void RunWatch::Approve(const std::vector<std::size_t>& numbers) {
    std::vector<play::RecordedRun> runs = Runs();
    bool isChanged = false;
    for (const std::size_t k : numbers) {
        const play::JudgedRun* judged = JudgedOf(k);
        if (judged == nullptr || !judged->result.problem.empty() || judged->state == play::RunState::Approved)
            continue;
        const std::string name = runs[k].name;
        runs[k] = judged->result.played;
        runs[k].name = name;
        isChanged = true;
    }
    if (isChanged)
        Change(std::move(runs));
}

void RunWatch::Rename(std::size_t run, const std::string& name) {
    std::vector<play::RecordedRun> runs = Runs();
    runs[run].name.clear();
    runs[run].name = play::FreeRunName(runs, name);
    if (runs[run].name != Runs()[run].name)
        Change(std::move(runs));
}

void RunWatch::Remove(std::size_t run) {
    std::vector<play::RecordedRun> runs = Runs();
    runs.erase(runs.begin() + static_cast<std::ptrdiff_t>(run));
    Change(std::move(runs));
}

void RunWatch::Cut(std::size_t run, std::size_t steps) {
    std::vector<play::RecordedRun> runs = Runs();
    if (steps >= runs[run].steps.size())
        return;
    runs[run] = play::CutRun(runs[run], steps);
    Change(std::move(runs));
}

void RunWatch::TakeBack() {
    if (earlier_.empty())
        return;
    std::vector<std::vector<play::RecordedRun>> earlier = earlier_;
    Change(earlier.back());
    earlier.pop_back();
    earlier_ = std::move(earlier);
    emit RunsChanged();
}

} // namespace zem
