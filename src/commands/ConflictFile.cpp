#include "commands/ConflictFile.h"

#include "commands/Json.h"

namespace zem {

namespace {

using merge::Conflict;
using merge::ConflictKind;

const char* WordFor(ConflictKind kind) {
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

std::string ConflictFile(const merge::MergeResult& result, const std::string& path) {
    Json conflicts = Json::array();
    for (const Conflict& conflict : result.conflicts) {
        Json json = {{"kind", WordFor(conflict.kind)}, {"where", JsonText(conflict.where)}};
        json["place"] = conflict.inMerged ? JsonPlace(result.game, *conflict.inMerged) : Json(nullptr);
        if (conflict.line != 0)
            json["line"] = conflict.line;
        json["base"] = JsonText(conflict.base);
        json["ours"] = JsonText(conflict.ours);
        json["theirs"] = JsonText(conflict.theirs);
        conflicts.push_back(std::move(json));
    }
    return ToBytes(
        {{"format", "zem-conflicts"}, {"version", 1}, {"game", path}, {"conflicts", std::move(conflicts)}});
}

} // namespace zem
