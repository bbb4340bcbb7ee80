#pragma once

#include "play/RecordedRuns.h"
#include "session/FileStamp.h"

#include <QString>

#include <vector>

namespace zem {

/// The recorded runs of a game in the file beside it. A game without a file has them here until it gets one.
/// A file that is damaged, or that another program has changed, is never written over.
class RunsFile {
public:
    /// Reads the runs of another game; none for an empty path.
    void Open(const QString& game);

    /// Reads the file again.
    void Reload() { Open(game_); }

    /// The path of the file; empty for a game without one.
    QString Path() const;

    const std::vector<play::RecordedRun>& Runs() const { return runs_; }

    /// Why the file cannot be used, with its line, in plain words; empty when it can.
    const QString& Problem() const { return problem_; }

    /// Whether the file on the disk is no longer what was read or written here.
    bool IsOutdated() const { return !game_.isEmpty() && stamp_.IsOutdated(Path()); }

    /// Has these runs from now on, in the file if there is one. Throws CommandError, and leaves both as they
    /// are, when the file is damaged, has changed meanwhile, or cannot be written.
    void Write(const std::vector<play::RecordedRun>& runs);

    /// The game got a file, or another one: the runs of a game without a file are put there, behind those
    /// that the file has. Throws CommandError as Write does; the runs stay here then.
    void MoveTo(const QString& game);

private:
    QString game_;
    FileStamp stamp_;
    std::vector<play::RecordedRun> runs_;
    QString problem_;
};

} // namespace zem
