#pragma once

#include "walk/Errand.h"
#include "walk/Outlook.h"
#include "walk/Progress.h"
#include "walk/StateArchive.h"
#include "walk/TriedTable.h"
#include "walk/Walker.h"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace zem::walk {

/// A walk through a game: the turns of it, and what it goes on with.
class Walker::Walk : private ErrandPlayer {
public:
    Walk(std::shared_ptr<const play::World> world, WalkLimits limits);

    void Run();
    std::vector<WalkUnreached> NeverReached() const;

    const std::shared_ptr<const play::World>& SharedWorld() const { return world_; }
    std::uint64_t Seed() const { return limits_.seed; }

private:
    std::shared_ptr<const play::World> world_;
    WalkLimits limits_;

public:
    play::Coverage coverage;
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

    // Turns.
    bool Begin();
    Turn Play(play::Input& input, std::uint64_t place);
    std::string ChooseAnswer(const play::Outcome& outcome, std::uint64_t place);
    std::optional<std::string> PlannedAnswer(play::Need need);
    void Learn(const play::TurnResult& result, Turn& turn, const play::Input& input);
    void NoteOpenBranches(const std::vector<play::Hit>& hits);
    bool TakeTurn(WalkOption& option);
    std::int64_t SecondsToNextDue() const;

    // What was found.
    std::vector<WalkStep> WayWith(const play::Input* input) const;
    std::size_t LengthOfWay();
    void NoteFinding(WalkFinding::Kind kind, const std::string& text, const play::Source& source,
                     const play::Input* input);
    void NoteEnd(const Turn& turn, const play::Input& input);

    /// Where a certain end of all chances lies on a way, and shorter ways to what was found.
    void LookAhead();
    void LookOut();
    bool TendFindings();
    void Shorten(std::size_t finding);
    bool MayRepeat() const;
    void Replay(const std::vector<WalkStep>& way, bool looksOut);
    std::vector<bool> WhatCanBeHad() const;
    void NoteHopeless(const play::Input& input, const std::vector<bool>& before);

    // What to go on with.
    bool GoesOn();
    int ChooseState();
    double WorthOf(int state);
    void GoTo(int state);
    void Wander();
    void KeepState(bool isNews);
    void NoteTraits(KeptState& kept);
    void NoteTrait(KeptState& kept, Cell cell, std::uint64_t what);
    std::uint64_t WorthOf(const WalkOption& option) const;
    bool IsPromising(const WalkOption& option) const;
    WalkOption* ChooseOption();

    // Errands: what was never reached, and goes there on purpose.
    struct Target {
        NodeId node = NoNode;
        bool answer = true;       // of an "if" line
        Number room = play::None; // to be entered, in place of a node
        std::uint32_t trials = 0;
        bool IsReached(const Walk& walk) const;
    };
    void CollectTargets();
    bool RunErrand();
    const play::State& Now() const override { return state_; }
    std::uint64_t Draw(std::uint64_t count) override { return play::NextRandom(random_) % count; }
    bool Do(const std::string& line, const PlannedAnswers& answers) override;

    CauseMap causes_;
    WalkOptions options_;
    play::State state_;
    play::State::Mark start_; // of the game, with nothing played
    Progress progress_;
    StateArchive archive_;
    std::vector<int> news_; // states that reached something new
    std::size_t nextNews_ = 0;
    std::unordered_map<std::uint64_t, std::uint32_t> traits_; // the number of each
    std::vector<std::uint32_t> traitCounts_;                  // how many kept states have it
    TriedTable tried_;
    std::uint64_t random_;
    std::uint64_t nextAsk_ = 0;
    bool isToldToEnd_ = false;

    std::vector<Target> targets_; // that were never reached, when they were last looked through
    Errand errand_;

    Outlook outlook_;
    std::vector<bool> roomsFromStart_; // that may ever be entered, by number
    std::vector<bool> possible_;       // lines that may ever run
    bool isNeverWon_ = false;          // whatever the player does
    bool tellsHopeless_ = false;       // the game can be won, and it can be told when no more
    bool isHopeless_ = false;          // the state is
    std::uint64_t repeatTurns_ = 0;    // made to find shorter ways
    std::unordered_set<std::uint64_t> hopelessSeen_;
    std::vector<std::vector<WalkStep>> hopelessWays_; // to be looked through
    /// How far it was tried to shorten a way.
    struct Shortening {
        std::size_t length = 0; // of the way
        std::size_t begun = 0;  // its length when this round began
        std::size_t piece = 0;  // that is left out; 0 for nothing more to try
        std::size_t first = 1;  // step of the piece
    };
    std::vector<Shortening> shortenings_; // by finding
    std::vector<std::string> replayed_;   // answers of the turn that is played again

    // The walk that goes on.
    int base_ = -1;               // the kept state in which its steps begin
    play::State::Mark baseMark_;  // where it lies in the journal
    std::vector<WalkStep> steps_; // since then
    int patience_ = 0;
    WalkOption* option_ = nullptr;
    WalkOption passing_;  // time passes
    WalkOption planned_;  // a turn of an errand
    PlannedAnswers plan_; // for that turn
    std::vector<WalkOption*> collected_;
    std::vector<std::uint64_t> weights_;
};

} // namespace zem::walk
