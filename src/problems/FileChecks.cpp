// The files that a game wants to find beside it.
#include "base/LineText.h"
#include "play/FileNames.h"
#include "play/Libraries.h"
#include "problems/Checks.h"
#include "problems/Fixes.h"

#include <algorithm>

namespace zem::problems {

namespace {

/// The last part of a path.
std::string_view FileNameOf(std::string_view path) {
    const std::size_t slash = path.find_last_of("/\\:");
    return slash == std::string_view::npos ? path : path.substr(slash + 1);
}

struct Folder {
    std::vector<std::string> all;
    NameSet names; // views of `all`

    explicit Folder(const FilesBeside& files) : all(files.Names()) {
        for (const std::string& name : all)
            names.Add(name);
    }
};

void CheckFile(const Folder& folder, const Place& place, std::string_view name, Findings& findings) {
    if (name.find_first_of("#%") != std::string_view::npos || folder.names.Has(name))
        return;
    if (!play::IsPlainFileName(name)) {
        const std::string file(FileNameOf(name));
        Problem& problem = findings.Add("F03", place,
                                        "A game finds files beside it only, so " + QuoteShortly(name) +
                                            " is not found, here or on the player's machine.");
        if (play::IsPlainFileName(file))
            problem.fixes = {ReplaceBytes(ChangeTo(file), place, name, file)};
        return;
    }
    const std::string_view other = folder.names.InOtherCapitals(name);
    if (!other.empty()) {
        Problem& problem = findings.Add("F02", place,
                                        "The file is called " + QuoteShortly(other) +
                                            ", and on most machines capitals count.");
        problem.fixes = {ReplaceBytes(ChangeTo(other), place, name, std::string(other))};
        problem.fixes.front().needsNoChoice = true;
        return;
    }
    Problem& problem =
        findings.Add("F01", place, "There is no file " + QuoteShortly(name) + " beside the game.");
    const std::string_view nearest = folder.names.Nearest(name);
    if (!nearest.empty())
        problem.fixes = {ReplaceBytes(ChangeTo(nearest), place, name, std::string(nearest))};
}

void FindFiles(const CheckedGame& game, Findings& findings) {
    if (game.Files() == nullptr)
        return;
    const Folder folder(*game.Files());
    for (const std::string_view keyword : {"picture", "sound", "music"})
        for (const CheckedCall* call : game.CallsOf(keyword))
            if (!call->parts.empty() && !call->Part(0).empty())
                CheckFile(folder, call->At(0), call->Part(0), findings);
    int entry = 0;
    for (const std::string& library : game.Game().Includes) {
        ++entry;
        if (library == play::BuiltInVerbs || folder.names.Has(library))
            continue;
        const Place place = Place::Of({{FieldId::GameIncludes, entry}});
        Problem& problem = findings.Add("F04", place,
                                        "The library " + QuoteShortly(library) +
                                            " is not beside the game, so players have nothing of it.");
        std::string_view nearest = folder.names.InOtherCapitals(library);
        if (nearest.empty())
            nearest = folder.names.Nearest(library);
        if (!nearest.empty())
            problem.fixes = {SetField(ChangeTo(nearest), place, library, std::string(nearest))};
    }
}

} // namespace

std::span<const Check> FileChecks() {
    static constexpr Check Rows[] = {
        {"F01", Level::Warning, "Files that are missing", FindFiles},
        {"F02", Level::Warning, "Files with other capitals", FindFiles},
        {"F03", Level::Warning, "Files of this machine", FindFiles},
        {"F04", Level::Hint, "Libraries that are missing", FindFiles},
    };
    return Rows;
}

} // namespace zem::problems
