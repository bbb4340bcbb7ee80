#include "play/ReachedParts.h"

#include "play/SourcePlaces.h"

#include <utility>

namespace zem::play {

namespace {

/// What tells a part in any version of the game.
std::string KeyOfPart(const ReachedPart& part) {
    return std::string(1, static_cast<char>('0' + part.part.kind)) + (part.part.answer ? '+' : '-') +
           part.where + '\n' + part.text;
}

std::vector<ReachedPart> PartsOf(const Coverage& coverage) {
    const SourcePlaces places(coverage.GetWorld());
    const StoryPlaces lines(coverage.GetWorld());
    std::vector<ReachedPart> parts;
    for (const CoveragePart& part : coverage.Parts()) {
        ReachedPart reached;
        reached.part = part;
        reached.place = places.PlaceOf(part.source);
        reached.where = places.Describe(part.source);
        if (part.source.line != 0)
            reached.text = lines.LineOf(part.source);
        parts.push_back(std::move(reached));
    }
    return parts;
}

std::string KeyOfLine(std::string_view procedure, std::string_view line) {
    return std::string(procedure) + '\n' + std::string(line);
}

} // namespace

std::vector<ReachedPart> PartsWithPlaces(const Coverage& coverage, const Coverage* walked) {
    std::vector<ReachedPart> parts = PartsOf(coverage);
    if (walked == nullptr)
        return parts;
    std::unordered_map<std::string, std::uint64_t> hits;
    for (const ReachedPart& part : PartsOf(*walked))
        if (part.part.hits > 0)
            hits[KeyOfPart(part)] += part.part.hits;
    for (ReachedPart& part : parts)
        if (const auto found = hits.find(KeyOfPart(part)); found != hits.end())
            part.walked = found->second;
    return parts;
}

LineCoverage::LineCoverage(const Coverage& coverage, const Coverage* walked) {
    Add(coverage, false);
    if (walked != nullptr)
        Add(*walked, true);
}

void LineCoverage::Add(const Coverage& coverage, bool isWalk) {
    const StoryPlaces lines(coverage.GetWorld());
    const Names& names = coverage.GetWorld()->GetNames();
    for (const Book* book : coverage.GetWorld()->OwnBooks()) {
        const std::string procedure =
            book->owner == Owner::Procedure ? names.Name(Kind::Procedure, book->number) : std::string();
        Source before;
        for (std::size_t k = 0; k < book->nodes.size(); ++k) {
            const Node& node = book->nodes[k];
            const Source source{book, node.field, node.index, node.line};
            if (std::exchange(before, source) == source)
                continue; // a branch of the same line
            const std::string key = KeyOfLine(procedure, lines.LineOf(source));
            if (isWalk && !lines_.contains(key))
                continue; // of an earlier version of the game
            LineHits& hits = lines_[key];
            const Hit ran{book, Hit::OfNode(k, true)};
            const Hit ranOtherwise{book, Hit::OfNode(k, false)};
            const std::uint64_t yes = coverage.HitsOf(ran);
            const std::uint64_t no = node.op == Op::If ? coverage.HitsOf(ranOtherwise) : 0;
            hits.whenTrue += yes;
            hits.whenFalse += no;
            hits.ran += yes + no;
            if (!isWalk && (yes > 0 || hits.hit.book == nullptr))
                hits.hit = ran;
            if (!isWalk && (no > 0 || hits.otherHit.book == nullptr))
                hits.otherHit = ranOtherwise;
        }
    }
}

const LineHits* LineCoverage::Find(std::string_view procedure, std::string_view line) const {
    const auto found = lines_.find(KeyOfLine(procedure, line));
    return found == lines_.end() ? nullptr : &found->second;
}

} // namespace zem::play
