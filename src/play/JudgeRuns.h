#pragma once

#include "play/Coverage.h"
#include "play/RecordedRuns.h"
#include "play/RunDifferences.h"

#include <array>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// All recorded runs of a game, played in the game as it is now.
namespace zem::play {

enum class RunState : std::uint8_t {
    Approved,      // it is told as its author approved it
    Changed,       // it is told otherwise
    New,           // it has lines, and nothing was approved yet of what the game says to them
    CannotBePlayed // a line of it is not asked for any more, or the game cannot begin
};
inline constexpr std::size_t RunStateCount = 4;

struct JudgedRun {
    RecordedRun approved;
    RunState state = RunState::Approved;
    RunResult result;
    std::vector<StoryDifference> differences;
};

struct JudgedRuns {
    std::shared_ptr<const World> world;
    std::shared_ptr<const Coverage> coverage; // of all runs together
    std::vector<JudgedRun> runs;              // in the order of the file
    std::array<std::size_t, RunStateCount> counts{};

    std::size_t CountOf(RunState state) const { return counts[static_cast<std::size_t>(state)]; }
};

/// @param goesOn  asked before each line; false ends the work, and what is given then is not whole
JudgedRuns JudgeRuns(std::shared_ptr<const World> world, std::vector<RecordedRun> runs,
                     const std::function<bool()>& goesOn = {});

/// Whether nothing of the story was ever approved.
bool HasNoStory(const RecordedRun& run);

/// A point of a run: after so many of its lines, 0 for the beginning.
struct RunPoint {
    std::size_t run = 0;
    std::size_t steps = 0;
};

/// The run that reaches something with the fewest lines, and after how many; nothing where none does.
/// @param part  a command or an "if" line with its answer, or the record of a room, thing or text
std::optional<RunPoint> ShortestWayTo(const std::shared_ptr<const World>& world,
                                      const std::vector<RecordedRun>& runs, const Hit& part,
                                      const std::function<bool()>& goesOn = {});

/// The first lines of a run, with what is told to them.
RecordedRun CutRun(const RecordedRun& run, std::size_t steps);

/// A run of lines that were played, told as the game tells it now. Seconds that change nothing are left out,
/// and where chance changes nothing the seed is 1, so that runs of one beginning are alike.
/// @param lines  with their kind and text; what they are written as is made here
RunResult MakeRun(const std::shared_ptr<const World>& world, const std::string& name, std::uint64_t seed,
                  const std::vector<InputLine>& lines);

/// The name, with a number behind it where a run has it already; what a file of runs cannot hold is taken
/// out of it.
std::string FreeRunName(const std::vector<RecordedRun>& runs, const std::string& name);

} // namespace zem::play
