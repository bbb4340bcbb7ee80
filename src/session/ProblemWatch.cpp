#include "session/ProblemWatch.h"

#include "base/TextFile.h"
#include "commands/GameFolder.h"
#include "game/NotePlaces.h"
#include "problems/FindProblems.h"
#include "qt/CommandError.h"
#include "qt/QtText.h"
#include "reader/LoadGame.h"
#include "session/GameSession.h"
#include "session/RenameTrail.h"

#include <algorithm>
#include <filesystem>
#include <utility>

namespace zem {

namespace {

constexpr int WaitAfterChange = 150; // milliseconds, so that a row of changes is checked once

using problems::SourceFile;

/// The result of a check, and what is kept of it for the next one.
struct CheckResult {
    std::shared_ptr<const FoundProblems> found;
    std::shared_ptr<const SourceFile> source;
    std::string notesProblem; // empty when the notes could be read
};

/// The file of a game as it is on the disk; null when it cannot be read or is no game.
std::shared_ptr<const SourceFile> ReadSource(const std::string& path) {
    try {
        auto source = std::make_shared<SourceFile>();
        source->bytes = ReadFile(path);
        GameModel game;
        ReadGame(game, source->bytes, &source->lines);
        source->inspection = InspectFile(source->bytes);
        return source;
    } catch (const KelError&) {
        return nullptr;
    }
}

/// Reads the notes of the game; what is wrong with them is told, and nothing is silenced by them.
GameNotes ReadNotesOf(const std::string& path, std::string& problem) {
    try {
        return LoadNotes(path);
    } catch (const KelError& error) {
        problem = error.Line() == 0 ? error.ProblemWithText()
                                    : "line " + std::to_string(error.Line()) + ": " + error.ProblemWithText();
        return {};
    }
}

/// @param renamed  what the notes have other names for
CheckResult Check(problems::CheckInput input, std::shared_ptr<const SourceFile> source,
                  const std::vector<NameChange>& renamed) {
    const std::string path = input.game.FileName;
    CheckResult result;
    GameNotes notes;
    if (!path.empty()) {
        result.source = source ? std::move(source) : ReadSource(path);
        input.source = result.source;
        input.files = std::make_shared<FolderFiles>(std::filesystem::path(path).parent_path().string());
        input.libraries = std::make_shared<problems::Libraries>(ReadLibraries(input.game, *input.files));
        notes = ReadNotesOf(path, result.notesProblem);
        for (const NameChange& name : renamed)
            RenameInNotes(notes, name.kind, name.from, name.to, *input.commands);
    }
    auto found = std::make_shared<FoundProblems>();
    const CommandLookup& commands = *input.commands;
    found->game = std::make_shared<const problems::CheckedGame>(std::move(input));
    for (problems::Problem& problem : FindProblems(*found->game)) {
        if (!notes.silences.empty() &&
            notes.IsSilenced(problem.id, TellByNames(found->game->Game(), found->game->Owners(), commands,
                                                     problem.place))) {
            ++found->silenced;
            continue;
        }
        ++found->counts[static_cast<std::size_t>(problem.level)];
        found->problems.push_back(std::move(problem));
    }
    result.found = std::move(found);
    return result;
}

} // namespace

ProblemWatch::ProblemWatch(GameSession& session, const CommandLookup& commands, const RenameTrail& trail,
                           QObject* parent)
    : QObject(parent),
      session_(session),
      commands_(commands),
      trail_(trail) {
    wait_.setSingleShot(true);
    wait_.setInterval(WaitAfterChange);
    connect(&wait_, &QTimer::timeout, this, &ProblemWatch::Check);
    connect(&session_, &GameSession::Changed, this, &ProblemWatch::CheckAgain);
    connect(&session_, &GameSession::Replaced, this, &ProblemWatch::ForgetFile);
    connect(&session_, &GameSession::Saved, this, &ProblemWatch::ForgetFile);
    CheckAgain();
}

QString ProblemWatch::NotesPath() const {
    return session_.FileName().isEmpty() ? QString()
                                         : PathToQt(zem::NotesPath(PathFromQt(session_.FileName())));
}

void ProblemWatch::CheckAgain() {
    wait_.start();
}

void ProblemWatch::ForgetFile() {
    source_ = nullptr;
    CheckAgain();
}

std::function<std::shared_ptr<const FoundProblems>()> ProblemWatch::CheckOf(GameModel game) const {
    problems::CheckInput input;
    input.game = std::move(game);
    input.commands = &commands_;
    return [input = std::move(input), source = source_, renamed = trail_.Names()] {
        return zem::Check(input, source, renamed).found;
    };
}

void ProblemWatch::Check() {
    problems::CheckInput input;
    input.game = session_.Game();
    input.commands = &commands_;
    work_.Run(
        *this,
        [input = std::move(input), source = source_, renamed = trail_.Names()](const IsOutdated&) mutable {
            return zem::Check(std::move(input), std::move(source), renamed);
        },
        [this](CheckResult result) {
            found_ = std::move(result.found);
            source_ = std::move(result.source);
            if (toldOfNotes_ != result.notesProblem) {
                toldOfNotes_ = result.notesProblem;
                if (!toldOfNotes_.empty())
                    emit NotesDamaged(QStringLiteral("%1: %2. Nothing is silenced until that is put right.")
                                          .arg(NotesPath(), ToQt(toldOfNotes_)));
            }
            emit Checked();
        });
}

void ProblemWatch::Silence(const problems::Problem& problem, const QString& reason) {
    if (session_.FileName().isEmpty())
        throw CommandError(QStringLiteral("Silenced problems are kept beside the game: save the game first."),
                           QLatin1String(DefaultTitle));
    const NotePlace place =
        TellByNames(found_->game->Game(), found_->game->Owners(), commands_, problem.place);
    try {
        ChangeNotes(PathFromQt(session_.FileName()), [&](GameNotes& notes) {
            notes.SilenceAt(problem.id, place, reason.simplified().toStdString());
        });
    } catch (const KelError& error) {
        throw CommandError(QStringLiteral("%1: %2. The problem was not silenced.")
                               .arg(NotesPath(), ToQt(error.ProblemWithText())),
                           QLatin1String(DefaultTitle));
    }
    CheckAgain();
}

} // namespace zem
