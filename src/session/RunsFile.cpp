#include "session/RunsFile.h"

#include "base/KelError.h"
#include "base/TextFile.h"
#include "commands/FollowRename.h"
#include "files/ReplaceFile.h"
#include "play/JudgeRuns.h"
#include "qt/CommandError.h"
#include "qt/QtText.h"
#include "writer/OutputFile.h"

#include <QFileInfo>

#include <utility>

namespace zem {

namespace {

/// The runs of a file; what is wrong with it goes into `problem`.
std::vector<play::RecordedRun> ReadRunsOf(const QString& path, QString& problem) {
    const QString file = QFileInfo(path).fileName();
    try {
        play::RecordedRuns read = play::ReadRuns(ReadFile(PathFromQt(path)));
        if (read.problem.empty())
            return std::move(read.runs);
        problem = QStringLiteral("%1, line %2: %3.")
                      .arg(file)
                      .arg(read.problemLine)
                      .arg(QString::fromStdString(read.problem));
    } catch (const KelError& error) {
        problem = QStringLiteral("%1: %2.").arg(file, ToQt(error.ProblemWithText()));
    }
    return {};
}

} // namespace

QString RunsFile::Path() const {
    return game_.isEmpty() ? QString() : PathToQt(RunsPath(PathFromQt(game_)));
}

void RunsFile::Open(const QString& game) {
    game_ = game;
    problem_.clear();
    runs_.clear();
    stamp_ = game.isEmpty() ? FileStamp() : FileStamp::Of(Path());
    if (!game.isEmpty() && QFileInfo::exists(Path()))
        runs_ = ReadRunsOf(Path(), problem_);
}

void RunsFile::Write(const std::vector<play::RecordedRun>& runs) {
    const QString title = QStringLiteral("Recorded runs");
    if (!problem_.isEmpty())
        throw CommandError(
            QStringLiteral("%1 Nothing is written to it until that is put right.").arg(problem_), title);
    if (IsOutdated())
        throw CommandError(QStringLiteral("%1 has been changed by another program since it was read here. "
                                          "Nothing was written; the runs are read anew now.")
                               .arg(QFileInfo(Path()).fileName()),
                           title);
    const std::string text = play::WriteRuns(runs);
    if (!game_.isEmpty()) {
        try {
            ReplaceFile(PathFromQt(Path()), [&](const std::string& file) {
                OutputFile output(file);
                output.Write(text);
                output.Close();
            });
        } catch (const KelError& error) {
            throw CommandError(QStringLiteral("%1: %2. The runs are as they were.")
                                   .arg(QFileInfo(Path()).fileName(), ToQt(error.ProblemWithText())),
                               title);
        }
        stamp_ = FileStamp::Of(Path());
    }
    runs_ = play::ReadRuns(text).runs; // which tells each its lines in the file
}

void RunsFile::MoveTo(const QString& game) {
    if (game == game_)
        return;
    const std::vector<play::RecordedRun> waiting =
        game_.isEmpty() ? std::exchange(runs_, {}) : std::vector<play::RecordedRun>();
    RunsFile there;
    there.Open(game);
    if (!waiting.empty()) {
        std::vector<play::RecordedRun> all = there.Runs();
        for (play::RecordedRun run : waiting) {
            run.name = play::FreeRunName(all, run.name);
            all.push_back(std::move(run));
        }
        try {
            there.Write(all);
        } catch (const CommandError&) {
            runs_ = waiting;
            throw;
        }
    }
    *this = std::move(there);
}

} // namespace zem
