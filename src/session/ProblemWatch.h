#pragma once

#include "problems/CheckedGame.h"
#include "problems/Problem.h"
#include "qt/LatestWork.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace zem {

class GameSession;
class RenameTrail;

/// What a check of the whole game found.
struct FoundProblems {
    std::shared_ptr<const problems::CheckedGame> game; // that was checked; null before the first check
    std::vector<problems::Problem> problems;           // without those that the author silenced
    std::array<int, 3> counts = {};                    // of each level
    int silenced = 0;

    int CountOf(problems::Level level) const { return counts[static_cast<std::size_t>(level)]; }
};

/// Checks the open game on another thread, soon after each change of it. What it tells is always of a whole
/// game, and of the last one.
class ProblemWatch : public QObject {
    Q_OBJECT

public:
    /// @param session   outlives this object
    /// @param commands  outlives this object
    /// @param trail     outlives this object; what the notes have other names for
    ProblemWatch(GameSession& session, const CommandLookup& commands, const RenameTrail& trail,
                 QObject* parent = nullptr);

    const FoundProblems& Found() const { return *found_; }

    /// The same, for work on other threads.
    std::shared_ptr<const FoundProblems> Shared() const { return found_; }

    /// The same check of another version of the game, to be run on another thread.
    std::function<std::shared_ptr<const FoundProblems>()> CheckOf(GameModel game) const;

    /// Whether a check is under way or about to begin, so that what was found may be of an earlier game.
    bool IsChecking() const { return wait_.isActive() || work_.IsRunning(); }

    /// The file beside the game in which silenced problems are kept; empty for a game without a file.
    QString NotesPath() const;

    /// Checks again, soon: a file beside the game has changed.
    void CheckAgain();

    /// Keeps the problem silent from now on, in the file beside the game. Throws CommandError when the game
    /// has no file, or that file cannot be read or written.
    void Silence(const problems::Problem& problem, const QString& reason);

signals:
    void Checked();

    /// The file of silenced problems is damaged; nothing is silenced by it.
    void NotesDamaged(const QString& text);

private:
    void Check();
    void ForgetFile();

    GameSession& session_;
    const CommandLookup& commands_;
    const RenameTrail& trail_;
    QTimer wait_;
    std::shared_ptr<const FoundProblems> found_ = std::make_shared<FoundProblems>();
    std::shared_ptr<const problems::SourceFile> source_; // read on the other thread, kept until the next save
    std::string toldOfNotes_;                            // what was said last of damaged notes
    LatestWork work_;                                    // last: it ends before what it reads
};

} // namespace zem
