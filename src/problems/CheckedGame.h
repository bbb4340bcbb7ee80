#pragma once

#include "game/ScriptOwners.h"
#include "kel/CommandLookup.h"
#include "kel/ScriptLine.h"
#include "model/GameModel.h"
#include "model/NameKind.h"
#include "model/Place.h"
#include "problems/NameSet.h"
#include "problems/Problem.h"
#include "reader/InspectFile.h"
#include "reader/SourceLines.h"

#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace zem::problems {

/// The files in the folder of the game. Names are in Windows-1252, without folders.
class FilesBeside {
public:
    virtual ~FilesBeside() = default;

    /// The bytes of a file; nothing when it cannot be read.
    virtual std::optional<std::string> Read(const std::string& name) const = 0;

    /// The names of all files.
    virtual std::vector<std::string> Names() const = 0;
};

/// The file that the game was read from, for what the game itself does not tell. It is true of the game as
/// long as nothing was saved over it.
struct SourceFile {
    std::string bytes;
    SourceLines lines;         // where the places of the game that was read stand in it
    FileInspection inspection; // what is odd about it
};

/// The libraries that a game includes, as far as they lie beside it.
struct Libraries {
    std::vector<GameModel> games;
    std::vector<std::string> missing; // what is included and cannot be read, but the built-in verbs
};

/// Reads the libraries of a game and those that they include. They change only with `game.Includes` and with
/// their files, so whoever checks often keeps them.
Libraries ReadLibraries(const GameModel& game, const FilesBeside& files);

/// What is checked, and what is known besides.
struct CheckInput {
    GameModel game;                          // is copied, which costs a few pointers
    const CommandLookup* commands = nullptr; // outlives the check
    std::shared_ptr<const Libraries> libraries = std::make_shared<Libraries>();
    std::shared_ptr<const SourceFile> source; // null when nobody has it
    std::shared_ptr<const FilesBeside> files; // null when the game has no folder: nothing is said of files
    std::string language;                     // of the texts: "en_GB"; empty when the author has not told
};

/// A line of a script of the game that is no comment and not blank.
struct CheckedLine {
    Place place; // the line's bytes in the text of its field
    std::string_view text;
    ScriptLine parsed; // has no calls when the line has a problem

    /// The place of bytes of the line.
    Place At(TextRange range) const;
};

/// A command or a condition in a line.
struct CheckedCall {
    const CheckedLine* line = nullptr;
    const ScriptCall* call = nullptr;
    bool isCondition = false;
    bool isNegated = false;
    std::span<const ParameterPart> parts; // ranges of the line; none without a parameter

    /// The text of part `index`, from 0; empty when there is none.
    std::string_view Part(std::size_t index) const {
        return index < parts.size() ? parts[index].range.Of(line->text) : std::string_view();
    }
    std::string_view Keyword() const { return call->keyword.Of(line->text); }
    Place At(std::size_t index) const { return line->At(parts[index].range); }
};

/// A script that has lines.
struct CheckedScript {
    Place place; // the whole field
    std::span<const CheckedLine> lines;
    std::span<const CheckedCall> calls;
};

class ScriptFlow;
class WaysThrough;
struct NameUse;
struct PrintedText;

/// A game made ready for its checks: what several of them ask for is worked out once. Belongs to one thread.
class CheckedGame {
public:
    explicit CheckedGame(CheckInput input);
    ~CheckedGame();

    CheckedGame(const CheckedGame&) = delete; // the parts point at one another
    CheckedGame& operator=(const CheckedGame&) = delete;

    const CheckInput& Input() const { return input_; }
    const GameModel& Game() const { return input_.game; }
    const CommandLookup& Commands() const { return *input_.commands; }
    const SourceFile* Source() const { return input_.source.get(); }
    const FilesBeside* Files() const { return input_.files.get(); }
    const std::vector<GameModel>& LibraryGames() const { return input_.libraries->games; }

    /// All lines of all scripts, those of timers included, in the order of the game.
    const std::vector<CheckedLine>& Lines() const { return lines_; }

    /// All commands and conditions of these lines, in the same order.
    const std::vector<CheckedCall>& Calls() const { return calls_; }

    /// All scripts, in the same order.
    const std::vector<CheckedScript>& Scripts() const { return scripts_; }

    /// Those of a keyword of the catalogue, in small letters: "goto", "if has".
    const std::vector<const CheckedCall*>& CallsOf(std::string_view keyword) const;

    /// The names of rooms, objects, characters, things, items, procedures (internal ones included), texts,
    /// menus or collectables that the game and its libraries have.
    const NameSet& Names(NameKind kind) const;

    /// Those of the game alone.
    const NameSet& OwnNames(NameKind kind) const;

    /// Whether something may have the name of which Zem knows nothing: a library is missing, or a block of an
    /// unknown kind holds it.
    bool MayBeUnknown(std::string_view name) const;

    /// The level of a problem that is none if something unknown has the name: an error becomes a warning, a
    /// warning a hint.
    Level Softened(Level level, std::string_view name) const;

    /// Whether the name fills a part of some brackets in raw lines, in unknown blocks, or in the scripts of
    /// libraries: then it is used, in a way that nobody here understands.
    bool IsMentionedElsewhere(std::string_view name) const { return mentions_.contains(name); }

    /// Every use of a name of the kinds that lists hold: see NameUses.h. Found when it is first asked for.
    const std::vector<NameUse>& NameUses() const;

    /// Which scripts run which others. Found when it is first asked for.
    const ScriptFlow& Flow() const;

    /// All that players read: see PrintedTexts.h. Found when it is first asked for.
    const std::vector<PrintedText>& Prints() const;

    /// How the rooms hang together. Found when it is first asked for.
    const WaysThrough& Ways() const;

    /// Whether a word stands in raw lines, in unknown blocks or in the scripts of libraries.
    bool IsWordElsewhere(std::string_view word) const { return words_.contains(word); }

    /// The place in plain words; one in an internal procedure is told as its owner's.
    std::string Describe(const Place& place) const { return owners_.Describe(place); }
    const ScriptOwners& Owners() const { return owners_; }

private:
    void CollectLines();
    void AddLine(const Place& place, std::string_view text, TextRange range);
    void CollectCalls();
    void CollectScripts();
    void CollectNames(const GameModel& game, std::map<NameKind, NameSet>& names) const;
    void CollectMentions();
    void CollectMentionsIn(std::string_view text);

    CheckInput input_;
    ScriptOwners owners_;
    std::vector<CheckedLine> lines_;
    std::vector<CheckedCall> calls_;
    std::vector<ParameterPart> parts_; // of all calls
    std::vector<CheckedScript> scripts_;
    std::map<std::string, std::vector<const CheckedCall*>, std::less<>> callsOf_;
    std::map<NameKind, NameSet> ownNames_;
    std::map<NameKind, NameSet> names_; // with those of the libraries, when there are any
    std::unordered_set<std::string_view> mentions_;
    std::unordered_set<std::string_view> words_;
    bool mayHoldAnyName_ = false; // a library is missing
    mutable std::unique_ptr<const std::vector<NameUse>> nameUses_;
    mutable std::unique_ptr<const ScriptFlow> flow_;
    mutable std::unique_ptr<const std::vector<PrintedText>> prints_;
    mutable std::unique_ptr<const WaysThrough> ways_;
};

} // namespace zem::problems
