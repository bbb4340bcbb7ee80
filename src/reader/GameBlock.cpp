#include "reader/BlockReaders.h"
#include "reader/Keywords.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace zem {

namespace {

constexpr Keyword<GameModel> GameRows[] = {
    {"start ", FieldId::GameStartRoom, reads::Parameter<&GameModel::StartRoom>},
    {"game author ", FieldId::GameAuthor, reads::Parameter<&GameModel::GameAuthor>},
    {"game version ", FieldId::GameVersion, reads::Parameter<&GameModel::GameVersion>},
    {"game copyright ", FieldId::GameCopyright, reads::Parameter<&GameModel::GameCopyright>},
    {"game info ", FieldId::GameInfo, reads::Parameter<&GameModel::GameInfo>},
    {"startscript ", FieldId::GameStartScript, reads::TrimmedRest<&GameModel::StartScript>},
    {"beforeturn ", FieldId::GameBeforeTurnScript, reads::TrimmedRest<&GameModel::BeforeTurnScript>},
    {"afterturn ", FieldId::GameAfterTurnScript, reads::TrimmedRest<&GameModel::AfterTurnScript>},
    {"description ", FieldId::GameDescription, reads::TrimmedRest<&GameModel::GameDescription>},
    {"default fontname ", FieldId::GameDefaultFontName, reads::Parameter<&GameModel::DefaultFontName>},
    {"default fontsize ", FieldId::GameDefaultFontSize,
     [](GameModel& game, std::string_view line, std::string_view) {
         game.DefaultFontSize = WholeNumber(GetParameter(line));
     }},
    {"command ", FieldId::GamePlayerCommands, reads::AppendPair<&GameModel::PlayerCommands>},
    {"use ", FieldId::GameUses, reads::AppendPair<&GameModel::GameUses>},
    // Other readers take these; the version line is replaced by the current one.
    {"possitems ", FieldId::None, reads::Nothing},
    {"items ", FieldId::None, reads::Nothing},
    {"startitems ", FieldId::None, reads::Nothing},
    {"collectables ", FieldId::None, reads::Nothing},
    {"kel-version ", FieldId::None, reads::Nothing},
    {"error ", FieldId::None, reads::Nothing},
};

constexpr std::size_t ShortestGameWord =
    std::min_element(std::begin(GameRows), std::end(GameRows), [](const auto& a, const auto& b) {
        return a.word.size() < b.word.size();
    }) -> word.size();

struct HashIgnoringCase {
    std::size_t operator()(std::string_view text) const {
        std::uint64_t hash = 0; // on the web, sizes have 32 bits
        for (const char c : text) {
            hash = (hash ^ static_cast<unsigned char>(Lower(c))) * 0x9E3779B97F4A7C15U;
            hash ^= hash >> 32U; // names that were made to collide without it are easy to find
        }
        return static_cast<std::size_t>(hash);
    }
};

struct SameIgnoringCase {
    bool operator()(std::string_view a, std::string_view b) const { return EqualIgnoringCase(a, b); }
};

/// Views of names, found whatever their capitals.
using NamesIgnoringCase = std::unordered_set<std::string_view, HashIgnoringCase, SameIgnoringCase>;

/// Gives each inner line of the game block to `use`.
template <class Use>
void UseGameLines(const SourceText& source, Use use) {
    source.UseInnerLines(source.GameBlock(), use);
}

enum class Cut {
    AtNearest,   // at the nearer of "," and ";"
    AtCommaFirst // at the next "," while there is one, so a list separated by ";" alone is one piece
};

/// Splits a list and gives each trimmed piece to `use`. An empty list is one empty piece.
template <class Use>
void SplitList(std::string_view list, Cut cut, Use use) {
    while (true) {
        // The end of the list counts as a comma, so a ";" is never the only cut left.
        const auto end = std::find_if(list.begin(), list.end(), [cut](char c) {
            return c == ',' || (c == ';' && cut == Cut::AtNearest);
        });
        const auto size = static_cast<std::size_t>(end - list.begin());
        use(Trim(list.substr(0, size)));
        if (size == list.size())
            return;
        list.remove_prefix(size + 1);
    }
}

} // namespace

