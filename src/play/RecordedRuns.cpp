#include "play/RecordedRuns.h"

#include "base/LineText.h"
#include "base/TextFile.h"

#include <charconv>

namespace zem::play {

namespace {

constexpr std::string_view Indent = "  ";

/// "run NAME seed N"; nothing for any other line.
std::optional<RecordedRun> ReadHead(std::string_view line) {
    const std::size_t seed = line.rfind(" seed ");
    if (!line.starts_with("run ") || seed == std::string_view::npos || seed < 4)
        return std::nullopt;
    RecordedRun run;
    run.name = Trim(line.substr(4, seed - 4));
    const std::string_view number = Trim(line.substr(seed + 6));
    const auto [stop, error] = std::from_chars(number.data(), number.data() + number.size(), run.seed);
    if (run.name.empty() || error != std::errc() || stop != number.data() + number.size())
        return std::nullopt;
    return run;
}

/// Takes the empty line off that stands before a prompt; false when there is none.
bool DropPromptLine(std::string& story) {
    const bool hasOne = story == "\n" || story.ends_with("\n\n");
    if (hasOne)
        story.pop_back();
    return hasOne;
}

std::string WithoutEmptyEnd(std::string story) {
    while (story == "\n" || story.ends_with("\n\n"))
        story.pop_back();
    return story;
}

std::string& LastStory(RecordedRun& run) {
    return run.steps.empty() ? run.beginning : run.steps.back().story;
}

void WriteStory(std::string& text, std::string_view story) {
    while (!story.empty()) {
        const std::string_view line = TakeLine(story);
        text.append(line.empty() ? "" : Indent).append(line).append("\n");
    }
}

} // namespace

RecordedRuns ReadRuns(std::string_view text) {
    RecordedRuns read;
    std::size_t number = 0;
    if (const std::string_view mark = "\xEF\xBB\xBF"; text.starts_with(mark)) // which some editors add
        text.remove_prefix(mark.size());
    const auto fail = [&](const char* problem) {
        read.problem = problem;
        read.problemLine = number;
        return read;
    };
    while (!text.empty()) {
        const std::string_view line = TakeLine(text);
        ++number;
        if (auto run = ReadHead(line)) {
            run->number = number;
            read.runs.push_back(*std::move(run));
            continue;
        }
        if (read.runs.empty()) {
            if (!Trim(line).empty())
                return fail("a run begins with \"run NAME seed N\"");
            continue;
        }
        RecordedRun& run = read.runs.back();
        if (line.empty() || line.starts_with(Indent)) {
            LastStory(run).append(line.empty() ? line : line.substr(Indent.size())).append("\n");
            continue;
        }
        std::optional<InputLine> input = ReadInputLine(line, number);
        if (!input)
            return fail("a line begins with \">\", \"<\", \"@\" and a number, or two blanks");
        const bool isAtPrompt = input->kind != InputLine::Answer && DropPromptLine(LastStory(run));
        run.steps.push_back({*std::move(input), isAtPrompt, {}});
    }
    for (RecordedRun& run : read.runs)
        LastStory(run) = WithoutEmptyEnd(std::move(LastStory(run)));
    return read;
}

std::string WriteRuns(const std::vector<RecordedRun>& runs) {
    std::string text;
    for (const RecordedRun& run : runs) {
        if (!text.empty())
            text += "\n";
        text += "run " + run.name + " seed " + std::to_string(run.seed) + "\n";
        WriteStory(text, run.beginning);
        for (const RunStep& step : run.steps) {
            text += (step.isAtPrompt ? "\n" : "") + step.input.written + "\n";
            WriteStory(text, step.story);
        }
    }
    return text;
}

RunResult PlayRun(std::shared_ptr<const World> world, const RecordedRun& run,
                  const std::function<bool()>& goesOn, Coverage* coverage) {
    Session session(std::move(world), run.seed);
    session.SetCoverage(coverage);
    TranscriptPlayer player(session);
    RunResult result;
    result.played = {run.name, run.seed, player.Begin(), {}, run.number};
    for (const RunStep& step : run.steps) {
        if (goesOn && !goesOn()) {
            result.isCutOff = true;
            break;
        }
        const std::optional<std::string> told = player.Play(step.input);
        if (!told) {
            result.problem = player.Problem();
            break;
        }
        // What is told begins with the line itself, and an empty line where it was typed at the prompt.
        const std::size_t begin = told->find(step.input.written) + step.input.written.size() + 1;
        result.played.steps.push_back({step.input, told->front() == '\n', told->substr(begin)});
    }
    if (result.played.steps.size() == run.steps.size())
        LastStory(result.played) = WithoutEmptyEnd(std::move(LastStory(result.played)));
    result.warnings = player.Warnings();
    result.need = session.Needs();
    return result;
}

std::optional<std::size_t> FirstDifference(const RecordedRun& approved, const RecordedRun& played) {
    if (approved.beginning != played.beginning)
        return 0;
    for (std::size_t k = 0; k < approved.steps.size(); ++k)
        if (k >= played.steps.size() || approved.steps[k].story != played.steps[k].story)
            return k + 1;
    return std::nullopt;
}

} // namespace zem::play
