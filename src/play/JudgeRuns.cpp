#include "play/JudgeRuns.h"

#include "base/LineText.h"
#include "base/TextEncoding.h"
#include "play/Transcript.h"

#include <algorithm>
#include <utility>

namespace zem::play {

namespace {

RunState StateOf(const JudgedRun& run) {
    if (!run.result.problem.empty())
        return RunState::CannotBePlayed;
    if (HasNoStory(run.approved))
        return RunState::New;
    return run.differences.empty() ? RunState::Approved : RunState::Changed;
}

/// A line as a file of runs has it.
std::string WrittenLine(const InputLine& line) {
    switch (line.kind) {
    case InputLine::Seconds:
        return "@ " + std::to_string(line.seconds);
    case InputLine::Answer:
        return line.text.empty() ? "<" : "< " + ToUtf8(line.text);
    default:
        return "> " + ToUtf8(line.text);
    }
}

RecordedRun WithoutSeconds(RecordedRun run) {
    std::erase_if(run.steps, [](const RunStep& step) { return step.input.kind == InputLine::Seconds; });
    return run;
}

/// Whether both tell the same to the same lines. Where only one has seconds they must tell nothing.
bool TellTheSame(const RunResult& a, const RunResult& b) {
    if (a.problem != b.problem || a.played.beginning != b.played.beginning)
        return false;
    const bool isOneForOne = a.played.steps.size() == b.played.steps.size();
    const auto tellsInTime = [&](const RunStep& step) {
        return !isOneForOne && step.input.kind == InputLine::Seconds && !Trim(step.story).empty();
    };
    if (std::any_of(a.played.steps.begin(), a.played.steps.end(), tellsInTime))
        return false;
    const RecordedRun left = isOneForOne ? a.played : WithoutSeconds(a.played);
    const RecordedRun right = isOneForOne ? b.played : WithoutSeconds(b.played);
    return std::equal(left.steps.begin(), left.steps.end(), right.steps.begin(), right.steps.end(),
                      [](const RunStep& x, const RunStep& y) { return x.story == y.story; });
}

} // namespace

bool HasNoStory(const RecordedRun& run) {
    return run.beginning.empty() && std::all_of(run.steps.begin(), run.steps.end(),
                                                [](const RunStep& step) { return step.story.empty(); });
}

JudgedRuns JudgeRuns(std::shared_ptr<const World> world, std::vector<RecordedRun> runs,
                     const std::function<bool()>& goesOn) {
    JudgedRuns judged;
    auto coverage = std::make_shared<Coverage>(world);
    const std::string why = Session(world, 1).WhyItCannotBegin();
    for (RecordedRun& run : runs) {
        JudgedRun one;
        one.approved = std::move(run);
        if (why.empty()) {
            one.result = PlayRun(world, one.approved, goesOn, coverage.get());
            one.differences = CompareRuns(one.approved, one.result.played);
        } else {
            one.result.problem = why;
        }
        one.state = StateOf(one);
        ++judged.counts[static_cast<std::size_t>(one.state)];
        judged.runs.push_back(std::move(one));
    }
    judged.world = std::move(world);
    judged.coverage = std::move(coverage);
    return judged;
}

std::optional<RunPoint> ShortestWayTo(const std::shared_ptr<const World>& world,
                                      const std::vector<RecordedRun>& runs, const Hit& part,
                                      const std::function<bool()>& goesOn) {
    std::optional<RunPoint> shortest;
    if (!Session(world, 1).WhyItCannotBegin().empty())
        return shortest;
    for (std::size_t k = 0; k < runs.size(); ++k) {
        Coverage coverage(world);
        std::size_t lines = 0; // that were begun
        const auto isWanted = [&] {
            const bool isReached = coverage.HitsOf(part) > 0;
            if (isReached || (shortest && lines >= shortest->steps) || (goesOn && !goesOn()))
                return false;
            ++lines;
            return true;
        };
        const RunResult result = PlayRun(world, runs[k], isWanted, &coverage);
        const std::size_t steps = result.played.steps.size();
        if (coverage.HitsOf(part) > 0 && (!shortest || steps < shortest->steps))
            shortest = RunPoint{k, steps};
    }
    return shortest;
}

RecordedRun CutRun(const RecordedRun& run, std::size_t steps) {
    RecordedRun cut = run;
    if (steps < cut.steps.size())
        cut.steps.resize(steps);
    return cut;
}

RunResult MakeRun(const std::shared_ptr<const World>& world, const std::string& name, std::uint64_t seed,
                  const std::vector<InputLine>& lines) {
    RecordedRun run;
    run.name = name;
    run.seed = seed;
    for (const InputLine& line : lines) {
        InputLine written = line;
        written.text = Trim(line.text); // a file of runs keeps no blanks around it
        written.written = WrittenLine(written);
        run.steps.push_back({std::move(written), line.kind != InputLine::Answer, {}});
    }
    RunResult result = PlayRun(world, run);
    RecordedRun plain = run;
    plain.seed = 1;
    if (RunResult simpler = PlayRun(world, plain); TellTheSame(result, simpler)) {
        result = std::move(simpler);
        run.seed = 1;
    }
    if (RunResult simpler = PlayRun(world, WithoutSeconds(run)); TellTheSame(result, simpler))
        result = std::move(simpler);
    return result;
}

std::string FreeRunName(const std::vector<RecordedRun>& runs, const std::string& name) {
    std::string plain;
    for (const char letter : name)
        plain += static_cast<unsigned char>(letter) < 0x20U ? ' ' : letter;
    plain = Trim(plain);
    if (plain.empty())
        plain = "run";
    const auto isTaken = [&](const std::string& wanted) {
        return std::any_of(runs.begin(), runs.end(),
                           [&](const RecordedRun& run) { return run.name == wanted; });
    };
    std::string free = plain;
    for (int number = 2; isTaken(free); ++number)
        free = plain + " " + std::to_string(number);
    return free;
}

} // namespace zem::play
