// Items that a player must have to get where they are.
#include "base/LineText.h"
#include "problems/Checks.h"
#include "problems/NameUses.h"
#include "problems/ScriptFlow.h"
#include "problems/WaysThrough.h"

#include <algorithm>
#include <set>
#include <unordered_map>
#include <unordered_set>

namespace zem::problems {

namespace {

using Names = std::vector<std::string_view>;

/// Something that a script does, and the items without which it does not.
struct Deed {
    enum class Kind { GoTo, Run, Choose, Give } kind;
    std::string_view name;
    Names needs;
};

/// Calls visit(action, needs) for the commands of a line with the items that its "if"s ask for. A condition
/// that has another way to be true asks for nothing.
template <class Visit>
void ForEachCommand(const CheckedLine& line, std::size_t index, const Names& needs, Visit visit) {
    const ScriptAction& action = line.parsed.actions[index];
    if (!action.IsIf()) {
        visit(action, needs);
        return;
    }
    Names inner = needs;
    bool areAllNeeded = true;
    for (std::size_t k = 0; k < action.conditionCount; ++k) {
        const ScriptCondition& condition = line.parsed.conditions[action.firstCondition + k];
        areAllNeeded &= k == 0 || condition.joiner == Joiner::And;
        const CommandEntry* entry = condition.call.entry;
        if (entry != nullptr && entry->keyword == "if has" && !condition.isNegated)
            inner.push_back(Trim(condition.call.parameter.Of(line.text)));
    }
    ForEachCommand(line, action.thenAction, areAllNeeded ? inner : needs, visit);
    if (action.elseAction != 0)
        ForEachCommand(line, action.elseAction, needs, visit);
}

/// Which items can be had when one of them cannot be used.
class ItemSearch {
public:
    explicit ItemSearch(const CheckedGame& game)
        : game_(game),
          ways_(game.Ways()),
          deeds_(game.Scripts().size()) {
        CollectDeeds();
        int number = 0;
        for (const CheckedScript& script : game.Scripts()) {
            const PlaceStep step = script.place.steps[0];
            if (step.list == FieldId::GameRooms && !IsOfMovedThing(script.place))
                ofRoom_[step.entry].push_back(number);
            else if (step.list == FieldId::GameProcedures)
                ofProcedure_[game.Game().Procedures[step.entry].Name].push_back(number);
            else if (step.list == FieldId::GameSelectionMenus)
                ofMenu_[game.Game().SelectionMenus[step.entry].Name].push_back(number);
            else
                ofGame_.push_back(number);
            ++number;
        }
    }

    /// Whether anything could be checked: a name that a variable makes may be any.
    bool IsCertain() const { return isCertain_; }

    /// The items that some way or script needs.
    const std::set<std::string_view>& Needed() const { return needed_; }

    /// Whether any script that gives the item can run for who does not have it.
    bool CanBeHadWithout(std::string_view item, bool canUseIt) {
        item_ = item;
        canUseIt_ = canUseIt;
        isFound_ = false;
        rooms_.clear();
        scripts_.clear();
        for (const int script : ofGame_)
            Run(script);
        EnterRoom(ways_.RoomOf(game_.Game().StartRoom));
        int room = 0;
        for (const Room& one : game_.Game().Rooms)
            if (++room; game_.IsMentionedElsewhere(one.Name))
                EnterRoom(room);
        for (const auto& [name, scripts] : ofProcedure_)
            if (game_.IsMentionedElsewhere(name))
                RunAll(scripts);
        while (!isFound_ && !open_.empty()) {
            const int script = open_.back();
            open_.pop_back();
            for (const Deed& deed : deeds_[static_cast<std::size_t>(script)])
                if (canUseIt_ || std::find(deed.needs.begin(), deed.needs.end(), item_) == deed.needs.end())
                    Do(deed);
        }
        open_.clear();
        return isFound_;
    }

private:
    void AddDeed(std::size_t script, const CheckedLine& line, const ScriptAction& action,
                 const Names& needs) {
        if (action.call.entry == nullptr)
            return;
        const std::string_view keyword = action.call.entry->keyword;
        std::size_t part = 0;
        ForEachPart(action.call.parameter.Of(line.text), action.call.entry->syntax,
                    [&](TextRange range, NameKind kind) {
                        const std::string_view name = range.Of(action.call.parameter.Of(line.text));
                        const bool isWay =
                            (keyword == "goto" && part == 0) || (keyword == "exit to" && part == 2);
                        const bool isGift = keyword == "give" && part == 0;
                        const bool isRun = kind == NameKind::Procedure || kind == NameKind::Menu;
                        ++part;
                        if (!isWay && !isGift && !isRun)
                            return;
                        isCertain_ &= !IsMadeOfVariables(name);
                        needed_.insert(needs.begin(), needs.end());
                        deeds_[script].push_back({isWay                         ? Deed::Kind::GoTo
                                                  : isGift                      ? Deed::Kind::Give
                                                  : kind == NameKind::Procedure ? Deed::Kind::Run
                                                                                : Deed::Kind::Choose,
                                                  name, needs});
                    });
        if (keyword == "bring" || keyword == "move object" || keyword == "move character") {
            const std::string_view parameter = action.call.parameter.Of(line.text);
            moved_.insert(Trim(parameter.substr(0, parameter.find(';'))));
        }
    }

