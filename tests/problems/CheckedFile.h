#pragma once

#include "play/Libraries.h"
#include "problems/FindProblems.h"
#include "reader/LoadGame.h"
#include "support/Catalogue.h"
#include "support/Games.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace zem::test {

/// The commands that checks go by.
inline const CommandLookup& ShippedCommands() {
    static const CommandLookup commands(ShippedCatalogue());
    return commands;
}

/// The files of a real folder.
class RealFiles : public problems::FilesBeside {
public:
    explicit RealFiles(std::filesystem::path folder) : folder_(std::move(folder)) {}

    std::optional<std::string> Read(const std::string& name) const override {
        if (!std::filesystem::is_regular_file(folder_ / name))
            return std::nullopt;
        return ReadBytes(folder_ / name);
    }
    std::vector<std::string> Names() const override {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(folder_))
            names.push_back(entry.path().filename().string());
        return names;
    }

private:
    std::filesystem::path folder_;
};

/// What is checked when these bytes are a file in the folder of the samples. Throws KelError when they cannot
/// be read.
inline problems::CheckInput InputOfFile(const std::string& bytes) {
    problems::CheckInput input;
    input.commands = &ShippedCommands();
    play::NameMessages(input.game);
    const auto source = std::make_shared<problems::SourceFile>();
    source->bytes = bytes;
    ReadGame(input.game, bytes, &source->lines);
    source->inspection = InspectFile(bytes);
    input.source = source;
    const auto files = std::make_shared<RealFiles>(ZEM_SAMPLES);
    input.files = files;
    input.libraries = std::make_shared<problems::Libraries>(ReadLibraries(input.game, *files));
    return input;
}

/// Problems as they can be compared: places move when something changes, what is said does not.
using Told = std::multiset<std::pair<std::string, std::string>>;

inline Told ToldOf(const std::vector<problems::Problem>& problems) {
    Told told;
    for (const problems::Problem& problem : problems)
        told.emplace(problem.id, problem.text);
    return told;
}

/// The games of the samples by their names.
inline std::map<std::string, std::string> SampleFiles() {
    std::map<std::string, std::string> samples;
    for (const std::filesystem::path& path : FilesIn(ZEM_SAMPLES))
        samples.emplace(path.stem().string(), ReadBytes(path));
    return samples;
}

} // namespace zem::test
