#include "session/RenameTrail.h"

#include "base/KelError.h"
#include "commands/FollowRename.h"
#include "game/Notes.h"
#include "qt/QtText.h"
#include "session/GameSession.h"

#include <QStringList>

#include <chrono>
#include <utility>

namespace zem {

namespace {

// Playing all runs of a game takes longer than this only where one does not end.
constexpr std::chrono::seconds LongestReplay(60);

/// Follows in the recorded runs; what went wrong, in plain words, or nothing.
QString FollowAndTell(const std::string& path, const std::vector<NameChange>& names) {
    const auto end = std::chrono::steady_clock::now() + LongestReplay;
    try {
        QStringList astray;
        for (const std::string& run :
             FollowInRuns(path, names, [end] { return std::chrono::steady_clock::now() < end; }))
            astray.append(QString::fromStdString(run));
        return astray.isEmpty() ? QString()
                                : QStringLiteral("Recorded runs that are told differently in more than the "
                                                 "new names stay as they were there: %1.")
                                      .arg(astray.join(QStringLiteral(", ")));
    } catch (const std::exception& error) {
        return QStringLiteral("%1: %2. The recorded runs still have the old names.")
            .arg(PathToQt(RunsPath(path)), ToQt(error.what()));
    }
}

} // namespace

RenameTrail::RenameTrail(GameSession& session, const CommandLookup& commands, QObject* parent)
    : QObject(parent),
      session_(session),
      commands_(commands),
      done_(session.Steps().Done()) {
    runs_.setMaxThreadCount(1);
    connect(&session_, &GameSession::StepsChanged, this, &RenameTrail::GoAlong);
    connect(&session_, &GameSession::Replaced, this, &RenameTrail::Forget);
    connect(&session_, &GameSession::Saved, this, &RenameTrail::Follow);
}

void RenameTrail::Add(const std::vector<NameChange>& names) {
    const std::size_t step = session_.Steps().Done();
    steps_[step] = {session_.Steps().Game(step), names};
    for (const NameChange& name : names)
        Push(name);
}

/// Follows undo and redo. A step that was recorded in the place of an undone one is another step.
void RenameTrail::GoAlong() {
    const History& history = session_.Steps();
    for (; done_ < history.Done(); ++done_) {
        const auto step = steps_.find(done_ + 1);
        if (step == steps_.end())
            continue;
        if (SameGame(step->second.game, history.Game(done_ + 1))) {
            for (const NameChange& name : step->second.names)
                Push(name);
        } else {
            steps_.erase(step, steps_.end());
        }
    }
    for (; done_ > history.Done(); --done_)
        if (const auto step = steps_.find(done_); step != steps_.end())
            for (auto name = step->second.names.rbegin(); name != step->second.names.rend(); ++name)
                Push({name->kind, name->to, name->from});
}

void RenameTrail::Push(const NameChange& name) {
    const bool isBack = !names_.empty() && names_.back().kind == name.kind && names_.back().from == name.to &&
                        names_.back().to == name.from;
    if (isBack)
        names_.pop_back();
    else
        names_.push_back(name);
}

void RenameTrail::Follow() {
    if (names_.empty())
        return;
    const std::string path = PathFromQt(session_.FileName());
    try {
        FollowInNotes(path, names_, commands_);
    } catch (const KelError& error) {
        emit CouldNotFollow(QStringLiteral("%1: %2. What is silenced there still has the old names.")
                                .arg(PathToQt(NotesPath(path)), ToQt(error.ProblemWithText())));
    }
    FollowInRuns(std::exchange(names_, {}));
}

void RenameTrail::FollowInRuns(std::vector<NameChange> names) {
    ++following_;
    runs_.start([this, path = PathFromQt(session_.FileName()), names = std::move(names)] {
        const QString told = FollowAndTell(path, names);
        const auto tell = [this, told] {
            --following_;
            if (!told.isEmpty())
                emit CouldNotFollow(told);
            emit Followed();
        };
        QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
    });
}

/// Another game is open.
void RenameTrail::Forget() {
    steps_.clear();
    names_.clear();
    done_ = session_.Steps().Done();
}

} // namespace zem
