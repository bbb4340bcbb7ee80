#include "commands/ConflictFile.h"

#include "base/KelError.h"
#include "commands/Json.h"
#include "readback/ReadBack.h"
#include "reader/ReadVersion.h"

namespace zem {

namespace {

using merge::Conflict;
using merge::ConflictKind;

constexpr const char* ConflictFormat = "zem-conflicts";

const char* WordForConflict(ConflictKind kind) {
    switch (kind) {
    case ConflictKind::Field:
        return "changed";
    case ConflictKind::DeletedByOurs:
        return "deleted by ours";
    case ConflictKind::DeletedByTheirs:
        return "deleted by theirs";
    case ConflictKind::Moved:
        return "moved";
    case ConflictKind::Order:
        return "order";
    }
    return "";
}

const char* Explain(ConflictKind kind) {
    switch (kind) {
    case ConflictKind::Field:
        return "both changed it; ours is kept";
    case ConflictKind::DeletedByOurs:
        return "ours deleted it and theirs changed it; it stays deleted";
    case ConflictKind::DeletedByTheirs:
        return "theirs deleted it and ours changed it; it is kept";
    case ConflictKind::Moved:
        return "both moved it; it is where ours has it";
    case ConflictKind::Order:
        return "both changed the order; ours is kept";
    }
    return "";
}

} // namespace

std::string Sentence(const Conflict& conflict) {
    std::string words = conflict.where;
    if (conflict.line > 1)
        words += ", line " + std::to_string(conflict.line);
    return words + ": " + Explain(conflict.kind);
}

std::string ConflictFile(const merge::MergeResult& result, const merge::MergeVersions& versions,
                         const std::string& path) {
    Json conflicts = Json::array();
    for (const Conflict& conflict : result.conflicts) {
        Json json = {{"kind", WordForConflict(conflict.kind)}, {"where", JsonText(conflict.where)}};
        json["place"] = conflict.inMerged ? JsonPlace(result.game, *conflict.inMerged) : Json(nullptr);
        if (conflict.line != 0)
            json["line"] = conflict.line;
        json["base"] = JsonText(conflict.base);
        json["ours"] = JsonText(conflict.ours);
        json["theirs"] = JsonText(conflict.theirs);
        conflicts.push_back(std::move(json));
    }
    return ToBytes({{"format", ConflictFormat},
                    {"version", 1},
                    {"game", path},
                    {"conflicts", std::move(conflicts)},
                    {"games",
                     {{"base", JsonText(GameFile(versions.base))},
                      {"ours", JsonText(GameFile(versions.ours))},
                      {"theirs", JsonText(GameFile(versions.theirs))}}}});
}

merge::MergeVersions ReadConflictFile(const std::string& bytes, const Table<ErrorMessage>& messages) {
    const Json json = Json::parse(bytes, nullptr, false);
    if (!json.is_object() || json.value("format", Json()) != ConflictFormat)
        throw KelError("this is no list of the conflicts of a merge");
    const auto games = json.find("games");
    const auto read = [&](const char* version) {
        if (games == json.end() || !games->is_object() || !games->value(version, Json()).is_string())
            throw KelError("the versions that were merged are not in it");
        GameModel game;
        game.ErrorMessages = messages;
        ReadVersion(game, FromUtf8((*games)[version].get<std::string>()));
        return game;
    };
    return {read("base"), read("ours"), read("theirs")};
}

} // namespace zem
