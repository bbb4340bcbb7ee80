#include "writer/SaveGame.h"

#include "files/ReplaceFile.h"

#include <algorithm>
#include <string_view>

namespace zem {

namespace {

/// Puts lines together and passes them on in large pieces.
class LineWriter {
public:
    explicit LineWriter(Output& output) : output_(output) { buffer_.reserve(2 * PieceSize); }

    /// Writes one line made of the parts.
    template <class... Parts>
    void WriteLine(const Parts&... parts) {
        (buffer_.append(std::string_view(parts)), ...);
        buffer_.append("\r\n");
        if (buffer_.size() >= PieceSize)
            Flush();
    }

    /// Writes the keyword, a blank and the value in brackets, whether or not it is empty.
    void WriteTaggedLine(std::string_view keyword, std::string_view value) {
        WriteLine(keyword, " <", value, ">");
    }

    /// WriteTaggedLine, if the value is set.
    void WriteTaggedLineIfSet(std::string_view keyword, std::string_view value) {
        if (!value.empty())
            WriteTaggedLine(keyword, value);
    }

    /// Writes the keyword, which carries its blank, and the text after it, if that is set.
    void WriteLineIfSet(std::string_view keyword, std::string_view text) {
        if (!text.empty())
            WriteLine(keyword, text);
    }

    /// Writes a line for each pair: the key in brackets, a blank and the script, also when that is empty.
    void WritePairs(std::string_view keyword, const RecordList auto& pairs) {
        for (const ScriptPair& pair : pairs)
            WriteLine(keyword, " <", pair.Key, "> ", pair.Script);
    }

    /// Writes where an exit leads, and its script only if that is set.
    void WriteDestination(std::string_view keyword, const ScriptPair& pair) {
        if (pair.Script.empty())
            WriteTaggedLine(keyword, pair.Key);
        else
            WriteLine(keyword, " <", pair.Key, "> ", pair.Script);
    }

    void Flush() {
        output_.Write(buffer_);
        buffer_.clear();
    }

private:
    static constexpr std::size_t PieceSize = 65536;

