#include "walk/Walk.h"

#include <algorithm>
#include <utility>

/// What a walk goes on with.
namespace zem::walk {

using namespace zem::play;

namespace {
constexpr std::size_t MostStates = 200'000;
constexpr std::size_t MostTraits = 16;    // of one state
constexpr std::size_t MostNews = 256;     // states that reached something new, to go on from
constexpr int WanderPatience = 12;        // turns that a walk goes on without anything new
constexpr std::uint64_t RoomsPerTurn = 6; // looked at for the ways of errands
constexpr std::uint64_t MostRoomsAtOnce = 10'000;
constexpr int MostInARow = 6; // errands from one state on
} // namespace

Walker::Walk::Walk(std::shared_ptr<const World> world, WalkLimits limits)
    : world_(std::move(world)),
      limits_(std::move(limits)),
      coverage(world_),
      causes_(*world_),
      options_(*world_),
      state_(world_->NamesOfGame(), world_->Start(), world_->ThingOrder()),
      progress_(*world_, state_, causes_),
      archive_(MostStates, world_->GetNames().CellCount()),
      random_(limits_.seed),
      errand_(*world_, causes_, options_, *this),
      outlook_(*world_, causes_) {
    state_.Set(Chance, static_cast<std::int64_t>(limits_.seed));
    passing_.hash = 0x5EC0;
}

void Walker::Walk::Run() {
    if (!GoesOn())
        return;
    LookAhead();
    if (!Begin())
        return;
    if (isNeverWon_)
        NoteFinding(WalkFinding::Hopeless, "the game cannot be won: nothing leads to any \"win\"", {},
                    nullptr);
    std::uint64_t nextCollection = 0;
    while (GoesOn()) {
        if (figures.walks >= nextCollection) {
            CollectTargets();
            nextCollection = figures.walks + 256;
        }
        while (TendFindings()) {
        }
        ++figures.walks;
        GoTo(Draw(2) == 0 ? 0 : ChooseState());
        for (int k = 0; k < MostInARow && GoesOn() && RunErrand(); ++k) {
        }
        Wander();
    }
}

bool Walker::Walk::GoesOn() {
    constexpr std::uint64_t Often = 256;
    if (limits_.goesOn && !isToldToEnd_ && figures.turns >= nextAsk_) {
        nextAsk_ = figures.turns + Often;
        isToldToEnd_ = !limits_.goesOn();
    }
    return !isToldToEnd_ && figures.turns < limits_.turns;
}

bool Walker::Walk::Target::IsReached(const Walk& walk) const {
    if (room != None)
        return walk.coverage.HitsOf({&walk.world_->FindRoom(room)->book, Hit::Record}) > 0;
    const NodePlace& place = walk.causes_.At(node);
    const auto index = static_cast<std::size_t>(place.node - place.book->nodes.data());
    return walk.coverage.HitsOf({place.book, Hit::OfNode(index, answer)}) > 0;
}

/// What of the game was never reached; what is known from before keeps its trials.
void Walker::Walk::CollectTargets() {
    if (!targets_.empty()) {
        std::erase_if(targets_, [&](const Target& target) { return target.IsReached(*this); });
        return;
    }
    for (NodeId node = 0; node < causes_.NodeCount(); ++node) {
        const NodePlace& place = causes_.At(node);
        if (place.node == nullptr || place.book->library != 0)
            continue;
        targets_.push_back({node, true, None, 0});
        if (place.node->op == Op::If)
            targets_.push_back({node, false, None, 0});
    }
    for (const auto& room : world_->AllRooms())
        if (room->book.library == 0 && world_->FindRoom(room->number) == room.get())
            targets_.push_back({NoNode, true, room->number, 0});
    std::erase_if(targets_, [&](const Target& target) { return target.IsReached(*this); });
}

/// Goes for one of what was tried least; false when that failed.
bool Walker::Walk::RunErrand() {
    // In a large game the way to a far room costs more to find than to walk.
    if (targets_.empty() || errand_.Work() > figures.turns * RoomsPerTurn + MostRoomsAtOnce)
        return false;
    constexpr int Drawn = 6;
    Target* best = &targets_[Draw(targets_.size())];
    for (int k = 1; k < Drawn; ++k)
        if (Target& other = targets_[Draw(targets_.size())]; other.trials < best->trials)
            best = &other;
    if (best->IsReached(*this))
        return true;
    ++best->trials;
    if (best->room != None)
        return errand_.Visit(best->room);
    return errand_.Run(best->node, best->answer);
}

bool Walker::Walk::Do(const std::string& line, const PlannedAnswers& answers) {
    if (!GoesOn())
        return false;
    if (line.empty() && SecondsToNextDue() == 0)
        return true;
    planned_.line = line;
    planned_.hash = HashOfLine(line);
    planned_.openHits = {};
    plan_ = answers;
    const bool goesOn = TakeTurn(planned_);
    plan_ = {};
    return goesOn;
}

/// A state to go on from: mostly the best of some that are drawn, now and then one that reached something
/// new.
int Walker::Walk::ChooseState() {
    if (!news_.empty() && Draw(4) == 0)
        return news_[Draw(news_.size())];
    constexpr int Drawn = 12;
    int best = static_cast<int>(Draw(archive_.Count()));
    for (int k = 1; k < Drawn; ++k)
        if (const int other = static_cast<int>(Draw(archive_.Count())); WorthOf(other) > WorthOf(best))
            best = other;
    return best;
}

double Walker::Walk::WorthOf(int state) {
    const KeptState& kept = archive_[state];
    double rarity = 0;
    for (const KeptState::Trait& trait : kept.traits)
        rarity += 1.0 / traitCounts_[trait.number];
    return rarity / ((1.0 + kept.trials) * (50.0 + kept.depth));
}

void Walker::Walk::GoTo(int number) {
    KeptState& kept = archive_[number];
    ++kept.trials;
    isHopeless_ = kept.isHopeless;
    archive_.GoTo(number, state_, start_);
    base_ = number;
    baseMark_ = state_.Here();
    steps_.clear();
    progress_.ReadAll(start_);
}

/// Tries what is at hand until nothing new comes of it.
void Walker::Walk::Wander() {
    for (patience_ = WanderPatience; patience_ > 0 && GoesOn(); --patience_) {
        WalkOption* option = ChooseOption();
        if (option == nullptr)
            return;
        TakeTurn(*option);
    }
}

void Walker::Walk::KeepState(bool isNews) {
    KeptState kept;
    kept.key = progress_.Key();
    NoteChanges(state_, world_->GetNames(), baseMark_, kept);
    kept.depth = static_cast<std::uint32_t>(LengthOfWay());
    kept.parent = base_;
    kept.steps = std::move(steps_);
    kept.isHopeless = isHopeless_;
    NoteTraits(kept);
    steps_.clear();
    base_ = archive_.Keep(std::move(kept));
    figures.states = archive_.Count();
    baseMark_ = state_.Here();
    if (!isNews)
        return;
    if (news_.size() < MostNews)
        news_.push_back(base_);
    else
        news_[nextNews_++ % MostNews] = base_;
}

/// The rarer what a state has, the more it is worth to go on from it. It has what the state before had, but
/// for what has changed since.
void Walker::Walk::NoteTraits(KeptState& kept) {
    if (kept.parent >= 0)
        for (const KeptState::Trait& trait : archive_[kept.parent].traits)
            if (trait.cell != PlayerRoom &&
                std::none_of(kept.changes.begin(), kept.changes.end(),
                             [&](const KeptState::Change& change) { return change.cell == trait.cell; }))
                kept.traits.push_back(trait);
    for (const KeptState::Change& change : kept.changes)
        if (change.value != world_->Start()[change.cell])
            NoteTrait(kept, change.cell, progress_.PartOfKey(change.cell, change.value));
    // In each room there is something else to try.
    NoteTrait(kept, PlayerRoom, Mix(PlayerRoom, static_cast<std::uint64_t>(state_[PlayerRoom])));
    for (const KeptState::Trait& trait : kept.traits)
        ++traitCounts_[trait.number];
    std::stable_sort(kept.traits.begin(), kept.traits.end(),
                     [&](const KeptState::Trait& a, const KeptState::Trait& b) {
                         return traitCounts_[a.number] < traitCounts_[b.number];
                     });
    if (kept.traits.size() > MostTraits)
        kept.traits.resize(MostTraits);
}

void Walker::Walk::NoteTrait(KeptState& kept, Cell cell, std::uint64_t what) {
    if (what == 0)
        return;
    const auto [trait, isNew] = traits_.emplace(what, static_cast<std::uint32_t>(traitCounts_.size()));
    if (isNew)
        traitCounts_.push_back(0);
    kept.traits.push_back({cell, trait->second});
}

bool Walker::Walk::IsPromising(const WalkOption& option) const {
    return std::any_of(option.openHits.begin(), option.openHits.end(),
                       [&](const Hit& hit) { return hit.book != nullptr && coverage.HitsOf(hit) == 0; });
}

std::uint64_t Walker::Walk::WorthOf(const WalkOption& option) const {
    if (IsPromising(option))
        return 192;
    const std::uint64_t worth = 160U * option.usefulCount / (1U + option.triedCount);
    switch (option.kind) {
    case WalkOption::Drop:
        return 1;
    case WalkOption::Move:
        return 64;
    case WalkOption::Act:
        break;
    }
    return 8 + worth;
}

WalkOption* Walker::Walk::ChooseOption() {
    collected_.clear();
    options_.Collect(state_, progress_.Had(), collected_);
    if (SecondsToNextDue() > 0)
        collected_.push_back(&passing_);
    const std::uint64_t key = progress_.Key();
    const std::uint64_t place = Mix(static_cast<std::uint64_t>(state_[PlayerRoom]), 1);
    weights_.clear();
    std::uint64_t sum = 0;
    for (const WalkOption* option : collected_) {
        const std::uint64_t here = tried_.Count(Mix(key, option->hash));
        const bool isNew = here == 0 && tried_.Count(Mix(place, option->hash)) == 0;
        const std::uint64_t worth = isNew ? 1024 : WorthOf(*option);
        sum += std::max<std::uint64_t>(worth / ((1 + here) * (1 + here)), 1);
        weights_.push_back(sum);
    }
    if (sum == 0)
        return nullptr;
    const auto drawn = std::upper_bound(weights_.begin(), weights_.end(), Draw(sum));
    WalkOption* option = collected_[static_cast<std::size_t>(drawn - weights_.begin())];
    ++option->triedCount;
    tried_.Add(Mix(key, option->hash));
    tried_.Add(Mix(place, option->hash));
    return option;
}

} // namespace zem::walk
