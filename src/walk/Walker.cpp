#include "walk/Walker.h"

#include "base/TextEncoding.h"
#include "play/NameSearch.h"
#include "walk/TriedTable.h"

#include <algorithm>
#include <utility>

namespace zem::walk {

namespace {

using namespace zem::play;

constexpr std::size_t MostStates = 200'000;
constexpr std::size_t MostFindings = 100; // of one kind
constexpr int Patience = 12;              // turns that a walk goes on without anything new
constexpr std::size_t MostAnswers = 12;   // in one turn
constexpr std::size_t MostNews = 256;     // states that reached something new, to go on from

std::uint64_t Mix(std::uint64_t a, std::uint64_t b) {
    std::uint64_t state = a ^ (b * 0x9E3779B97F4A7C15U);
    return NextRandom(state);
}

} // namespace

class Walker::Walk {
public:
    Walk(std::shared_ptr<const World> world, WalkLimits limits)
        : world_(std::move(world)),
          limits_(std::move(limits)),
          coverage(world_),
          options_(*world_),
          state_(world_->NamesOfGame(), world_->Start(), world_->ThingOrder()),
          archive_(MostStates),
          random_(limits_.seed) {
        state_.Set(Chance, static_cast<std::int64_t>(limits_.seed));
        NoteRoles();
    }

    void Run() {
        if (!Begin())
            return;
        while (GoesOn())
            WalkFrom(ChooseState());
        figures.states = archive_.Count();
    }

    const World& GetWorld() const { return *world_; }
    const std::shared_ptr<const World>& SharedWorld() const { return world_; }
    std::uint64_t Seed() const { return limits_.seed; }

private:
    /// What a cell says about how far the game has come. The number of a turn, chance and the like change all
    /// the time; values that only count make states without end.
    enum class CellRole : std::uint8_t { Ignored, Item, Told };

    std::shared_ptr<const World> world_;
    WalkLimits limits_;

public:
    Coverage coverage;
    WalkFigures figures;
    std::vector<WalkFinding> findings;

private:
    enum class Ending : std::uint8_t { None, Won, Lost, Nothing };

    /// What came of a turn.
    struct Turn {
        Ending ending = Ending::None;
        bool isStep = false;
        std::size_t news = 0; // parts of the game that were never reached before
        std::vector<std::string> answers;
    };

    bool GoesOn() {
        constexpr std::uint64_t Often = 256;
        if (limits_.goesOn && !isToldToEnd_ && figures.turns >= nextAsk_) {
            nextAsk_ = figures.turns + Often;
            isToldToEnd_ = !limits_.goesOn();
        }
        return !isToldToEnd_ && figures.turns < limits_.turns;
    }

    std::uint64_t Draw(std::uint64_t count) { return NextRandom(random_) % count; }

    void NoteRoles() {
        const Names& names = world_->GetNames();
        roles_.assign(names.CellCount(), CellRole::Ignored);
        owners_.assign(names.CellCount(), None);
        for (const WorldItem& item : world_->Items()) {
            roles_[names.CellOf(Kind::Item, item.number)] = CellRole::Item;
            owners_[names.CellOf(Kind::Item, item.number)] = item.number;
        }
        const auto tell = [&](Kind kind, Cell first, Cell count) {
            for (Number number = 0; number < names.Count(kind); ++number)
                for (Cell cell = 0; cell < count; ++cell)
                    roles_[names.CellOf(kind, number) + first + cell] = CellRole::Told;
        };
        tell(Kind::Flag, 0, 1);
        tell(Kind::Timer, TimerOn, 1);
        tell(Kind::Thing, 0, ThingCells);
        tell(Kind::Room, RoomOff, 1 + DirectionCount);
        tell(Kind::Variable, 0, 1);
        tell(Kind::Collectable, 0, 1);
        valuesSeen_.assign(names.CellCount(), {});
    }