    Output& output_;
    std::string buffer_;
};

void WriteHeader(LineWriter& writer, const GameModel& game, std::string path) {
    // A line end in a file's name would make a line of its own of what follows it.
    std::replace_if(
        path.begin(), path.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
    writer.WriteLine("' ", path, " created by ", NameAndVersion);
    writer.WriteLine();
    writer.WriteLine("'*** The following line is required by ZEM - please do not remove");
    writer.WriteTaggedLine("'ZEM-NIP", std::to_string(game.NextInternalProcedure));
    writer.WriteLine();
    for (const std::string& library : game.Includes)
        writer.WriteTaggedLine("!include", library);
    writer.WriteLine();
}

void WritePlayerCommands(LineWriter& writer, const GameModel& game) {
    for (const PlayerCommand& command : game.PlayerCommands)
        writer.WriteLine("command <", command.Pattern, "> ", command.Script);
}

void WriteGameBlock(LineWriter& writer, const GameModel& game) {
    writer.WriteTaggedLine("define game", game.GameName);
    writer.WriteTaggedLine("kel-version", game.KelVersion);
    writer.WriteTaggedLine("start", game.StartRoom);
    writer.WriteTaggedLine("game author", game.GameAuthor);
    writer.WriteTaggedLine("game version", game.GameVersion);
    writer.WriteTaggedLine("game copyright", game.GameCopyright);
    writer.WriteTaggedLine("game info", game.GameInfo);
    writer.WriteTaggedLine("default fontname", game.DefaultFontName);
    writer.WriteTaggedLine("default fontsize", std::to_string(game.DefaultFontSize));
    writer.WriteTaggedLine("items", ItemsToText(game));
    writer.WriteTaggedLine("startitems", StartItemsToText(game));
    writer.WriteTaggedLine("collectables", CollectablesToText(game));

    writer.WriteLineIfSet("startscript ", game.StartScript);
    writer.WriteLineIfSet("description ", game.GameDescription);
    writer.WriteLineIfSet("beforeturn ", game.BeforeTurnScript);
    writer.WriteLineIfSet("afterturn ", game.AfterTurnScript);
    WritePlayerCommands(writer, game);
    if (game.NoDebug)
        writer.WriteLine("nodebug");
    writer.WritePairs("use", game.GameUses);
    for (const ErrorMessage& error : game.ErrorMessages)
        if (!error.GameText.empty())
            writer.WriteLine("error <", error.Name, ";", error.GameText, ">");
    writer.WriteLineIfSet("", *game.GameMiscTags);
    writer.WriteLine("end define");
    writer.WriteLine();
}

// No blank line after the block: files on authors' disks have it so.
void WriteSynonyms(LineWriter& writer, const GameModel& game) {
    writer.WriteLine("define synonyms");
    for (const SynonymEntry& synonym : game.Synonyms)
        writer.WriteLine(synonym.Words, " = ", synonym.ConvertTo);
    writer.WriteLine("end define");
}

/// What follows the scripts of a character or an object.
void WriteRestOfThing(LineWriter& writer, const Thing& thing, const List<ScriptPair>& gives) {
    writer.WriteTaggedLineIfSet("prefix", thing.Prefix);
    writer.WriteTaggedLineIfSet("suffix", thing.Suffix);
    if (thing.Hidden)
        writer.WriteLine("hidden");
    if (thing.Invisible)
        writer.WriteLine("invisible");
    writer.WritePairs("give", gives);
    writer.WritePairs("use", thing.Uses);
    writer.WriteLine(thing.MiscTags);
    writer.WriteLine("end define");
}

void WriteCharacter(LineWriter& writer, const Thing& character) {
    writer.WriteTaggedLine("define character", character.Name);
    writer.WriteLineIfSet("look ", character.Look);
    writer.WriteLineIfSet("speak ", character.Speak);
    writer.WriteTaggedLineIfSet("gender", character.Gender);
    WriteRestOfThing(writer, character, character.Gives);
}

void WriteObject(LineWriter& writer, const Thing& object) {
    writer.WriteTaggedLine("define object", object.Name);
    writer.WriteLineIfSet("look ", object.Look);
    writer.WriteLineIfSet("take ", object.Take);
    WriteRestOfThing(writer, object, {}); // Nothing can be given to an object.
}

void WriteCompassExit(LineWriter& writer, std::string_view direction, const ScriptPair& exit) {
    if (exit.Key == ActionExit)
        writer.WriteLine(direction, " ", exit.Script);
    else
        writer.WriteTaggedLineIfSet(direction, exit.Key);
}

void WriteExits(LineWriter& writer, const Room& room) {
    if (!room.Out->Key.empty())
        writer.WriteDestination("out", *room.Out);
    for (const auto& [direction, exit] : CompassExits)
        WriteCompassExit(writer, direction, *(room.*exit));
    for (const ScriptPair& place : room.Places)
        writer.WriteDestination("place", place);
}

void WriteRoom(LineWriter& writer, const Room& room) {
    writer.WriteTaggedLine("define room", room.Name);
    writer.WriteTaggedLineIfSet("alias", room.Alias);
    writer.WriteTaggedLineIfSet("prefix", room.Prefix);
    writer.WriteTaggedLineIfSet("look", room.Look);
    WriteExits(writer, room);
    writer.WriteLineIfSet("script ", room.Script);
    writer.WriteLineIfSet("description ", room.Description);
    writer.WritePairs("command", room.Commands);
    writer.WritePairs("use", room.Uses);
    for (const Thing& character : room.Characters)
        WriteCharacter(writer, character);
    for (const Thing& object : room.Objects)
        WriteObject(writer, object);
    // Two blanks before "<": the keyword carries its own. Files on authors' disks have it, so it stays.
    writer.WriteTaggedLineIfSet("indescription ", room.InDescription);
    writer.WriteLine(room.MiscTags);
    writer.WriteLine("end define");
    writer.WriteLine();
}

/// A block whose body is written as it is, as one write: one line end follows whatever it ends in.
void WriteBodyBlock(LineWriter& writer, std::string_view keyword, std::string_view name,
                    std::string_view body) {
    writer.WriteTaggedLine(keyword, name);
    writer.WriteLine(body);
    writer.WriteLine("end define");
    writer.WriteLine();
}

// No blank line after a menu: files on authors' disks have it so.
void WriteSelectionMenu(LineWriter& writer, const SelectionMenu& menu) {
    writer.WriteTaggedLine("define selection", menu.Name);
    writer.WriteTaggedLine("info", menu.Info);
    writer.WritePairs("choice", menu.Choices);
    writer.WriteLine("end define");
}

void WriteBlocks(LineWriter& writer, const GameModel& game) {
    for (const Room& room : game.Rooms)
        WriteRoom(writer, room);
    for (const Procedure& procedure : game.Procedures)
        WriteBodyBlock(writer, "define procedure", procedure.Name, procedure.Script);
    for (const TextSection& section : game.TextSections)
        WriteBodyBlock(writer, "define text", section.Name, section.Text);
    for (const SelectionMenu& menu : game.SelectionMenus)
        WriteSelectionMenu(writer, menu);
}

} // namespace

void WriteGame(const GameModel& game, const std::string& path, Output& output) {
    LineWriter writer(output);
    WriteHeader(writer, game, path);
    WriteGameBlock(writer, game);
    WriteSynonyms(writer, game);
    WriteBlocks(writer, game);
    writer.WriteLine(*game.UnknownBlocks);
    writer.Flush();
}

void WriteRecords(const GameModel& game, const Room& things, Output& output) {
    LineWriter writer(output);
    writer.WriteTaggedLineIfSet("items", ItemsToText(game));
    writer.WriteTaggedLineIfSet("startitems", StartItemsToText(game));
    writer.WriteTaggedLineIfSet("collectables", CollectablesToText(game));
    WritePlayerCommands(writer, game);
    writer.WritePairs("use", game.GameUses);
    if (!game.Synonyms.IsEmpty())
        WriteSynonyms(writer, game);
    for (const Thing& character : things.Characters)
        WriteCharacter(writer, character);
    for (const Thing& object : things.Objects)
        WriteObject(writer, object);
    WriteBlocks(writer, game);
    writer.WriteLineIfSet("", *game.UnknownBlocks);
    writer.Flush();
}

void SaveGame(GameModel& game, const std::string& path, Host& host) {
    if (game.StartRoom.empty())
        host.ShowNotice("This game has no start place defined. The game will not work properly in Veldt "
                        "unless a start room is selected from the Game Properties window.\r\n\r\n"
                        "Click OK to continue saving this game.",
                        "No start place");
    host.ShowStage("Saving file...");
    ReplaceFile(path, [&](const std::string& file) {
        OutputFile output(file);
        WriteGame(game, path, output);
        output.Close();
    });
    game.FileName = path;
    game.Modified = false;
}

} // namespace zem
