#pragma once

#include "walk/RoadMap.h"
#include "walk/WalkOptions.h"

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace zem::walk {

/// What is to be answered when a turn asks, in the order in which it does.
struct PlannedAnswers {
    std::vector<std::string> yesOrNo;
    std::vector<std::string> choices;
    std::string text; // empty for any
};

/// Who plays the turns of an errand.
class ErrandPlayer {
public:
    virtual ~ErrandPlayer() = default;
    virtual const play::State& Now() const = 0;
    /// A number below `count`.
    virtual std::uint64_t Draw(std::uint64_t count) = 0;
    /// Plays a line; one that is empty lets time pass. False when no more turns are to be made: the game
    /// ended, or the walk is over.
    virtual bool Do(const std::string& line, const PlannedAnswers& answers) = 0;
};

/// Tries to make a game do something that it never did: looks what must be so for it, what could make it so,
/// what must be so for that, and goes there and does it. It reads the game and not the player's mind, so it
/// may fail, and tries another of several ways the next time.
class Errand {
public:
    Errand(const play::World& world, const CauseMap& causes, const WalkOptions& options, ErrandPlayer& player)
        : world_(world),
          causes_(causes),
          options_(options),
          player_(player),
          roads_(world, causes) {}

    /// Makes a line run, an "if" line with that answer. False when it gave up.
    bool Run(NodeId node, bool answer);

    /// Goes to a room. False when it gave up.
    bool Visit(Number room);

    /// How many rooms were looked at so far to find ways.
    std::uint64_t Work() const { return roads_.Work(); }

private:
    void Begin();
    bool GoesOn() { return isRunning_ && --effort_ > 0; }
    bool RunChain(NodeId node, const std::vector<Fact>& more, int depth);
    bool MakeChain(NodeId node, std::vector<NodeId>& chain);
    void PlanAnswers(const std::vector<NodeId>& chain, const std::vector<Fact>& more,
                     PlannedAnswers& answers) const;
    std::vector<Fact> FactsFor(const Root& root) const;
    bool MakeAllHold(const std::vector<Fact>& facts, int depth);
    bool MakeHold(const Fact& fact, int depth);
    bool MakeThingHere(Number thing, int depth);
    bool Change(const Fact& fact, int depth);
    bool TryWriter(const Fact& fact, NodeId writer, int depth);
    bool TryCapture(const Fact& fact, const Capture& capture, int depth);
    bool Act(const Root& root, const PlannedAnswers& answers, int depth);
    bool Travel(Number room, int depth);
    bool Leave();
    bool Do(const std::string& line, const PlannedAnswers& answers = {});
    bool CanHelp(const Fact& fact, NodeId writer) const;
    std::string NameOfThing(Number thing) const { return world_.FindThing(thing)->record->Name; }

    const play::World& world_;
    const CauseMap& causes_;
    const WalkOptions& options_;
    ErrandPlayer& player_;
    RoadMap roads_;
    bool isRunning_ = false;
    int effort_ = 0; // what may still be looked at
    int turns_ = 0;  // that may still be made
    std::string wantedText_;
    std::vector<NodeId> underway_; // what is being made to run, to go round in no circles
};

} // namespace zem::walk
