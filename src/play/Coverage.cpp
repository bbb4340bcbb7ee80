#include "play/Coverage.h"

#include <algorithm>

namespace zem::play {

namespace {

constexpr std::size_t NoSlot = SIZE_MAX;

constexpr CoveragePart::Kind KindOfRecord(Owner owner) {
    return owner == Owner::Room    ? CoveragePart::Room
           : owner == Owner::Thing ? CoveragePart::Thing
                                   : CoveragePart::Text;
}

constexpr bool IsReachedItself(Owner owner) {
    return owner == Owner::Room || owner == Owner::Thing || owner == Owner::Text;
}

} // namespace

Coverage::Coverage(std::shared_ptr<const World> world) : world_(std::move(world)) {
    std::size_t slots = 0;
    for (const Book* book : world_->OwnBooks()) {
        books_.push_back(book);
        firstSlots_.emplace(book, slots);
        slots += 1 + 2 * book->nodes.size();
    }
    counts_.assign(slots, 0);
}

std::size_t Coverage::SlotOf(const Hit& hit) const {
    if (hit.book != lastBook_) {
        const auto found = firstSlots_.find(hit.book);
        lastFirst_ = found == firstSlots_.end() ? NoSlot : found->second;
        lastBook_ = hit.book;
    }
    return lastFirst_ == NoSlot ? NoSlot : lastFirst_ + hit.part;
}

std::size_t Coverage::Add(std::span<const Hit> hits) {
    const std::size_t before = reached_;
    for (const Hit& hit : hits)
        if (const std::size_t slot = SlotOf(hit); slot != NoSlot)
            reached_ += counts_[slot]++ == 0 ? 1 : 0;
    return reached_ - before;
}

void Coverage::Add(const Coverage& other) {
    for (std::size_t slot = 0; slot < counts_.size(); ++slot) {
        reached_ += counts_[slot] == 0 && other.counts_[slot] != 0 ? 1 : 0;
        counts_[slot] += other.counts_[slot];
    }
}

std::uint64_t Coverage::HitsOf(const Hit& hit) const {
    const std::size_t slot = SlotOf(hit);
    return slot == NoSlot ? 0 : counts_[slot];
}

void Coverage::AddParts(const Book& book, std::vector<CoveragePart>& parts) const {
    const auto add = [&](CoveragePart::Kind kind, bool answer, const Source& source, const Hit& hit) {
        parts.push_back({kind, answer, source, HitsOf(hit), hit});
    };
    // Every file has the standard texts, if empty ones, and an empty text is never printed.
    const bool isEmpty = book.owner == Owner::Text && world_->FindText(book.number)->record->Text.empty();
    if (IsReachedItself(book.owner) && !isEmpty)
        add(KindOfRecord(book.owner), true, {&book, {}, 0, 0}, {&book, Hit::Record});
    for (std::size_t k = 0; k < book.nodes.size(); ++k) {
        const Node& node = book.nodes[k];
        const Source source{&book, node.field, node.index, node.line};
        const Hit ran{&book, Hit::OfNode(k, true)}; // of an "if" line: it was true
        if (node.op == Op::If) {
            add(CoveragePart::Branch, true, source, ran);
            add(CoveragePart::Branch, false, source, {&book, Hit::OfNode(k, false)});
            continue;
        }
        add(CoveragePart::Command, true, source, ran);
        if (node.op == Op::Win || node.op == Op::Die)
            add(CoveragePart::Ending, true, source, ran);
    }
}

std::vector<CoveragePart> Coverage::Parts() const {
    std::vector<CoveragePart> parts;
    for (const Book* book : books_)
        AddParts(*book, parts);
    return parts;
}

CoverageCount Coverage::Count(CoveragePart::Kind kind) const {
    CoverageCount count;
    for (const CoveragePart& part : Parts())
        if (part.kind == kind) {
            ++count.all;
            count.reached += part.hits > 0 ? 1 : 0;
        }
    return count;
}

} // namespace zem::play