void ReadGameBlock(GameModel& game, const SourceText& source) {
    const BlockSpan block = source.GameBlock();
    const RecordNotes notes{source, {}};
    if (block.FirstLine != 0)
        source.UseLine(block.FirstLine, [&](std::string_view line) {
            game.GameName = GetParameter(line);
            notes.Field(FieldId::GameName, block.FirstLine);
        });
    std::string miscTags;
    source.UseInnerLines(block, [&](std::string_view line, std::size_t index) {
        // A line that is too short for any of the many words is compared with none.
        if (line.size() >= ShortestGameWord && ReadByKeyword<GameModel>(GameRows, game, line, notes, index))
            return;
        // An exact comparison: in capitals the line is no flag and is kept as it is.
        if (line == "nodebug")
            game.NoDebug = true;
        else if (!line.starts_with('\'') && KeepLine(miscTags, line))
            notes.Field(FieldId::GameMiscTags, index);
    });
    if (!miscTags.empty())
        game.GameMiscTags = std::move(miscTags);
    game.KelVersion = CurrentKelVersion;
}

void ReadItems(GameModel& game, const SourceText& source) {
    game.Items.Clear();
    NamesIgnoringCase startItems;
    std::vector<std::size_t> linesOfItems;
    UseGameLines(source, [&](std::string_view line, std::size_t index) {
        if (BeginsWith(line, "startitems ")) {
            SplitList(GetParameter(line), Cut::AtCommaFirst,
                      [&](std::string_view name) { startItems.insert(name); });
        } else if (BeginsWith(line, "possitems ") || BeginsWith(line, "items ")) {
            GetParameter(line); // of several bad lines, the first is to be named
            linesOfItems.push_back(index);
        }
    });
    for (const std::size_t index : linesOfItems)
        source.UseLine(index, [&](std::string_view line) {
            SplitList(GetParameter(line), Cut::AtNearest, [&](std::string_view name) {
                game.Items.Append({std::string(name), startItems.contains(name)});
                source.NoteLastOf(FieldId::GameItems, game.Items, index);
            });
        });
}

void ReadCollectables(GameModel& game, const SourceText& source) {
    game.Collectables.Clear();
    UseGameLines(source, [&](std::string_view line, std::size_t index) {
        if (!BeginsWith(line, "collectables "))
            return;
        const std::string_view list = GetParameter(line);
        if (Trim(list).empty())
            return;
        SplitList(list, Cut::AtNearest, [&](std::string_view definition) {
            if (definition.find(' ') == std::string_view::npos)
                throw KelError("the collectable \"" + std::string(definition) +
                               "\" has no settings: a blank after its name is missing");
            game.Collectables.Append({std::string(definition), std::string(FirstWord(definition))});
            source.NoteLastOf(FieldId::GameCollectables, game.Collectables, index);
        });
    });
}

void ReadErrorMessages(GameModel& game, const SourceText& source) {
    std::unordered_map<std::string, int> firstByName;
    for (int k = 1; k <= game.ErrorMessages.Count(); ++k)
        firstByName.emplace(Lower(game.ErrorMessages[k].Name), k);

    UseGameLines(source, [&](std::string_view line, std::size_t index) {
        if (!BeginsWith(line, "error "))
            return;
        const std::string_view parameter = GetParameter(line);
        const std::size_t semicolon = parameter.find(';');
        const auto found = semicolon == std::string_view::npos
                               ? firstByName.end()
                               : firstByName.find(Lower(Trim(parameter.substr(0, semicolon))));
        if (found == firstByName.end()) {
            KeepLine(game.GameMiscTags.Edit(), line);
            source.Note(Place::Of({}, FieldId::GameMiscTags), index);
            return;
        }
        game.ErrorMessages.Edit(found->second).GameText = Trim(parameter.substr(semicolon + 1));
        source.Note(Place::Of({{FieldId::GameErrorMessages, found->second}}), index);
    });
}

} // namespace zem
