#include "play/InputLog.h"
#include "play/Session.h"

#include <iterator>
#include <utility>

/// The turns that were played, and those that were taken back and can be played again.
namespace zem::play {

namespace {

PlayedTurn TurnByHand(const std::vector<std::string>& fields) {
    const bool isThing = static_cast<Kind>(fields[0][1]) == Kind::Thing;
    return {fields[1].substr(isThing ? 1 : 0) + " = " + fields[2], {}}; // without the letter of its key
}

void AddTurns(std::string_view log, std::vector<PlayedTurn>& turns) {
    while (!log.empty()) {
        const std::vector<std::string> fields = TakeEntry(log);
        const char kind = fields[0].front();
        const std::ptrdiff_t answers = kind == ChoiceEntry ? 3 : 1;
        if (kind == RestoreEntry)
            turns.push_back({"restore", {}});
        else if (kind == HandEntry)
            turns.push_back(TurnByHand(fields));
        else if (kind != SecondsEntry)
            turns.push_back({kind == RestartEntry ? "restart" : fields[0].substr(1),
                             {fields.begin() + answers, fields.end()}});
    }
}

/// What comes after the outcome of another entry.
void Append(Outcome& all, Outcome next) {
    all.pieces.insert(all.pieces.end(), std::make_move_iterator(next.pieces.begin()),
                      std::make_move_iterator(next.pieces.end()));
    all.warnings.insert(all.warnings.end(), next.warnings.begin(), next.warnings.end());
    all.trace.insert(all.trace.end(), next.trace.begin(), next.trace.end());
    all.need = next.need;
    all.choices = std::move(next.choices);
    all.request = next.request;
    all.wasTurn = all.wasTurn || next.wasTurn;
}

} // namespace

std::vector<PlayedTurn> Session::Played() const {
    std::vector<PlayedTurn> turns;
    AddTurns(log_.From(0), turns);
    return turns;
}

std::vector<PlayedTurn> Session::Undone() const {
    std::vector<PlayedTurn> turns;
    for (auto log = undone_.rbegin(); log != undone_.rend(); ++log)
        AddTurns(*log, turns);
    return turns;
}

void Session::KeepUndone(std::size_t from) {
    undone_.push_back(log_.From(from));
}

Outcome Session::Redo() {
    Outcome all;
    all.need = need_;
    if (!CanRedo())
        return all;
    std::vector<std::string> rest = std::exchange(undone_, {});
    const std::string entries = std::move(rest.back());
    rest.pop_back();
    std::string_view log = entries;
    while (!log.empty() && !pending_) // the changed game may ask what it did not ask then
        Append(all, PlayEntry(TakeEntry(log)));
    undone_ = std::move(rest);
    return all;
}

Outcome Session::PlayEntry(const std::vector<std::string>& fields) {
    Outcome outcome;
    const char kind = fields[0].front();
    if (kind == RestoreEntry) {
        std::vector<std::string> lost;
        RestoreState(fields[1], lost);
        need_ = state_[Ending] == Playing ? Need::Line : Need::Nothing;
    } else if (kind == HandEntry) {
        SetByHand(static_cast<Kind>(fields[0][1]), fields[1], fields[2]);
    } else {
        shownPieces_ = 0;
        shownLength_ = 0;
        shownWarnings_ = 0;
        countedHits_ = 0;
        return Play(Unpack(fields));
    }
    outcome.need = need_;
    return outcome;
}

} // namespace zem::play