    /// Values of a variable beyond a few only count something, and say nothing about how far the game is.
    bool IsTold(Cell cell, std::int64_t value) {
        constexpr std::size_t Few = 3;
        if (roles_[cell] == CellRole::Ignored)
            return false;
        std::vector<std::int64_t>& seen = valuesSeen_[cell];
        if (std::find(seen.begin(), seen.end(), value) != seen.end())
            return true;
        if (seen.size() >= Few)
            return false;
        seen.push_back(value);
        return true;
    }

    std::uint64_t PartOfKey(Cell cell, std::int64_t value) {
        if (world_->GetNames().Use(cell) == CellUse::Text)
            value = static_cast<std::int64_t>(state_.Texts().Hash(value));
        return !IsTold(cell, value) ? 0 : Mix(cell, static_cast<std::uint64_t>(value));
    }

    /// Takes what was written since into the key of the state and the list of items.
    void FollowWrites(const State::Mark& since) {
        writes_.clear();
        state_.ForEachWriteSince(since, [&](Cell cell, std::int64_t before) {
            if (writes_.size() > ManyWrites ||
                std::none_of(writes_.begin(), writes_.end(),
                             [&](const auto& write) { return write.first == cell; }))
                writes_.emplace_back(cell, before);
        });
        for (const auto& [cell, before] : writes_)
            FollowWrite(cell, before, state_[cell]);
    }

    void FollowWrite(Cell cell, std::int64_t before, std::int64_t now) {
        if (roles_[cell] == CellRole::Ignored || before == now)
            return;
        if (roles_[cell] == CellRole::Item) {
            if (now != 0)
                had_.insert(std::lower_bound(had_.begin(), had_.end(), owners_[cell]), owners_[cell]);
            else
                std::erase(had_, owners_[cell]);
        }
        const std::int64_t start = world_->Start()[cell];
        if (before != start)
            progress_ ^= PartOfKey(cell, before);
        if (now != start)
            progress_ ^= PartOfKey(cell, now);
    }

    std::uint64_t Key() const { return Mix(progress_, static_cast<std::uint64_t>(state_[PlayerRoom])); }

    /// What the present state is told by, when it is not known how it came about.
    void ReadWholeState() {
        progress_ = 0;
        had_.clear();
        for (const WorldItem& item : world_->Items())
            if (world_->Start()[world_->GetNames().CellOf(Kind::Item, item.number)] != 0)
                had_.push_back(item.number);
        std::sort(had_.begin(), had_.end());
        had_.erase(std::unique(had_.begin(), had_.end()), had_.end());
    }

    /// Plays the beginning of the game; false when it cannot be begun.
    bool Begin() {
        start_ = state_.Here();
        Input input;
        const Turn turn = Play(input, 0);
        if (turn.ending != Ending::None || state_[PlayerRoom] == 0)
            return false;
        steps_ = {{"", 0, turn.answers}};
        ReadWholeState();
        FollowWrites(start_);
        KeepState(true);
        return true;
    }

    /// Plays a turn, and answers what it asks. What loses or wins the game is taken back.
    Turn Play(Input& input, std::uint64_t place) {
        ++figures.turns;
        Turn turn;
        const State::Mark before = state_.Here();
        while (true) {
            TurnResult result = Interpreter(*world_, state_, input, {false, false, true}).Run();
            const auto ended = static_cast<Ended>(state_[play::Ending]);
            const bool isOver = ended != Playing;
            const bool givesUp = !result.isDone && input.answers.size() >= MostAnswers;
            if (result.isDone || isOver || givesUp) {
                if (result.isDone)
                    state_.Tidy(before);
                Learn(result, turn, input);
                turn.isStep = result.isStep || input.kind != Input::Line;
                turn.ending = ended == Won ? Ending::Won : isOver ? Ending::Lost : Ending::None;
                if (!result.isDone)
                    state_.GoBackTo(before);
                if (givesUp && !isOver)
                    turn.ending = Ending::Nothing;
                turn.answers = input.answers;
                return turn;
            }
            state_.GoBackTo(before);
            input.answers.push_back(ChooseAnswer(result.outcome, Mix(place, input.answers.size())));
        }
    }

