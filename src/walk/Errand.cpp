#include "walk/Errand.h"

#include <algorithm>

namespace zem::walk {

using namespace zem::play;

namespace {

constexpr int MostEffort = 600;
constexpr int MostTurns = 300;
constexpr int Deepest = 14;                      // facts that are wanted for one another
constexpr int MostRounds = 4;                    // in which what one step spoils is made good again
constexpr int MostRepeats = 40;                  // of what counts something up
constexpr int MostWriters = 3;                   // tried for one fact
constexpr std::size_t LongestChainOfCauses = 10; // of scripts that call one another

bool IsAboutPlace(const Fact& fact) {
    return fact.test == Test::In || fact.test == Test::Here || fact.test == Test::Visible;
}

} // namespace

void Errand::Begin() {
    isRunning_ = true;
    effort_ = MostEffort;
    turns_ = MostTurns;
    wantedText_.clear();
    underway_.clear();
}

bool Errand::Run(NodeId node, bool answer) {
    Begin();
    std::vector<Fact> more;
    if (causes_.At(node).node->op == Op::If) {
        auto ways = WaysTo(world_, *causes_.At(node).book, *causes_.At(node).node, answer);
        if (ways.empty())
            return false;
        more = std::move(ways[player_.Draw(ways.size())]);
    }
    return RunChain(node, more, Deepest);
}

bool Errand::Visit(Number room) {
    Begin();
    return Travel(room, Deepest);
}

bool Errand::Do(const std::string& line, const PlannedAnswers& answers) {
    isRunning_ = isRunning_ && --turns_ > 0 && player_.Do(line, answers);
    return isRunning_;
}

/// The scripts that lead to a node, the outermost first; of several ways one by chance.
bool Errand::MakeChain(NodeId node, std::vector<NodeId>& chain) {
    chain = {node};
    while (true) {
        const Root& root = causes_.RootOf(chain.back());
        if (root.kind == Root::Start)
            return false;
        if (root.kind != Root::Procedure && root.kind != Root::Choice)
            break;
        const std::vector<NodeId>& callers = causes_.CallersOf(root);
        if (callers.empty() || chain.size() >= LongestChainOfCauses)
            return false;
        const NodeId caller = callers[player_.Draw(callers.size())];
        if (std::find(chain.begin(), chain.end(), caller) != chain.end())
            return false;
        chain.push_back(caller);
    }
    std::reverse(chain.begin(), chain.end());
    return true;
}

void Errand::PlanAnswers(const std::vector<NodeId>& chain, const std::vector<Fact>& more,
                         PlannedAnswers& answers) const {
    const auto answer = [&](const std::vector<Fact>& facts) {
        for (const Fact& fact : facts)
            if (fact.test == Test::Ask)
                answers.yesOrNo.emplace_back(fact.wanted ? "yes" : "no");
    };
    for (const NodeId node : chain) {
        if (const Root& root = causes_.RootOf(node); root.kind == Root::Choice)
            answers.choices.push_back(std::to_string(root.index));
        std::vector<Fact> facts;
        AddNeedsOf(world_, causes_, player_.Now(), node, facts);
        answer(facts);
    }
    answer(more);
    answers.text = wantedText_;
}

std::vector<Fact> Errand::FactsFor(const Root& root) const {
    std::vector<Fact> facts;
    if (root.item != None)
        facts.push_back(ItemIsHad(root.item));
    if (root.kind == Root::Exit)
        facts.push_back({Test::Exit, true, None, root.room, static_cast<std::uint8_t>(root.index), {}});
    if (root.kind == Root::Timer)
        facts.push_back({Test::Timer, true, root.name, None, DirectionCount, {}});
    if (root.thing != None)
        facts.push_back(ThingIsHere(root.thing));
    else if (root.room != None && root.kind != Root::Enter)
        facts.push_back(PlayerIsIn(root.room));
    return facts;
}

bool Errand::RunChain(NodeId node, const std::vector<Fact>& more, int depth) {
    if (depth <= 0 || !GoesOn() || std::find(underway_.begin(), underway_.end(), node) != underway_.end())
        return false;
    std::vector<NodeId> chain;
    if (!MakeChain(node, chain))
        return false;
    const Root root = causes_.RootOf(chain.front());
    std::vector<Fact> facts = NeedsOfChain(world_, causes_, player_.Now(), chain);
    facts.insert(facts.end(), more.begin(), more.end());
    const std::vector<Fact> place = FactsFor(root);
    facts.insert(facts.end(), place.begin(), place.end());
    // Where the player must be comes last: what else must be done leads away from there.
    std::stable_partition(facts.begin(), facts.end(), [](const Fact& fact) { return !IsAboutPlace(fact); });

    underway_.push_back(node);
    bool isDone = MakeAllHold(facts, depth);
    if (isDone) {
        PlannedAnswers answers;
        PlanAnswers(chain, more, answers);
        isDone = Act(root, answers, depth);
        for (const NodeId call : chain)
            if (isDone && causes_.At(call).node->op == Op::After)
                isDone = Do({});
    }
    underway_.pop_back();
    return isDone;
}

bool Errand::MakeAllHold(const std::vector<Fact>& facts, int depth) {
    for (int round = 0; round < MostRounds; ++round) {
        bool areAll = true;
        for (const Fact& fact : facts) {
            if (Holds(world_, player_.Now(), fact))
                continue;
            areAll = false;
            if (!MakeHold(fact, depth - 1))
                return false;
        }
        if (areAll)
            return true;
    }
    return false;
}

bool Errand::MakeHold(const Fact& fact, int depth) {
    if (Holds(world_, player_.Now(), fact))
        return true;
    if (depth <= 0 || !GoesOn())
        return false;
    switch (fact.test) {
    case Test::In:
        return fact.wanted ? Travel(fact.room, depth) : Leave();
    case Test::Been:
        return fact.wanted && Travel(fact.room, depth) && Leave();
    case Test::FirstVisit:
        return !fact.wanted && Leave();
    case Test::Here:
    case Test::Visible:
        return fact.wanted ? MakeThingHere(fact.name, depth) : Leave() || Change(fact, depth);
    case Test::Turns:
        while (!Holds(world_, player_.Now(), fact))
            if (!fact.wanted || !Do("wait"))
                return false;
        return true;
    case Test::EmptyHanded:
    case Test::Unknown:
        return false;
    case Test::Has:
        if (!fact.wanted && world_.FindItem(fact.name) != nullptr &&
            (!Do("drop " + world_.FindItem(fact.name)->name) || Holds(world_, player_.Now(), fact)))
            return isRunning_;
        return Change(fact, depth);
    default:
        return Change(fact, depth);
    }
}

/// Whether a line can make a fact true, going by what the line is.
bool Errand::CanHelp(const Fact& fact, NodeId writer) const {
    const Node& node = *causes_.At(writer).node;
    switch (node.op) {
    case Op::Give:
    case Op::FlagOn:
    case Op::TimerOn:
    case Op::RoomOn:
    case Op::ExitOn:
        return fact.wanted;
    case Op::Lose:
    case Op::LoseAll:
    case Op::FlagOff:
    case Op::TimerOff:
    case Op::RoomOff:
    case Op::ExitOff:
        return !fact.wanted;
    case Op::Show:
    case Op::Reveal:
    case Op::ObjectOn:
    case Op::CharacterOn:
        return fact.wanted;
    case Op::Hide:
    case Op::Conceal:
    case Op::ObjectOff:
    case Op::CharacterOff:
        return !fact.wanted;
    case Op::MoveObject:
    case Op::MoveCharacter:
        return fact.test != Test::Exists &&
               (fact.room == None || node.arguments.room == fact.room) == fact.wanted;
    case Op::Bring:
        return fact.test != Test::Exists;
    default:
        return true;
    }
}

bool Errand::Change(const Fact& fact, int depth) {
    const Cell cell = CellOf(world_, fact);
    if (cell == FirstWait)
        return false;
    std::vector<NodeId> writers;
    for (const NodeId writer : causes_.WritersOf(cell))
        if (CanHelp(fact, writer))
            writers.push_back(writer);
    const bool isVariable = fact.test >= Test::Equal && fact.test <= Test::Less;
    const std::vector<Capture>& captures = causes_.CapturesOf(isVariable ? fact.name : None);
    for (int tries = 0; tries < MostWriters && writers.size() + captures.size() > 0; ++tries) {
        const std::uint64_t drawn = player_.Draw(writers.size() + captures.size());
        if (drawn >= writers.size()) {
            if (TryCapture(fact, captures[drawn - writers.size()], depth))
                return true;
        } else if (TryWriter(fact, writers[drawn], depth))
            return true;
        else
            writers.erase(writers.begin() + static_cast<std::ptrdiff_t>(drawn));
        if (!isRunning_)
            return false;
    }
    return false;
}

bool Errand::TryWriter(const Fact& fact, NodeId writer, int depth) {
    const Cell cell = CellOf(world_, fact);
    const auto isDone = [&] {
        // Of a thing that is to be shown, all its switches count.
        return fact.test == Test::Exists && fact.wanted ? player_.Now()[cell + Switches] == 0
                                                        : Holds(world_, player_.Now(), fact);
    };
    const std::string before = wantedText_;
    if (fact.test >= Test::Equal && fact.test <= Test::Less)
        wantedText_ = fact.text;
    bool goesOn = true;
    for (int k = 0; k < MostRepeats && goesOn && !isDone(); ++k) {
        const std::int64_t held = player_.Now()[cell];
        goesOn = RunChain(writer, {}, depth - 1);
        // Only what counts is worth doing again.
        goesOn = goesOn && (player_.Now()[cell] != held || k == 0) && fact.test >= Test::Equal;
    }
    wantedText_ = before;
    return isRunning_ && isDone();
}

bool Errand::TryCapture(const Fact& fact, const Capture& capture, int depth) {
    if (capture.room != None && !Travel(capture.room, depth - 1))
        return false;
    const std::string text =
        fact.wanted == (fact.test != Test::Differ) ? std::string(fact.text) : "something";
    return Do(options_.LineOf(*capture.command, fact.name, text)) && Holds(world_, player_.Now(), fact);
}

} // namespace zem::walk
