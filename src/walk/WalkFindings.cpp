#include "walk/Walk.h"

#include <algorithm>
#include <utility>

/// What a walk has found, and how short a way leads there.
namespace zem::walk {

using namespace zem::play;

namespace {

constexpr std::size_t MostFindings = 100;    // of one kind
constexpr std::size_t MostHopelessWays = 50; // that are looked through
constexpr std::uint64_t LinesPerTurn = 32;   // of scripts, looked at to see what may still come
constexpr std::uint64_t MostLinesAtOnce = 1'000'000;
constexpr std::uint64_t FreeRepeats = 2'000; // turns to shorten ways, besides a quarter of all
constexpr std::size_t MostTold = 3;

} // namespace

std::vector<WalkStep> Walker::Walk::WayWith(const Input* input) const {
    std::vector<WalkStep> way = base_ < 0 ? std::vector<WalkStep>() : archive_.WayTo(base_);
    way.insert(way.end(), steps_.begin(), steps_.end());
    if (input != nullptr)
        way.push_back({input->line, input->seconds, input->answers});
    return way;
}

std::size_t Walker::Walk::LengthOfWay() {
    return steps_.size() + (base_ < 0 ? 0 : archive_[base_].depth);
}

void Walker::Walk::NoteFinding(WalkFinding::Kind kind, const std::string& text, const Source& source,
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

void Walker::Walk::NoteEnd(const Turn& turn, const Input& input) {
    if (turn.ending == Ending::Won) {
        ++figures.wins;
        NoteFinding(WalkFinding::Win, "the game can be won", {}, &input);
    } else if (turn.ending == Ending::Lost) {
        ++figures.losses;
        NoteFinding(WalkFinding::Loss, "the game can be lost", {}, &input);
    }
}

/// Looks once, before the game begins, what of it can ever be reached.
void Walker::Walk::LookAhead() {
    outlook_.Look(state_);
    bool hasWin = false;
    possible_.assign(causes_.NodeCount(), false);
    for (NodeId node = 0; node < causes_.NodeCount(); ++node) {
        const NodePlace& place = causes_.At(node);
        hasWin = hasWin || (place.node != nullptr && place.node->op == Op::Win);
        possible_[node] = outlook_.CanRun(node);
    }
    roomsFromStart_.clear();
    for (Number room = 0; room < world_->GetNames().Count(Kind::Room); ++room)
        roomsFromStart_.push_back(outlook_.CanBeEntered(room));
    tellsHopeless_ = hasWin && outlook_.CanBeWon();
    isNeverWon_ = hasWin && !outlook_.CanBeWon();
}

/// Looks whether the game can still be won from the state that was reached.
void Walker::Walk::LookOut() {
    if (!tellsHopeless_ || isHopeless_ || outlook_.Work() > figures.turns * LinesPerTurn + MostLinesAtOnce)
        return;
    outlook_.Look(state_);
    if (outlook_.CanBeWon())
        return;
    isHopeless_ = true;
    const std::uint64_t how =
        Mix(HashOfLine(steps_.back().line), static_cast<std::uint64_t>(state_[PlayerRoom]));
    if (hopelessSeen_.size() < MostHopelessWays && hopelessSeen_.insert(how).second)
        hopelessWays_.push_back(WayWith(nullptr));
}

/// Looks through one way, or for one shorter way; false when there is nothing to do now.
bool Walker::Walk::TendFindings() {
    if (!GoesOn() || !MayRepeat())
        return false;
    if (!hopelessWays_.empty()) {
        const std::vector<WalkStep> way = std::move(hopelessWays_.back());
        hopelessWays_.pop_back();
        Replay(way, true);
        return true;
    }
    shortenings_.resize(findings.size());
    for (std::size_t k = 0; k < findings.size(); ++k) {
        const std::size_t length = findings[k].way.size();
        if (shortenings_[k].length != length) // found on a shorter way meanwhile
            shortenings_[k] = {length, length, length / 2, 1};
        if (shortenings_[k].piece > 0) {
            Shorten(k);
            return true;
        }
    }
    return false;
}

bool Walker::Walk::MayRepeat() const {
    return repeatTurns_ <= figures.turns / 4 + FreeRepeats;
}

/// Leaves out one piece of the way, larger ones first. A replay that finds it again on a shorter way keeps
/// that way.
void Walker::Walk::Shorten(std::size_t finding) {
    constexpr std::size_t SmallPiece = 8; // with which a round begins that follows a useful one
    Shortening& at = shortenings_[finding];
    std::vector<WalkStep> shorter = findings[finding].way;
    if (at.first + at.piece < shorter.size()) { // the last step shows what was found
        const auto begin = shorter.begin() + static_cast<std::ptrdiff_t>(at.first);
        shorter.erase(begin, begin + static_cast<std::ptrdiff_t>(at.piece));
        Replay(shorter, findings[finding].kind == WalkFinding::Hopeless);
        if (findings[finding].way.size() < at.length)
            at.length = findings[finding].way.size();
        else
            at.first += at.piece;
        return;
    }
    at.first = 1;
    at.piece /= 2;
    if (at.piece == 0 && at.length < at.begun) {
        at.begun = at.length;
        at.piece = std::min(SmallPiece, at.length / 2);
    }
}

/// Plays a way from the beginning of the game.
/// @param looksOut  tells after which turn the game can no longer be won, and stops there
void Walker::Walk::Replay(const std::vector<WalkStep>& way, bool looksOut) {
    state_.GoBackTo(start_);
    base_ = -1;
    baseMark_ = start_;
    steps_.clear();
    option_ = nullptr;
    std::vector<bool> before;
    for (const WalkStep& step : way) {
        if (!GoesOn())
            return;
        ++repeatTurns_;
        Input input;
        input.kind = steps_.empty() ? Input::Begin : step.line.empty() ? Input::Seconds : Input::Line;
        input.line = step.line;
        input.seconds = step.seconds;
        replayed_ = step.answers;
        const Turn turn = Play(input, 0);
        replayed_.clear();
        if (turn.ending != Ending::None || state_[play::Ending] != Playing) {
            NoteEnd(turn, input);
            return;
        }
        if (!turn.isStep)
            continue;
        if (looksOut) {
            outlook_.Look(state_);
            if (!outlook_.CanBeWon() && !steps_.empty()) {
                NoteHopeless(input, before);
                return;
            }
            before = WhatCanBeHad();
        }
        steps_.push_back({input.line, input.seconds, input.answers});
    }
}

/// The items, then the rooms, that may still be had and entered, as the last look told.
std::vector<bool> Walker::Walk::WhatCanBeHad() const {
    std::vector<bool> can;
    for (const WorldItem& item : world_->Items())
        can.push_back(outlook_.CanBeHad(item.number));
    for (Number room = 0; room < world_->GetNames().Count(Kind::Room); ++room)
        can.push_back(outlook_.CanBeEntered(room));
    return can;
}

void Walker::Walk::NoteHopeless(const Input& input, const std::vector<bool>& before) {
    const std::vector<bool> now = WhatCanBeHad();
    const std::size_t items = world_->Items().size();
    std::vector<std::string> gone;
    const auto tell = [&](std::size_t first, std::size_t last) {
        for (std::size_t k = first; k < last && gone.size() < MostTold; ++k)
            if (k < before.size() && before[k] && !now[k])
                gone.push_back("\"" +
                               (k < items
                                    ? world_->Items()[k].name
                                    : world_->GetNames().Name(Kind::Room, static_cast<Number>(k - items))) +
                               "\"");
    };
    tell(0, items);
    if (gone.empty())
        tell(items, now.size());
    std::string text = "the game can no longer be won after " +
                       (input.kind == Input::Line ? "\"" + input.line + "\"" : "time has passed");
    for (std::size_t k = 0; k < gone.size(); ++k)
        text += (k == 0 ? ": there is no way left to " : ", ") + gone[k];
    NoteFinding(WalkFinding::Hopeless, text, {}, &input);
}

std::vector<WalkUnreached> Walker::Walk::NeverReached() const {
    std::vector<WalkUnreached> list;
    for (const CoveragePart& part : coverage.Parts()) {
        if (part.hits > 0 || (part.kind != CoveragePart::Room && part.kind != CoveragePart::Ending))
            continue;
        const Book& book = *part.source.book;
        bool isPossible = part.kind == CoveragePart::Room && book.number < roomsFromStart_.size() &&
                          roomsFromStart_[book.number];
        if (part.kind == CoveragePart::Ending)
            for (std::size_t k = 0; k < book.nodes.size(); ++k) {
                const Node& node = book.nodes[k];
                const Source source{&book, node.field, node.index, node.line};
                const NodeId id = causes_.IdOf(book, static_cast<std::int32_t>(k));
                if (source == part.source && id < possible_.size() && possible_[id])
                    isPossible = true;
            }
        list.push_back({part, !roomsFromStart_.empty() && !isPossible});
    }
    return list;
}

} // namespace zem::walk
