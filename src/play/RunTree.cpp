#include "play/RunTree.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace zem::play {

namespace {

bool IsSameLine(const InputLine& a, const InputLine& b) {
    return a.kind == b.kind && a.text == b.text && a.seconds == b.seconds;
}

class TreeMaker {
public:
    explicit TreeMaker(const std::vector<RecordedRun>& runs) : runs_(runs) {}

    /// The ways on after so many lines that all of these runs have.
    std::vector<RunBranch> BranchesOf(const std::vector<std::size_t>& runs, std::size_t at) const {
        std::vector<std::vector<std::size_t>> groups;
        for (const std::size_t run : runs) {
            const auto group = std::find_if(groups.begin(), groups.end(), [&](const auto& other) {
                return GoesAlong(other.front(), run, at);
            });
            if (group == groups.end())
                groups.push_back({run});
            else
                group->push_back(run);
        }
        std::vector<RunBranch> branches;
        for (const std::vector<std::size_t>& group : groups)
            branches.push_back(MakeBranch(group, at));
        return branches;
    }

private:
    const std::vector<RunStep>& StepsOf(std::size_t run) const { return runs_[run].steps; }

    /// Whether the next line of both is the same; before the first line, whether they begin alike.
    bool GoesAlong(std::size_t a, std::size_t b, std::size_t at) const {
        const bool isOneSeed = runs_[a].seed == runs_[b].seed;
        if (at == 0 && !isOneSeed && runs_[a].beginning != runs_[b].beginning)
            return false;
        if (at >= StepsOf(a).size() || at >= StepsOf(b).size())
            return false;
        const RunStep& x = StepsOf(a)[at];
        const RunStep& y = StepsOf(b)[at];
        return IsSameLine(x.input, y.input) && (isOneSeed || x.story == y.story);
    }

    RunBranch MakeBranch(const std::vector<std::size_t>& group, std::size_t at) const {
        RunBranch branch;
        branch.run = group.front();
        branch.begin = at;
        branch.end = at;
        const auto goOn = [&](std::size_t run) { return GoesAlong(group.front(), run, branch.end); };
        while (branch.end < StepsOf(group.front()).size() && std::all_of(group.begin(), group.end(), goOn))
            ++branch.end;
        std::vector<std::size_t> further;
        for (const std::size_t run : group)
            (StepsOf(run).size() <= branch.end ? branch.ending : further).push_back(run);
        branch.branches = BranchesOf(further, branch.end);
        return branch;
    }

    const std::vector<RecordedRun>& runs_;
};

} // namespace

std::vector<RunBranch> TreeOfRuns(const std::vector<RecordedRun>& runs) {
    std::vector<std::size_t> all(runs.size());
    std::iota(all.begin(), all.end(), std::size_t{0});
    return TreeMaker(runs).BranchesOf(all, 0);
}

} // namespace zem::play
