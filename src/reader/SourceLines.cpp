#include "reader/SourceLines.h"

#include "base/LineText.h"

#include <algorithm>
#include <charconv>
#include <numeric>
#include <string_view>

namespace zem {

namespace {

std::uint32_t Pack(const PlaceStep& step) {
    return static_cast<std::uint32_t>(step.list) << 16U | static_cast<std::uint32_t>(step.entry);
}

std::uint64_t PackInner(const Place& place) {
    return std::uint64_t{Pack(place.steps[1])} << 32U | std::uint64_t{Pack(place.steps[2])} << 8U |
           static_cast<std::uint64_t>(place.field);
}

/// Fields that hold what several lines of the file held, each in a line of its own.
bool HasLines(FieldId field) {
    return field == FieldId::ProcedureScript || field == FieldId::TextText ||
           field == FieldId::ThingMiscTags || field == FieldId::RoomMiscTags ||
           field == FieldId::GameMiscTags || field == FieldId::GameUnknownBlocks;
}

} // namespace

void SourceLines::Note(const Place& place, std::size_t line) {
    const std::uint32_t record = Pack(place.steps[0]);
    if (runs_.empty() || runs_.back().record != record)
        runs_.push_back({record, static_cast<std::uint32_t>(keys_.size())});
    keys_.push_back(PackInner(place));
    lines_.push_back(static_cast<std::uint32_t>(line));
}

void SourceLines::Finish() {
    sorted_.resize(runs_.size());
    std::iota(sorted_.begin(), sorted_.end(), 0U);
    std::stable_sort(sorted_.begin(), sorted_.end(),
                     [&](std::uint32_t a, std::uint32_t b) { return runs_[a].record < runs_[b].record; });
}

std::vector<std::size_t> SourceLines::Noted(const Place& place) const {
    std::vector<std::size_t> lines;
    const std::uint32_t record = Pack(place.steps[0]);
    const std::uint64_t key = PackInner(place);
    auto run =
        std::lower_bound(sorted_.begin(), sorted_.end(), record,
                         [&](std::uint32_t a, std::uint32_t wanted) { return runs_[a].record < wanted; });
    for (; run != sorted_.end() && runs_[*run].record == record; ++run) {
        const std::size_t past = *run + 1 < runs_.size() ? runs_[*run + 1].first : keys_.size();
        for (std::size_t note = runs_[*run].first; note < past; ++note)
            if (keys_[note] == key)
                lines.push_back(lines_[note]);
    }
    return lines;
}

std::size_t SourceLines::LineOfFieldOrRecord(Place place, std::size_t lineInText) const {
    std::vector<std::size_t> lines = Noted(place);
    if (!lines.empty())
        return HasLines(place.field) ? lines[std::min(lineInText, lines.size()) - 1] : lines.back();
    if (place.field != FieldId::None) {
        place.field = FieldId::None;
        return LineOfFieldOrRecord(place, 1);
    }
    const std::size_t depth = place.Depth();
    if (depth == 0)
        return 0;
    place.steps[depth - 1] = {};
    return LineOfFieldOrRecord(place, 1);
}

/// The procedure that was made of braces and is all that the script calls; 0 for other scripts.
int SourceLines::MadeProcedure(const GameModel& game, const std::string& script) const {
    const std::string start = std::string("do <") + InternalProcedure + ' ';
    const std::string_view text = Trim(script);
    if (firstMade_ == 0 || !text.starts_with(start) || text.find('>') != text.size() - 1)
        return 0;
    int number = 0;
    std::from_chars(text.data() + start.size(), text.data() + text.size(), number);
    const int entry = firstMade_ + (number - firstNumber_);
    const bool isMade = entry >= firstMade_ && entry <= game.Procedures.Count() &&
                        text.substr(4, text.size() - 5) == game.Procedures[entry].Name;
    return isMade ? entry : 0;
}

std::size_t SourceLines::LineOf(const GameModel& game, const Place& place) const {
    const std::optional<ResolvedPlace> found = Resolve(game, place);
    if (!found)
        return 0;
    if (place.field != FieldId::None && found->text != nullptr) {
        if (const int made = MadeProcedure(game, *found->text); made != 0)
            return LineOf(game, Place::Of({{FieldId::GameProcedures, made}}, FieldId::ProcedureScript));
    }
    const int line = found->text == nullptr ? 1 : LineOfByte(*found->text, place.bytes.begin);
    return LineOfFieldOrRecord(place, static_cast<std::size_t>(line));
}

} // namespace zem
