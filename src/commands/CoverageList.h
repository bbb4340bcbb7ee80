#pragma once

#include "play/Coverage.h"
#include "play/SourcePlaces.h"
#include "reader/SourceLines.h"

#include <memory>
#include <string>

namespace zem {

/// Tells in a terminal where something of a game stands.
class PlaceWords {
public:
    /// @param file  that the game was read from; it is read again, for its lines
    PlaceWords(std::shared_ptr<const play::World> world, std::string file);

    /// "FILE:LINE: object lamp in Hall, take, line 2:" in UTF-8; what is not known of it is left out.
    std::string At(const play::Source& source) const;

private:
    std::string file_;
    play::SourcePlaces places_;
    SourceLines lines_;
};

/// How much of each kind was reached, a line each.
std::string SummariseCoverage(const play::Coverage& coverage);

/// Each part that was not reached with its place, a line each, in UTF-8.
std::string ListNeverReached(const play::Coverage& coverage, const PlaceWords& places);

} // namespace zem