    void CollectDeeds() {
        std::size_t number = 0;
        for (const CheckedScript& script : game_.Scripts()) {
            for (const CheckedLine& line : script.lines)
                if (!line.parsed.actions.empty())
                    ForEachCommand(line, 0, {}, [&](const ScriptAction& action, const Names& needs) {
                        AddDeed(number, line, action, needs);
                    });
            ++number;
        }
    }

    bool IsOfMovedThing(const Place& place) const {
        if (place.steps[1].list != FieldId::RoomObjects && place.steps[1].list != FieldId::RoomCharacters)
            return false;
        const Room& room = game_.Game().Rooms[place.steps[0].entry];
        const int entry = place.steps[1].entry;
        const std::string& name = place.steps[1].list == FieldId::RoomObjects ? room.Objects[entry].Name
                                                                              : room.Characters[entry].Name;
        return moved_.contains(name);
    }

    void Run(int script) {
        if (scripts_.insert(script).second)
            open_.push_back(script);
    }

    void RunAll(const std::vector<int>& scripts) {
        for (const int script : scripts)
            Run(script);
    }

    void EnterRoom(int first) {
        std::vector<int> entered = {first};
        while (!entered.empty()) {
            const int room = entered.back();
            entered.pop_back();
            if (room == 0 || !rooms_.insert(room).second)
                continue;
            if (const auto scripts = ofRoom_.find(room); scripts != ofRoom_.end())
                RunAll(scripts->second);
            for (const Way& way : ways_.Of(room).ways)
                entered.push_back(way.to);
        }
    }

    void Do(const Deed& deed) {
        const auto run = [&](const auto& all) {
            if (const auto found = all.find(deed.name); found != all.end())
                RunAll(found->second);
        };
        switch (deed.kind) {
        case Deed::Kind::GoTo:
            EnterRoom(ways_.RoomOf(deed.name));
            break;
        case Deed::Kind::Run:
            run(ofProcedure_);
            break;
        case Deed::Kind::Choose:
            run(ofMenu_);
            break;
        case Deed::Kind::Give:
            isFound_ |= deed.name == item_;
            break;
        }
    }

    const CheckedGame& game_;
    const WaysThrough& ways_;
    std::vector<std::vector<Deed>> deeds_;             // of each script
    std::unordered_map<int, std::vector<int>> ofRoom_; // scripts
    std::unordered_map<std::string_view, std::vector<int>> ofProcedure_;
    std::unordered_map<std::string_view, std::vector<int>> ofMenu_;
    std::vector<int> ofGame_; // and of things that scripts move, wherever they are
    std::unordered_set<std::string_view> moved_;
    std::set<std::string_view> needed_;
    bool isCertain_ = true;

    std::string_view item_;
    bool canUseIt_ = false;
    bool isFound_ = false;
    std::unordered_set<int> rooms_;
    std::unordered_set<int> scripts_;
    std::vector<int> open_; // scripts
};

void FindLockedAway(const CheckedGame& game, Findings& findings) {
    constexpr std::size_t Most = 20000; // commands; the search takes its time for each item
    if (game.Calls().size() > Most || !game.LibraryGames().empty() ||
        !game.Input().libraries->missing.empty() || game.CallsOf("if has").empty())
        return;
    ItemSearch search(game);
    if (!search.IsCertain())
        return;
    constexpr std::size_t MostSteps = 1000000; // in a large game not all items are looked at
    std::size_t left = MostSteps / (game.Calls().size() + 1) + 1;
    int entry = 0;
    for (const ItemEntry& item : game.Game().Items) {
        const Place place = Place::Of({{FieldId::GameItems, ++entry}});
        if (item.IsStartItem || !search.Needed().contains(item.Name) ||
            game.IsMentionedElsewhere(item.Name) || left == 0)
            continue;
        --left;
        if (!search.CanBeHadWithout(item.Name, false) && search.CanBeHadWithout(item.Name, true))
            findings.Add("L05", place,
                         "To get to where it is given, a player must have it already, so nobody can ever "
                         "have it.");
    }
}

} // namespace

std::span<const Check> LockedAwayChecks() {
    static constexpr Check Rows[] = {
        {"L05", Level::Warning, "Items that lie behind themselves", FindLockedAway},
    };
    return Rows;
}

} // namespace zem::problems
