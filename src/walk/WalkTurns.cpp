#include "walk/Walk.h"

#include <algorithm>
#include <utility>

/// The turns of a walk, and what is learned from them.
namespace zem::walk {

using namespace zem::play;

namespace {
constexpr std::size_t MostAnswers = 12; // in one turn
constexpr int Patience = 12;            // turns that a walk goes on without anything new
} // namespace

/// Plays the beginning of the game; false when it cannot be begun.
bool Walker::Walk::Begin() {
    start_ = state_.Here();
    baseMark_ = start_;
    Input input;
    const Turn turn = Play(input, 0);
    if (turn.ending != Ending::None || state_[PlayerRoom] == 0)
        return false;
    steps_ = {{"", 0, turn.answers}};
    progress_.ReadAll(start_);
    KeepState(true);
    return true;
}

/// Plays a turn, and answers what it asks. What loses or wins the game is taken back.
Walker::Walk::Turn Walker::Walk::Play(Input& input, std::uint64_t place) {
    ++figures.turns;
    Turn turn;
    const State::Mark before = state_.Here();
    while (true) {
        const TurnResult result = Interpreter(*world_, state_, input, {false, false, true}).Run();
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

std::optional<std::string> Walker::Walk::PlannedAnswer(Need need) {
    const auto takeFirst = [](std::vector<std::string>& list) -> std::optional<std::string> {
        if (list.empty())
            return std::nullopt;
        std::string first = std::move(list.front());
        list.erase(list.begin());
        return first;
    };
    if (need == Need::YesNo)
        return takeFirst(plan_.yesOrNo);
    if (need == Need::Choice)
        return takeFirst(plan_.choices);
    return need == Need::Text && !plan_.text.empty() ? std::optional(plan_.text) : std::nullopt;
}

std::string Walker::Walk::ChooseAnswer(const Outcome& outcome, std::uint64_t place) {
    if (!replayed_.empty()) {
        std::string first = std::move(replayed_.front());
        replayed_.erase(replayed_.begin());
        return first;
    }
    if (auto planned = PlannedAnswer(outcome.need))
        return *std::move(planned);
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

void Walker::Walk::Learn(const TurnResult& result, Turn& turn, const Input& input) {
    turn.news = coverage.Add(result.hits);
    if (option_ != nullptr)
        NoteOpenBranches(result.hits);
    for (const Warning& warning : result.outcome.warnings) {
        if (warning.text.starts_with('['))
            continue; // a file that cannot be played here; the script is right
        NoteFinding(result.metLimit && warning.source.book == nullptr ? WalkFinding::Circle
                                                                      : WalkFinding::Mistake,
                    warning.text, warning.source, &input);
    }
}

/// Notes "if" lines whose other answer was never seen, so that the option is tried again when the state
/// is another. Lines that run at nearly every turn say nothing about an option.
void Walker::Walk::NoteOpenBranches(const std::vector<Hit>& hits) {
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

/// One turn of a walk; false when it ended the game, and was taken back.
bool Walker::Walk::TakeTurn(WalkOption& option) {
    const std::uint64_t key = progress_.Key();
    Input input;
    input.kind = Input::Line;
    option_ = &option;
    if (option.line.empty()) {
        input.kind = Input::Seconds;
        input.seconds = SecondsToNextDue();
    } else
        input.line = option.line;
    const State::Mark before = state_.Here();
    const std::uint64_t withoutRoom = progress_.KeyWithoutRoom();
    const Turn turn = Play(input, Mix(key, option.hash));
    if (turn.ending != Ending::None || state_[play::Ending] != Playing) {
        NoteEnd(turn, input);
        state_.GoBackTo(before);
        option.usefulCount += turn.news > 0 ? 1 : 0;
        return false;
    }
    if (!turn.isStep)
        return true;
    progress_.FollowWrites(before);
    steps_.push_back({input.line, input.seconds, input.answers});
    const bool isWanted = archive_.IsWanted(progress_.Key(), static_cast<std::uint32_t>(LengthOfWay()));
    if (turn.news == 0 && !isWanted)
        return true;
    if (turn.news > 0 || progress_.KeyWithoutRoom() != withoutRoom)
        ++option.usefulCount;
    LookOut();
    KeepState(turn.news > 0);
    patience_ = Patience;
    return true;
}

std::int64_t Walker::Walk::SecondsToNextDue() const {
    std::int64_t next = INT64_MAX;
    for (std::int64_t k = 0; k < state_[WaitCount]; ++k)
        next = std::min(next, state_[FirstWait + static_cast<Cell>(k) * WaitCells + WaitDue]);
    for (const auto& [timer, definition] : world_->Timers()) {
        const Cell cells = world_->GetNames().CellOf(Kind::Timer, timer);
        if (state_[cells + TimerOn] != 0)
            next = std::min(next, state_[cells + TimerDue]);
    }
    return next == INT64_MAX ? 0 : std::max<std::int64_t>(next - state_[play::Now], 1);
}

} // namespace zem::walk
