#include "commands/CoverageList.h"

#include "base/TextEncoding.h"
#include "base/TextFile.h"
#include "commands/Command.h"
#include "play/Libraries.h"
#include "reader/LoadGame.h"

#include <array>
#include <utility>

namespace zem {

namespace {

using play::CoveragePart;

struct KindWords {
    const char* plural;
    const char* never;
};

/// In the order of CoveragePart::Kind.
constexpr std::array<KindWords, CoveragePart::KindCount> Words = {{{"commands", "never ran"},
                                                                   {"answers of \"if\" lines", "never"},
                                                                   {"rooms", "never entered"},
                                                                   {"things", "never met"},
                                                                   {"texts", "never printed"},
                                                                   {"endings", "never reached"}}};

std::string Share(const play::CoverageCount& count) {
    const std::size_t share = count.all == 0 ? 100 : count.reached * 100 / count.all;
    return std::to_string(count.reached) + " of " + std::to_string(count.all) + ", " + std::to_string(share) +
           "%";
}

} // namespace

PlaceWords::PlaceWords(std::shared_ptr<const play::World> world, std::string file)
    : file_(std::move(file)),
      places_(std::move(world)) {
    GameModel game;
    play::NameMessages(game);
    try {
        ReadGame(game, ReadFile(file_), &lines_);
    } catch (const KelError&) {
        lines_ = {}; // changed meanwhile: its places are told without lines
    }
}

std::string PlaceWords::At(const play::Source& source) const {
    const std::size_t line = places_.LineOf(source, lines_);
    const std::string place = ToTerminal(places_.Describe(source));
    return file_ + ':' + (line == 0 ? "" : std::to_string(line) + ':') +
           (place.empty() ? "" : " " + place + ':');
}

std::string SummariseCoverage(const play::Coverage& coverage) {
    std::string list;
    for (std::size_t kind = 0; kind < CoveragePart::KindCount; ++kind)
        list += std::string(Words[kind].plural) + ": " +
                Share(coverage.Count(static_cast<CoveragePart::Kind>(kind))) + "\n";
    return list;
}

std::string ListNeverReached(const play::Coverage& coverage, const PlaceWords& places) {
    std::string list;
    for (const CoveragePart& part : coverage.Parts()) {
        if (part.hits > 0)
            continue;
        list += places.At(part.source) + " " + Words[part.kind].never;
        if (part.kind == CoveragePart::Branch)
            list += part.answer ? " true" : " false";
        list += "\n";
    }
    return list;
}

} // namespace zem
