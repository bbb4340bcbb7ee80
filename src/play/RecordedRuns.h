#pragma once

#include "play/Transcript.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// Runs of a game that its author approved, as they stand beside it in NAME.kel.tests. The file is UTF-8:
/// "run NAME seed N" begins a run; then come its lines of input, "> line", "< answer" and "@ seconds", with
/// the story between them indented by two blanks.
namespace zem::play {

class Coverage;

/// A line of input and the story that follows it.
struct RunStep {
    InputLine input;
    bool isAtPrompt = true; // rather than at an open question; an empty line stands before a prompt
    std::string story;      // lines that end in "\n"
};

struct RecordedRun {
    std::string name;
    std::uint64_t seed = 1;
    std::string beginning; // the story before the first line
    std::vector<RunStep> steps;
    std::size_t number = 0; // of its first line in the file, from 1
};

struct RecordedRuns {
    std::vector<RecordedRun> runs;
    std::string problem;         // with the file, in plain words; empty when it is read whole
    std::size_t problemLine = 0; // from 1
};

RecordedRuns ReadRuns(std::string_view text);

/// The runs as a file holds them.
std::string WriteRuns(const std::vector<RecordedRun>& runs);

/// What playing a run again came to.
struct RunResult {
    RecordedRun played;    // with the story as it is now, as far as it went
    std::string problem;   // a line that was not asked for; empty when all were
    bool isCutOff = false; // the time was over
    std::vector<Warning> warnings;
    Need need = Need::Line; // what the game waits for at the end
};

/// @param goesOn    asked before each line; false ends the run there. Runs have no clock of their own
/// @param coverage  counts what runs, if given
RunResult PlayRun(std::shared_ptr<const World> world, const RecordedRun& run,
                  const std::function<bool()>& goesOn = {}, Coverage* coverage = nullptr);

/// The number of the first step whose story differs, 0 for the beginning; nothing when the runs are alike.
std::optional<std::size_t> FirstDifference(const RecordedRun& approved, const RecordedRun& played);

} // namespace zem::play
