#include "game/PrintGame.h"

#include "base/LineText.h"
#include "kel/IfLine.h"

#include <string_view>
#include <unordered_map>
#include <vector>

namespace zem {

namespace {

constexpr std::string_view LineEnd = "\r\n";

/// Puts the text together, two blanks for each step of indentation.
class Listing {
public:
    Listing(const GameModel& game, const CommandLookup& commands) : commands_(commands) {
        for (const Procedure& procedure : game.Procedures)
            internal_.emplace(procedure.Name, &procedure.Script); // the first of a name counts
    }

    void Line(int indent, std::string_view line) {
        text_.append(static_cast<std::size_t>(indent) * 2, ' ').append(line).append("\n");
    }

    void Heading(const std::string& heading) {
        text_ += "\n";
        Line(0, heading);
    }

    /// "name: value", unless the value is empty.
    void Field(int indent, const std::string& name, std::string_view value) {
        if (!value.empty())
            Line(indent, name + ": " + std::string(value));
    }

    /// Several lines of text below their name.
    void Lines(int indent, const std::string& name, std::string_view text) {
        if (text.empty())
            return;
        Line(indent, name + ":");
        if (text.ends_with(LineEnd))
            text.remove_suffix(LineEnd.size());
        for (const std::string_view line : SplitAt(text, LineEnd))
            Line(indent + 1, line);
    }

    /// A script: beside its name when it is one line, below it otherwise.
    void Script(int indent, const std::string& name, const std::string& script) {
        const std::string& expanded = Expand(script);
        std::vector<std::string> lines;
        for (const std::string_view line : SplitAt(expanded, LineEnd))
            if (!Trim(line).empty())
                lines.push_back(Describe(std::string(line)));
        if (lines.size() == 1) {
            Field(indent, name, lines.front());
            return;
        }
        if (!lines.empty())
            Line(indent, name + ":");
        for (const std::string& line : lines)
            Line(indent + 1, line);
    }

    void Pairs(int indent, const std::string& name, const RecordList auto& pairs) {
        for (const ScriptPair& pair : pairs)
            ScriptWithKey(indent, name + " \"" + pair.Key + "\"", pair.Script);
    }

    /// A script, or its name alone when it is empty.
    void ScriptWithKey(int indent, const std::string& name, const std::string& script) {
        if (script.empty())
            Line(indent, name);
        else
            Script(indent, name, script);
    }

    std::string Take() { return std::move(text_); }

private:
    /// The body of the internal procedure, if that is all that the script calls.
    const std::string& Expand(const std::string& script) const {
        if (!BeginsWith(script, "do <~") || script.find('>') == std::string::npos)
            return script;
        const auto procedure = internal_.find(GetParameter(script));
        return procedure == internal_.end() ? script : *procedure->second;
    }

    std::string Describe(const std::string& line) const {
        return commands_.Catalogue().IsEmpty() ? line // nothing to tell it better by
                                               : DescribeLine(line, commands_);
    }