    std::string ChooseAnswer(const Outcome& outcome, std::uint64_t place) {
        std::vector<std::string> answers;
        if (outcome.need == Need::YesNo)
            answers = {"yes", "no"};
        else if (outcome.need == Need::Choice)
            for (std::size_t k = 1; k <= outcome.choices.size(); ++k)
                answers.push_back(std::to_string(k));
        else if (outcome.need == Need::Text)
            answers = options_.Answers();
        if (answers.empty())
            return {};
        // The one that was tried least here, the first of them by chance.
        std::size_t best = Draw(answers.size());
        for (std::size_t k = 0; k < answers.size(); ++k)
            if (tried_.Count(Mix(place, k)) < tried_.Count(Mix(place, best)))
                best = k;
        tried_.Add(Mix(place, best));
        return answers[best];
    }

    void Learn(TurnResult& result, Turn& turn, const Input& input) {
        turn.news = coverage.Add(result.hits);
        if (option_ != nullptr)
            NoteOpenBranches(result.hits);
        for (const Warning& warning : result.outcome.warnings)
            NoteFinding(result.metLimit && warning.source.book == nullptr ? WalkFinding::Circle
                                                                          : WalkFinding::Mistake,
                        warning.text, warning.source, &input);
    }

    /// Notes "if" lines whose other answer was never seen, so that the option is tried again when the state
    /// is another. Lines that run at nearly every turn say nothing about an option.
    void NoteOpenBranches(const std::vector<Hit>& hits) {
        std::size_t count = 0;
        for (const Hit& hit : hits) {
            if (hit.part == Hit::Record || count == option_->openHits.size())
                continue;
            const std::size_t node = (hit.part - 1) / 2;
            if (hit.book->nodes[node].op != Op::If || coverage.HitsOf(hit) * 4 > figures.turns)
                continue;
            const Hit other{hit.book, Hit::OfNode(node, hit.part % 2 == 0)};
            if (coverage.HitsOf(other) == 0)
                option_->openHits[count++] = other;
        }
        for (; count < option_->openHits.size(); ++count)
            option_->openHits[count] = {};
    }

    bool IsPromising(const WalkOption& option) const {
        return std::any_of(option.openHits.begin(), option.openHits.end(),
                           [&](const Hit& hit) { return hit.book != nullptr && coverage.HitsOf(hit) == 0; });
    }

    std::vector<WalkStep> WayWith(const Input* input) const {
        std::vector<WalkStep> way = base_ < 0 ? std::vector<WalkStep>() : archive_.WayTo(base_);
        way.insert(way.end(), steps_.begin(), steps_.end());
        if (input != nullptr)
            way.push_back({input->line, input->seconds, input->answers});
        return way;
    }

    std::size_t LengthOfWay() { return steps_.size() + (base_ < 0 ? 0 : archive_[base_].depth); }

    void NoteFinding(WalkFinding::Kind kind, const std::string& text, const Source& source,
                     const Input* input) {
        std::size_t count = 0;
        for (WalkFinding& known : findings) {
            if (known.kind != kind)
                continue;
            ++count;
            if (known.source == source && known.text == text) {
                if (LengthOfWay() + 1 < known.way.size())
                    known.way = WayWith(input);
                return;
            }
        }
        if (count < MostFindings)
            findings.push_back({kind, text, source, WayWith(input)});
    }

    /// A state to go on from: mostly the best of some that are drawn, now and then one that reached something
    /// new.
    int ChooseState() {
        const std::size_t count = archive_.Count();
        if (!news_.empty() && Draw(4) == 0)
            return news_[Draw(news_.size())];
        constexpr int Drawn = 12;
        int best = static_cast<int>(Draw(count));
        const auto worth = [&](int number) {
            const KeptState& kept = archive_[number];
            double rarity = 0;
            for (const std::uint32_t trait : kept.traits)
                rarity += 1.0 / traitCounts_[trait];
            return rarity / ((1.0 + kept.trials) * (50.0 + kept.depth));
        };
        for (int k = 1; k < Drawn; ++k)
            if (const int other = static_cast<int>(Draw(count)); worth(other) > worth(best))
                best = other;
        return best;
    }

