#pragma once

#include "game/Rename.h"
#include "play/JudgeRuns.h"
#include "play/ReachedParts.h"
#include "qt/LatestWork.h"
#include "session/RunsFile.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace zem {

class GameSession;
class RenameTrail;

/// Plays the recorded runs of the open game again soon after each change of it, on another thread, and
/// changes them. A run is told by its number in the file, from 0. What changes runs throws CommandError, and
/// leaves them as they are, when they cannot be written.
class RunWatch : public QObject {
    Q_OBJECT

public:
    /// @param session  outlives this object
    explicit RunWatch(GameSession& session, QObject* parent = nullptr);

    /// Names that have changed since the game was saved do not count as differences from now on.
    /// @param trail  outlives this object
    void Follow(const RenameTrail& trail);

    const std::vector<play::RecordedRun>& Runs() const { return file_.Runs(); }

    /// The file of the runs, and why it cannot be used; both may be empty.
    QString Path() const { return file_.Path(); }
    const QString& Problem() const { return file_.Problem(); }

    /// What playing a run again came to; null until it was played.
    const play::JudgedRun* JudgedOf(std::size_t run) const;

    /// All that was judged last, with its coverage; null before that. It may be of an earlier game.
    const std::shared_ptr<const play::JudgedRuns>& Judged() const { return judged_; }

    /// The same by lines of scripts; null where neither a run nor a walk has reached any.
    const std::shared_ptr<const play::LineCoverage>& Lines() const { return lines_; }

    /// Whether runs are being played or about to be.
    bool IsJudging() const { return wait_.isActive() || work_.IsRunning(); }

    /// From now on the coverage is wanted although there may be no runs.
    void WantCoverage();

    /// What a walker has reached counts for the coverage, too, until another one walks or game is opened.
    void NoteWalk(std::shared_ptr<const play::Coverage> walked);
    const std::shared_ptr<const play::Coverage>& Walked() const { return walked_; }

    /// Makes the game as it is now ready for playing, for work on other threads.
    std::function<std::shared_ptr<const play::World>()> CompileGame() const;

    /// Reads the file again if another program has changed it.
    void CheckDisk();

    /// Adds a run; gives the name that it got.
    std::string Keep(play::RecordedRun run);
    /// What is told now is what is approved. Runs that cannot be played stay as they are.
    void Approve(const std::vector<std::size_t>& runs);
    void Rename(std::size_t run, const std::string& name);
    void Remove(std::size_t run);
    /// Keeps only so many of its first lines.
    void Cut(std::size_t run, std::size_t steps);

    /// Makes the last of these changes undone, any number of times.
    void TakeBack();
    bool CanTakeBack() const { return !earlier_.empty(); }

signals:
    /// The runs are others, or not yet judged.
    void RunsChanged();

    void JudgedAll();

    /// The file cannot be used, or the runs could not follow the game to its new file, in plain words.
    void FileProblem(const QString& text);

private:
    /// What was judged, and what it was judged of.
    struct Judgement {
        std::shared_ptr<const play::JudgedRuns> judged;
        std::shared_ptr<const play::LineCoverage> lines;
        std::vector<play::RecordedRun> runs; // as the file had them
    };

    void Open();
    void Reload();
    void NoteSaved();
    void JudgeSoon();
    void Judge();
    void Change(std::vector<play::RecordedRun> runs);
    void NoteRuns();
    void MatchJudged();
    void TellProblem();

    GameSession& session_;
    const RenameTrail* trail_ = nullptr;
    RunsFile file_;
    QTimer wait_;
    bool wantsCoverage_ = false;
    std::shared_ptr<const play::JudgedRuns> judged_;
    std::shared_ptr<const play::LineCoverage> lines_;
    std::shared_ptr<const play::Coverage> walked_;
    std::vector<play::RecordedRun> judgedRuns_;           // that judged_ is of
    std::vector<std::size_t> judgedIndex_;                // in judged_, of each run; SIZE_MAX for none
    std::vector<std::vector<play::RecordedRun>> earlier_; // before each change, the last one last
    QString toldProblem_;
    LatestWork work_; // last: it ends before what it reads
};

} // namespace zem
