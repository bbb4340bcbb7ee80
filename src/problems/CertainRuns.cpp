#include "problems/CertainRuns.h"

#include "problems/ScriptFlow.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace zem::problems {

namespace {

/// Whether the player is asked something, so that going round takes as long as he likes.
bool Waits(const CheckedCall& call) {
    return Is(call, "ask") || Is(call, "key") || Is(call, "choose") || Is(call, "pause");
}

/// Which procedures run which others for certain, before they wait for the player.
class CertainRuns {
public:
    struct Run {
        const CheckedCall* call = nullptr;
        std::size_t procedure = 0; // that is run
    };

    CertainRuns(const CheckedGame& game, const ScriptFlow& flow) {
        for (const CheckedScript& script : game.Scripts())
            if (script.place.field == FieldId::ProcedureScript &&
                flow.Procedure(game.Game().Procedures[script.place.steps[0].entry].Name) == &script) {
                numbers_.emplace(&script, scripts_.size());
                scripts_.push_back(&script);
            }
        for (const CheckedScript* script : scripts_)
            runs_.push_back(RunsOf(*script, flow));
        FindRings();
    }

    /// The calls by which a procedure comes back to itself, one for each that does.
    std::vector<const CheckedCall*> WaysBack() const {
        std::vector<const CheckedCall*> ways;
        for (std::size_t k = 0; k < runs_.size(); ++k) {
            const auto way = std::find_if(runs_[k].begin(), runs_[k].end(),
                                          [&](const Run& run) { return rings_[run.procedure] == rings_[k]; });
            if (way != runs_[k].end())
                ways.push_back(way->call);
        }
        return ways;
    }

private:
    std::vector<Run> RunsOf(const CheckedScript& script, const ScriptFlow& flow) const {
        std::vector<Run> runs;
        for (const CheckedCall* call : CertainCalls(script)) {
            if (Waits(*call))
                break;
            const CheckedScript* next = Is(*call, "do")       ? flow.Procedure(call->Part(0))
                                        : Is(*call, "repeat") ? flow.Procedure(call->Part(1))
                                                              : nullptr;
            if (next != nullptr)
                runs.push_back({call, numbers_.at(next)});
        }
        return runs;
    }

    /// The procedures in the order in which all that they run has been seen. With no recursion: a game may
    /// have a chain of tens of thousands.
    std::vector<std::size_t> InOrderOfEnd() const {
        std::vector<std::size_t> order;
        std::vector<bool> isSeen(runs_.size());
        for (std::size_t root = 0; root < runs_.size(); ++root) {
            std::vector<std::pair<std::size_t, std::size_t>> path; // procedure, runs of it that were followed
            if (!isSeen[root])
                path.emplace_back(root, 0);
            isSeen[root] = true;
            while (!path.empty()) {
                auto& [procedure, followed] = path.back();
                if (followed == runs_[procedure].size()) {
                    order.push_back(procedure);
                    path.pop_back();
                    continue;
                }
                const std::size_t next = runs_[procedure][followed++].procedure;
                if (!isSeen[next])
                    path.emplace_back(next, 0);
                isSeen[next] = true;
            }
        }
        return order;
    }

    /// Gives procedures that all come back to one another the same number (strongly connected components,
    /// by Kosaraju's method).
    void FindRings() {
        std::vector<std::vector<std::size_t>> runBy(runs_.size());
        for (std::size_t k = 0; k < runs_.size(); ++k)
            for (const Run& run : runs_[k])
                runBy[run.procedure].push_back(k);
        const std::vector<std::size_t> order = InOrderOfEnd();
        rings_.assign(runs_.size(), runs_.size()); // in none yet
        for (auto root = order.rbegin(); root != order.rend(); ++root) {
            std::vector<std::size_t> waiting = {*root};
            while (!waiting.empty()) {
                const std::size_t procedure = waiting.back();
                waiting.pop_back();
                if (rings_[procedure] != runs_.size())
                    continue;
                rings_[procedure] = *root;
                for (const std::size_t caller : runBy[procedure])
                    if (rings_[caller] == runs_.size())
                        waiting.push_back(caller);
            }
        }
    }

    std::vector<const CheckedScript*> scripts_;
    std::unordered_map<const CheckedScript*, std::size_t> numbers_; // of the scripts
    std::vector<std::vector<Run>> runs_;                            // of each
    std::vector<std::size_t> rings_;                                // of each; the number of one in the ring
};

} // namespace

std::vector<const CheckedCall*> CertainCalls(const CheckedScript& script) {
    std::vector<const CheckedCall*> certain;
    for (const CheckedCall& call : script.calls) {
        if (!IsUnconditional(call))
            continue;
        certain.push_back(&call);
        if (EndsGame(call))
            break;
    }
    return certain;
}

std::vector<const CheckedCall*> CallsThatComeBack(const CheckedGame& game) {
    return CertainRuns(game, game.Flow()).WaysBack();
}

} // namespace zem::problems