    const CommandLookup& commands_;
    std::unordered_map<std::string_view, const std::string*> internal_; // procedures by their names
    std::string text_;
};

void PrintProperties(Listing& listing, const GameModel& game) {
    listing.Line(0, game.GameName.empty() ? "(a game without a name)" : game.GameName);
    listing.Field(1, "author", game.GameAuthor);
    listing.Field(1, "version", game.GameVersion);
    listing.Field(1, "copyright", game.GameCopyright);
    listing.Field(1, "about", game.GameInfo);
    listing.Field(1, "font", game.DefaultFontName);
    if (game.DefaultFontSize != 0)
        listing.Field(1, "font size", std::to_string(game.DefaultFontSize));
    listing.Field(1, "start room", game.StartRoom);
    if (!(game.Items.Count() == 1 && game.Items[1].Name.empty()))
        listing.Field(1, "items", ItemsToText(game));
    listing.Field(1, "the player starts with", StartItemsToText(game));
    listing.Field(1, "collectables", CollectablesToText(game));
    for (const std::string& library : game.Includes)
        listing.Field(1, "library", library);
    listing.Script(1, "at the start", game.StartScript);
    listing.Script(1, "description", game.GameDescription);
    listing.Script(1, "before each turn", game.BeforeTurnScript);
    listing.Script(1, "after each turn", game.AfterTurnScript);
    for (const PlayerCommand& command : game.PlayerCommands)
        listing.ScriptWithKey(1, "command \"" + command.Pattern + "\"", command.Script);
    listing.Pairs(1, "use", game.GameUses);
    for (const ErrorMessage& error : game.ErrorMessages)
        listing.Field(1, "message " + error.Name, error.GameText);
    for (const SynonymEntry& synonym : game.Synonyms)
        listing.Line(1, "synonym: " + synonym.Words + " = " + synonym.ConvertTo);
    if (game.NoDebug)
        listing.Line(1, "without debugging");
    listing.Lines(1, "tags", *game.GameMiscTags);
}

void PrintExits(Listing& listing, const Room& room) {
    const auto exit = [&](const std::string& direction, const ScriptPair& pair) {
        if (pair.Key == ActionExit)
            listing.ScriptWithKey(1, direction, pair.Script);
        else if (!pair.Key.empty())
            listing.Field(1, direction, pair.Key);
    };
    exit("out", {room.Out->Key, ""});
    if (!room.Out->Key.empty())
        listing.Script(1, "on the way out", room.Out->Script);
    for (const auto& [direction, member] : CompassExits)
        exit(direction, *(room.*member));
    listing.Pairs(1, "place", room.Places);
}

void PrintThings(Listing& listing, const std::string& kind, const List<Thing>& things) {
    for (const Thing& thing : things) {
        std::string name = thing.Prefix.empty() ? thing.Name : thing.Prefix + " " + thing.Name;
        if (thing.Name.empty())
            name += "(without a name)";
        name += thing.Suffix.empty() ? "" : " " + thing.Suffix;
        name += thing.Hidden ? " (hidden)" : "";
        name += thing.Invisible ? " (invisible)" : "";
        listing.Field(1, kind, name);
        listing.Field(2, "gender", thing.Gender);
        listing.Script(2, "look", thing.Look);
        listing.Script(2, "speak", thing.Speak);
        listing.Script(2, "take", thing.Take);
        listing.Pairs(2, "give", thing.Gives);
        listing.Pairs(2, "use", thing.Uses);
        listing.Lines(2, "tags", thing.MiscTags);
    }
}

void PrintRoom(Listing& listing, const Room& room) {
    listing.Heading("Room " + room.Name + (room.Alias.empty() ? "" : " [" + room.Alias + "]"));
    listing.Field(1, "prefix", room.Prefix);
    listing.Field(1, "description prefix", room.InDescription);
    listing.Field(1, "look", room.Look);
    PrintExits(listing, room);
    listing.Script(1, "on entering", room.Script);
    listing.Script(1, "description", room.Description);
    listing.Pairs(1, "command", room.Commands);
    listing.Pairs(1, "use", room.Uses);
    PrintThings(listing, "character", room.Characters);
    PrintThings(listing, "object", room.Objects);
    listing.Lines(1, "tags", room.MiscTags);
}

void PrintBlocks(Listing& listing, const GameModel& game) {
    for (const Procedure& procedure : game.Procedures)
        listing.ScriptWithKey(0, "\nProcedure " + procedure.Name, procedure.Script);
    for (const TextSection& section : game.TextSections)
        if (!section.Text.empty())
            listing.Lines(0, "\nText " + section.Name, section.Text);
    for (const SelectionMenu& menu : game.SelectionMenus) {
        listing.Heading("Menu " + menu.Name);
        listing.Field(1, "prompt", menu.Info);
        listing.Pairs(1, "choice", menu.Choices);
    }
    listing.Lines(0, "\nOther blocks", *game.UnknownBlocks);
}

} // namespace

std::string PrintGame(const GameModel& game, const CommandLookup& commands) {
    Listing listing(game, commands);
    PrintProperties(listing, game);
    for (const Room& room : game.Rooms)
        PrintRoom(listing, room);
    PrintBlocks(listing, game);
    return listing.Take();
}

} // namespace zem
