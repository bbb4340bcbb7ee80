#include "commands/FollowRename.h"

#include "base/KelError.h"
#include "base/TextFile.h"
#include "commands/GameFolder.h"
#include "files/ReplaceFile.h"
#include "game/NotePlaces.h"
#include "play/RunsAfterRename.h"
#include "writer/OutputFile.h"

#include <filesystem>
#include <optional>
#include <sstream>
#include <utility>

namespace zem {

void FollowInNotes(const std::string& gamePath, const std::vector<NameChange>& names,
                   const CommandLookup& commands) {
    ChangeNotes(gamePath, [&](GameNotes& notes) {
        for (const NameChange& name : names)
            RenameInNotes(notes, name.kind, name.from, name.to, commands);
    });
}

std::string RunsPath(const std::string& gamePath) {
    return gamePath + ".tests";
}

std::vector<std::string> FollowInRuns(const std::string& gamePath, const std::vector<NameChange>& names,
                                      const std::function<bool()>& goesOn) {
    const std::string path = RunsPath(gamePath);
    std::error_code error;
    if (!std::filesystem::exists(path, error))
        return {};
    const play::RecordedRuns read = play::ReadRuns(ReadFile(path));
    if (!read.problem.empty())
        throw KelError(read.problem, read.problemLine, "");
    std::ostringstream told;
    std::optional<play::GameFiles> files = play::LoadGameFiles(gamePath, told);
    if (!files)
        throw KelError("the game cannot be played");
    const auto world = play::World::Compile(*std::move(files));
    const play::RunsAfterRename after = play::RenameInRuns(read.runs, world, names, goesOn);
    if (after.isChanged)
        ReplaceFile(path, [&](const std::string& file) {
            OutputFile output(file);
            output.Write(play::WriteRuns(after.runs));
            output.Close();
        });
    return after.astray;
}

} // namespace zem
