#include "play/RunDifferences.h"

#include "base/TextFile.h"

#include <algorithm>

namespace zem::play {

namespace {

std::vector<std::string> LinesOf(std::string_view story) {
    std::vector<std::string> lines;
    while (!story.empty())
        lines.emplace_back(TakeLine(story));
    return lines;
}

/// @param line  of the file in which the approved story begins
StoryDifference Compare(std::size_t line, std::string after, std::string_view approved,
                        std::string_view printed) {
    StoryDifference difference{line, std::move(after), LinesOf(approved), LinesOf(printed)};
    std::vector<std::string>& a = difference.approved;
    std::vector<std::string>& b = difference.printed;
    while (!a.empty() && !b.empty() && a.back() == b.back()) {
        a.pop_back();
        b.pop_back();
    }
    const auto same = std::mismatch(a.begin(), a.end(), b.begin(), b.end()).first - a.begin();
    a.erase(a.begin(), a.begin() + same);
    b.erase(b.begin(), b.begin() + same);
    difference.line += static_cast<std::size_t>(same);
    return difference;
}

} // namespace

std::vector<StoryDifference> CompareRuns(const RecordedRun& approved, const RecordedRun& played) {
    std::vector<StoryDifference> differences;
    if (approved.beginning != played.beginning)
        differences.push_back(Compare(approved.number + 1, {}, approved.beginning, played.beginning));
    const std::size_t count = std::min(approved.steps.size(), played.steps.size());
    for (std::size_t k = 0; k < count; ++k) {
        const RunStep& step = approved.steps[k];
        if (step.story != played.steps[k].story)
            differences.push_back(
                Compare(step.input.number + 1, step.input.written, step.story, played.steps[k].story));
    }
    return differences;
}

std::size_t FirstDifferentCharacter(std::string_view a, std::string_view b) {
    std::size_t characters = 0;
    std::size_t begin = 0; // of the character in which they differ or which comes next
    for (std::size_t k = 0; k < a.size() && k < b.size() && a[k] == b[k]; ++k)
        begin = k + 1;
    const auto isInside = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; };
    while (begin > 0 && begin < a.size() && isInside(a[begin]))
        --begin;
    for (std::size_t k = 0; k < begin; ++k)
        characters += isInside(a[k]) ? 0 : 1;
    return characters;
}

} // namespace zem::play
