// Names that lead nowhere.
#include "base/LineText.h"
#include "problems/Checks.h"
#include "problems/Fixes.h"
#include "problems/NameUses.h"

#include <algorithm>
#include <array>
#include <utility>

namespace zem::problems {

namespace {

struct KindRow {
    NameKind kind;
    const char* id;   // of the check for names of the kind that lead nowhere
    const char* word; // in plain words
};

constexpr KindRow Kinds[] = {
    {NameKind::Room, "A01", "room"},
    {NameKind::Object, "A02", "object"},
    {NameKind::Character, "A03", "character"},
    {NameKind::Thing, "A04", "character or object"},
    {NameKind::Item, "A05", "item"},
    {NameKind::Procedure, "A06", "procedure"},
    {NameKind::TextSection, "A07", "text"},
    {NameKind::Menu, "A08", "menu"},
    {NameKind::Collectable, "A09", "collectable"},
};

const KindRow& RowOf(NameKind kind) {
    return *std::find_if(std::begin(Kinds), std::end(Kinds),
                         [&](const KindRow& row) { return row.kind == kind; });
}

/// Commands that do the same to objects and to characters.
constexpr std::pair<std::string_view, std::string_view> Twins[] = {
    {"show", "reveal"},
    {"hide", "conceal"},
    {"object on", "character on"},
    {"object off", "character off"},
    {"move object", "move character"},
    {"if object in", "if character in"},
};

/// The keyword that does to the other kind of thing what this one does; without "if". Empty for none.
std::string_view TwinOf(const CheckedCall& call) {
    const std::string_view keyword = call.call->entry->keyword;
    for (const auto& [object, character] : Twins) {
        const std::string_view twin = keyword == object ? character : keyword == character ? object : "";
        if (!twin.empty())
            return call.isCondition ? twin.substr(3) : twin;
    }
    return {};
}

bool IsStandardText(const NameUse& use) {
    return use.kind == NameKind::TextSection &&
           std::any_of(std::begin(StandardTexts), std::end(StandardTexts),
                       [&](const char* name) { return EqualIgnoringCase(use.name, name); });
}

/// What follows from a name that leads nowhere: "so "goto <Kichen>" does nothing."
std::string Consequence(const NameUse& use) {
    if (use.call != nullptr && use.call->isCondition)
        return use.call->isNegated ? ", so this condition is always true."
                                   : ", so this condition is never true.";
    if (use.call != nullptr)
        return ", so " + QuoteShortly(use.call->Keyword()) + " does nothing here.";
    switch (use.place.steps[0].list == FieldId::None ? FieldId::GameStartRoom : use.place.steps[1].list) {
    case FieldId::GameStartRoom:
        return ", so the game cannot begin.";
    case FieldId::RoomPlaces:
        return ", so the player cannot go to this place. The OK of the room's editor would drop it.";
    default:
        return use.kind == NameKind::Room
                   ? ", so the player cannot go there. The OK of the room's editor would drop the exit."
                   : ", so the player never has it and this script never runs.";
    }
}

Fix Create(const NameUse& use) {
    const std::string name(use.name);
    return ChangeGame("Create " + name, [name, kind = use.kind](GameModel& game) {
        switch (kind) {
        case NameKind::Room:
            game.Rooms.Append().Name = name;
            break;
        case NameKind::Procedure:
            game.Procedures.Append({name, ""});
            break;
        case NameKind::TextSection:
            game.TextSections.Append({name, ""});
            break;
        case NameKind::Collectable:
            game.Collectables.Append({name + " p=0", name});
            break;
        default:
            game.SelectionMenus.Append().Name = name;
        }
    });
}

Fix CreateObjectAt(const NameUse& use) {
    return ChangeGame("Create " + std::string(use.name),
                      [name = std::string(use.name), place = use.place](GameModel& game) {
                          const bool isInRoom = place.steps[0].list == FieldId::GameRooms;
                          const int room = isInRoom ? place.steps[0].entry : 1;
                          if (room <= game.Rooms.Count())
                              game.Rooms.Edit(room).Objects.Append().Name = name;
                      });
}

std::vector<Fix> FixesFor(const CheckedGame& game, const NameUse& use) {
    std::vector<Fix> fixes;
    const std::string_view nearest = game.Names(use.kind).Nearest(use.name);
    if (!nearest.empty() && !nearest.starts_with(InternalProcedure))
        fixes.push_back(ReplaceBytes(ChangeTo(nearest), use.place, use.name, std::string(nearest)));
    if (use.kind == NameKind::Item)
        fixes.push_back(ChangeGame("Add " + std::string(use.name) + " to the items",
                                   [name = std::string(use.name)](GameModel& changed) {
                                       changed.Items.Append({name, false});
                                   }));
    else if (use.kind == NameKind::Object)
        fixes.push_back(CreateObjectAt(use));
    else if (use.kind != NameKind::Character && use.kind != NameKind::Thing &&
             !use.name.starts_with(InternalProcedure) &&
             use.name.find_first_of(";{}") == std::string_view::npos &&
             (use.kind != NameKind::Collectable || use.name.find_first_of(" ,") == std::string_view::npos))
        fixes.push_back(Create(use));
    if (use.call == nullptr && use.place.Depth() > 1)
        fixes.push_back(RemoveRecord("Remove it", use.place));
    return fixes;
}

/// A name of the other kind of thing: what is meant is clear, but the command knows objects or characters
/// only.
bool ReportWrongKind(const CheckedGame& game, const NameUse& use, Findings& findings) {
    if (use.call == nullptr || (use.kind != NameKind::Object && use.kind != NameKind::Character))
        return false;
    const bool wantsObject = use.kind == NameKind::Object;
    const std::string_view twin = TwinOf(*use.call);
    if (twin.empty() || !game.Names(wantsObject ? NameKind::Character : NameKind::Object).Has(use.name))
        return false;
    const TextRange keyword = use.call->call->keyword;
    Fix fix =
        ReplaceBytes(ChangeTo(twin), use.call->line->At(keyword), use.call->Keyword(), std::string(twin));
    fix.needsNoChoice = true;
    findings
        .Add("A11", use.call->line->At(keyword),
             QuoteShortly(use.name) + " is " + (wantsObject ? "a character" : "an object") + ", and " +
                 QuoteShortly(use.call->Keyword()) + " knows " + (wantsObject ? "objects" : "characters") +
                 " only.")
        .fixes = {fix};
    return true;
}

void FindLostNames(const CheckedGame& game, Findings& findings) {
    for (const NameUse& use : game.NameUses()) {
        const NameSet& names = game.Names(use.kind);
        if (names.Has(use.name) || IsStandardText(use))
            continue;
        if (IsMadeOfVariables(use.name)) {
            findings.Add("A15", use.place,
                         "Only a game that is played can tell what " + QuoteShortly(use.name) + " is.");
            continue;
        }
        const std::string_view other = names.InOtherCapitals(use.name);
        if (!other.empty()) {
            Fix fix = ReplaceBytes(ChangeTo(other), use.place, use.name, std::string(other));
            fix.needsNoChoice = true;
            findings
                .Add("A10", use.place,
                     QuoteShortly(use.name) + " is written " + QuoteShortly(other) +
                         " elsewhere, and capitals count in names" + Consequence(use))
                .fixes = {fix};
            continue;
        }
        if (ReportWrongKind(game, use, findings))
            continue;
        const KindRow& row = RowOf(use.kind);
        Problem& problem = findings.Add(row.id, use.place,
                                        std::string("There is no ") + row.word + ' ' +
                                            QuoteShortly(use.name) + Consequence(use));
        problem.level = game.Softened(problem.level, use.name);
        problem.fixes = FixesFor(game, use);
    }
}

} // namespace

std::span<const Check> NameChecks() {
    static constexpr Check Rows[] = {
        {"A01", Level::Error, "Rooms that are not there", FindLostNames},
        {"A02", Level::Error, "Objects that are not there", FindLostNames},
        {"A03", Level::Error, "Characters that are not there", FindLostNames},
        {"A04", Level::Error, "Neither characters nor objects", FindLostNames},
        {"A05", Level::Error, "Items that are not in the list", FindLostNames},
        {"A06", Level::Error, "Procedures that are not there", FindLostNames},
        {"A07", Level::Error, "Texts that are not there", FindLostNames},
        {"A08", Level::Error, "Menus that are not there", FindLostNames},
        {"A09", Level::Error, "Collectables that are not there", FindLostNames},
        {"A10", Level::Error, "Names with other capitals", FindLostNames},
        {"A11", Level::Error, "Objects taken for characters, and the other way round", FindLostNames},
        {"A15", Level::Hint, "Names made of variables", FindLostNames, true},
    };
    return Rows;
}

} // namespace zem::problems