    void WalkFrom(int number) {
        ++figures.walks;
        KeptState& kept = archive_[number];
        ++kept.trials;
        GoTo(state_, start_, kept);
        base_ = number;
        steps_.clear();
        ReadWholeState();
        FollowWrites(start_);
        for (patience_ = Patience; patience_ > 0 && GoesOn(); --patience_)
            if (!TakeTurn())
                return;
    }

    /// One turn of a walk; false when it ends there.
    bool TakeTurn() {
        const std::uint64_t key = Key();
        Input input;
        input.kind = Input::Line;
        option_ = ChooseOption(key);
        if (option_ == nullptr)
            return false;
        if (option_->line.empty()) {
            input.kind = Input::Seconds;
            input.seconds = SecondsToNextDue();
        } else
            input.line = option_->line;
        const State::Mark before = state_.Here();
        const std::uint64_t progress = progress_;
        const Turn turn = Play(input, Mix(key, option_->hash));
        if (turn.ending != Ending::None || state_[play::Ending] != Playing) {
            NoteEnd(turn, input);
            state_.GoBackTo(before);
            option_->usefulCount += turn.news > 0 ? 1 : 0;
            return true;
        }
        if (!turn.isStep)
            return true;
        FollowWrites(before);
        steps_.push_back({input.line, input.seconds, input.answers});
        const bool isWanted = archive_.IsWanted(Key(), static_cast<std::uint32_t>(LengthOfWay()));
        if (turn.news == 0 && !isWanted)
            return true;
        if (turn.news > 0 || progress_ != progress)
            ++option_->usefulCount;
        KeepState(turn.news > 0);
        patience_ = Patience;
        return true;
    }

    void NoteEnd(const Turn& turn, const Input& input) {
        if (turn.ending == Ending::Won) {
            ++figures.wins;
            NoteFinding(WalkFinding::Win, "the game can be won", {}, &input);
        } else if (turn.ending == Ending::Lost) {
            ++figures.losses;
            NoteFinding(WalkFinding::Loss, "the game can be lost", {}, &input);
        }
    }

    void KeepState(bool isNews) {
        KeptState kept;
        kept.key = Key();
        NoteChanges(state_, world_->GetNames(), start_, kept);
        kept.depth = static_cast<std::uint32_t>(LengthOfWay());
        kept.parent = base_;
        kept.steps = std::move(steps_);
        NoteTraits(kept);
        steps_.clear();
        base_ = archive_.Keep(std::move(kept));
        if (!isNews)
            return;
        if (news_.size() < MostNews)
            news_.push_back(base_);
        else
            news_[nextNews_++ % MostNews] = base_;
    }

    /// The rarer what a state has, the more it is worth to go on from it.
    void NoteTraits(KeptState& kept) {
        for (const KeptState::Change& change : kept.changes) {
            const std::uint64_t part =
                change.value == world_->Start()[change.cell] ? 0 : PartOfKey(change.cell, change.value);
            if (part == 0)
                continue;
            const auto [trait, isNew] =
                traits_.emplace(part, static_cast<std::uint32_t>(traitCounts_.size()));
            if (isNew)
                traitCounts_.push_back(0);
            ++traitCounts_[trait->second];
            kept.traits.push_back(trait->second);
        }
        // In each room there is something else to try.
        const std::uint64_t room = Mix(PlayerRoom, static_cast<std::uint64_t>(state_[PlayerRoom]));
        const auto [trait, isNew] = traits_.emplace(room, static_cast<std::uint32_t>(traitCounts_.size()));
        if (isNew)
            traitCounts_.push_back(0);
        ++traitCounts_[trait->second];
        kept.traits.push_back(trait->second);
    }

