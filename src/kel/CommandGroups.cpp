#include "kel/CommandGroups.h"

#include "base/LineText.h"

#include <algorithm>

namespace zem {

namespace {

struct GroupedKeywords {
    const char* name;
    std::vector<std::string_view> keywords;
};

const std::vector<GroupedKeywords>& Groups() {
    static const std::vector<GroupedKeywords> groups = {
        {"Printing", {"msg", "say", "text", "line", "clear", "key", "colour", "fontname", "fontsize"}},
        {"Pictures and sounds", {"picture", "sound", "music", "silence"}},
        {"Moving the player", {"goto", "back", "look"}},
        {"The player's items", {"give", "lose", "lose all"}},
        {"Things",
         {"show", "hide", "reveal", "conceal", "bring", "move object", "move character", "object on",
          "object off", "character on", "character off"}},
        {"Rooms and exits", {"room on", "room off", "exit on", "exit off", "exit to"}},
        {"Variables", {"set", "append", "ask", "add", "subtract", "multiply", "roll"}},
        {"Collectables", {"set amount", "gain", "spend"}},
        {"Flags", {"flag on", "flag off", "flag flip"}},
        {"Scripts and menus",
         {"do", "pick", "repeat", "every object", "every character", "while", "choose", "type"}},
        {"Time", {"pause", "after", "timer on", "timer off"}},
        {"The end of the game", {"win", "die", "restart"}},
    };
    return groups;
}

std::size_t GroupOf(const CommandDefinition& command) {
    const auto found = std::find_if(Groups().begin(), Groups().end(), [&](const GroupedKeywords& group) {
        return std::any_of(group.keywords.begin(), group.keywords.end(), [&](std::string_view keyword) {
            return EqualIgnoringCase(keyword, command.Keyword);
        });
    });
    return static_cast<std::size_t>(found - Groups().begin());
}

/// Whether a word of the text begins with the word.
bool HasWordThatBegins(std::string_view text, std::string_view word) {
    for (const std::string_view candidate : SplitAt(text, " "))
        if (BeginsWith(candidate, word))
            return true;
    return false;
}

} // namespace

std::vector<CommandGroup> GroupsOfCommands(const CommandLookup& commands) {
    std::vector<CommandGroup> groups;
    for (const GroupedKeywords& group : Groups())
        groups.push_back({group.name, {}});
    groups.push_back({"Other commands", {}});
    for (const CommandDefinition& command : commands.Catalogue())
        if (!BeginsWith(command.Keyword, "if"))
            groups[GroupOf(command)].commands.push_back(&command);
    std::erase_if(groups, [](const CommandGroup& group) { return group.commands.empty(); });
    return groups;
}

bool HasWords(const CommandDefinition& command, std::string_view words) {
    for (const std::string_view word : SplitAt(words, " "))
        if (!word.empty() && !HasWordThatBegins(command.Keyword, word) &&
            !HasWordThatBegins(command.FriendlyName, word))
            return false;
    return true;
}

} // namespace zem
