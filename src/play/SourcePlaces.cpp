#include "play/SourcePlaces.h"

#include <algorithm>
#include <utility>

namespace zem::play {

namespace {

/// The bytes of a line of a text, the whole text where it has but one.
TextRange BytesOfLine(const std::string& text, int line) {
    std::size_t begin = 0;
    for (int k = 1; k < line; ++k) {
        begin = text.find("\r\n", begin);
        if (begin == std::string::npos)
            return {};
        begin += 2;
    }
    const std::size_t end = std::min(text.find("\r\n", begin), text.size());
    return begin == 0 && end == text.size() ? TextRange() : TextRange{begin, end};
}

} // namespace

SourcePlaces::SourcePlaces(std::shared_ptr<const World> world) : places_(std::move(world)), owners_(Game()) {}

std::optional<Place> SourcePlaces::PlaceOf(const Source& source) const {
    const bool isLine = source.line != 0 || source.field == ScriptField::Choice;
    std::optional<Place> place = isLine ? places_.PlaceOf(source) : std::nullopt;
    if (!place)
        return places_.RecordOf(source);
    const std::string* text = Resolve(Game(), *place)->text;
    if (text != nullptr && source.field != ScriptField::TimerAction)
        place->bytes = BytesOfLine(*text, source.line);
    return place;
}

std::string SourcePlaces::Describe(const Source& source) const {
    const std::optional<Place> place = PlaceOf(source);
    return place ? owners_.Describe(*place) : std::string();
}

std::size_t SourcePlaces::LineOf(const Source& source, const SourceLines& lines) const {
    const std::optional<Place> place = PlaceOf(source);
    return place ? lines.LineOf(Game(), *place) : 0;
}

} // namespace zem::play