    std::int64_t SecondsToNextDue() const {
        std::int64_t next = INT64_MAX;
        for (std::int64_t k = 0; k < state_[WaitCount]; ++k)
            next = std::min(next, state_[FirstWait + static_cast<Cell>(k) * WaitCells + WaitDue]);
        for (const auto& [timer, definition] : world_->Timers()) {
            const Cell cells = world_->GetNames().CellOf(Kind::Timer, timer);
            if (state_[cells + TimerOn] != 0)
                next = std::min(next, state_[cells + TimerDue]);
        }
        return next == INT64_MAX ? 0 : std::max<std::int64_t>(next - state_[Now], 1);
    }

    std::uint64_t WorthOf(const WalkOption& option) const {
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

    WalkOption* ChooseOption(std::uint64_t key) {
        collected_.clear();
        options_.Collect(state_, had_, collected_);
        if (SecondsToNextDue() > 0)
            collected_.push_back(&passing_);
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

    static constexpr std::size_t ManyWrites = 16; // beyond them none comes twice

    WalkOptions options_;
    State state_;
    State::Mark start_; // of the game, with nothing played
    StateArchive archive_;
    std::vector<int> news_; // states that reached something new
    std::size_t nextNews_ = 0;
    std::unordered_map<std::uint64_t, std::uint32_t> traits_; // the number of each
    std::vector<std::uint32_t> traitCounts_;                  // how many kept states have it
    TriedTable tried_;
    std::uint64_t random_;
    std::uint64_t nextAsk_ = 0;
    bool isToldToEnd_ = false;

    std::vector<CellRole> roles_;
    std::vector<Number> owners_; // of the cells of items
    std::vector<std::vector<std::int64_t>> valuesSeen_;

    // The walk that goes on.
    int base_ = -1;               // the kept state in which its steps begin
    std::vector<WalkStep> steps_; // since then
    std::uint64_t progress_ = 0;  // the key of the state but for the room
    std::vector<Number> had_;     // items, by number
    int patience_ = 0;
    WalkOption* option_ = nullptr;
    WalkOption passing_{"", 0x5EC0, WalkOption::Act, None, 0, 0, {}}; // time passes
    std::vector<WalkOption*> collected_;
    std::vector<std::uint64_t> weights_;
    std::vector<std::pair<Cell, std::int64_t>> writes_;
};

Walker::Walker(std::shared_ptr<const World> world, WalkLimits limits)
    : walk_(std::make_unique<Walk>(std::move(world), std::move(limits))) {}

Walker::~Walker() = default;

void Walker::Run() {
    walk_->Run();
}

const Coverage& Walker::Reached() const {
    return walk_->coverage;
}

const WalkFigures& Walker::Figures() const {
    return walk_->figures;
}

const std::vector<WalkFinding>& Walker::Findings() const {
    return walk_->findings;
}

RecordedRun Walker::AsRun(const WalkFinding& finding, const std::string& name) const {
    RecordedRun run;
    run.name = name;
    run.seed = walk_->Seed();
    const auto add = [&](InputLine::Kind kind, const std::string& text, std::int64_t seconds,
                         const char* sign) {
        InputLine line{kind, text, seconds, sign + ToUtf8(text), 0};
        if (kind == InputLine::Seconds)
            line.written = sign + std::to_string(seconds);
        run.steps.push_back({std::move(line), true, {}});
    };
    for (const WalkStep& step : finding.way) {
        if (!step.line.empty())
            add(InputLine::Typed, step.line, 0, "> ");
        else if (step.seconds > 0)
            add(InputLine::Seconds, {}, step.seconds, "@ ");
        for (const std::string& answer : step.answers)
            add(InputLine::Answer, answer, 0, "< ");
    }
    RecordedRun played = PlayRun(walk_->SharedWorld(), run).played;
    return played;
}

} // namespace zem::walk
