#pragma once

#include "kel/CommandLookup.h"
#include "model/GameModel.h"
#include "model/NameKind.h"

#include <map>
#include <random>
#include <string>
#include <vector>

namespace zem::test {

/// The names of each kind that a game is made with.
using NamePools = std::map<NameKind, std::vector<std::string>>;

/// Names that kinds share with one another and with the prose, as authors' do.
inline NamePools OrdinaryNames() {
    return {
        {NameKind::Room, {"Hall", "Attic", "the lamp", "Caf\xE9 | bar", "Hall #mood#"}},
        {NameKind::Object, {"lamp", "key", "Hall", "old key"}},
        {NameKind::Character, {"Tom", "Ann", "Zo\xEB"}},
        {NameKind::Item, {"lamp", "key", "rope"}},
        {NameKind::Procedure, {"lamp", "sing", "take key"}},
        {NameKind::TextSection, {"Hall", "lamp", "sign"}},
        {NameKind::Menu, {"lamp", "talk"}},
        {NameKind::Collectable, {"lamp", "gold"}},
        {NameKind::Variable, {"mood", "lamp", "n"}},
        {NameKind::Flag, {"lamp", "lit", "Lit"}},
        {NameKind::Timer, {"lamp", "tide"}},
        {NameKind::File, {"lamp.png"}},
    };
}

/// Makes games in which every kind of name stands in every place where one may, with the same words as prose
/// beside them. Two games of one seed and pools of one size differ in the names alone.
class NamedGame {
public:
    NamedGame(unsigned seed, NamePools names, const CommandCatalogue& catalogue)
        : random_(seed),
          names_(std::move(names)),
          catalogue_(catalogue) {
        for (int k = 1; k <= catalogue.Count(); ++k)
            if (catalogue[k].Keyword.starts_with("if "))
                conditions_.push_back(k);
            else if (catalogue[k].Keyword.find('(') == std::string::npos)
                commands_.push_back(k);
    }

    GameModel Make() {
        GameModel game;
        NewGame(game);
        FillLists(game);
        for (const std::string& name : names_[NameKind::Room])
            FillRoom(game.Rooms.Append(), name);
        game.GameName = Prose();
        game.GameInfo = Prose();
        game.StartRoom = Name(NameKind::Room);
        game.BeforeTurnScript = Line();
        game.GameUses.Append({Name(NameKind::Item), Line()});
        game.PlayerCommands.Append({Pattern(), Line()});
        game.GameMiscTags =
            "glow if flag <" + Name(NameKind::Flag) + "> then " + Command() + "\r\nlamp <Hall>\r\n";
        for (const std::string& name : names_[NameKind::Timer])
            game.UnknownBlocks.Edit() +=
                "define timer <" + name + ">\r\ninterval <2>\r\naction " + Line() + "\r\nend define\r\n\r\n";
        return game;
    }

private:
    std::size_t Pick(std::size_t count) {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(random_);
    }

    std::string Name(NameKind kind) {
        if (kind == NameKind::Thing)
            kind = Pick(2) == 0 ? NameKind::Object : NameKind::Character;
        const std::vector<std::string>& pool = names_[kind];
        return pool[Pick(pool.size())];
    }

    std::string Variable() {
        const std::string name = Name(NameKind::Variable);
        return Pick(2) == 0 ? "#" + name + "#" : "%" + name + "%";
    }

    std::string Prose() {
        static const std::vector<std::string> Words = {"the lamp", "Hall", "lit",  "5% of it", "Tom", "gold",
                                                       "#1",       "key,", "mood", "sing",     "tide"};
        std::string text;
        for (std::size_t count = 1 + Pick(4); count > 0; --count)
            text += (Pick(4) == 0 ? Variable() : Words[Pick(Words.size())]) + " ";
        return text + "end";
    }

    std::string Pattern() { return "say #" + Name(NameKind::Variable) + "#; lamp 5%"; }

    std::string Call(int entry) {
        const CommandDefinition& definition = catalogue_[entry];
        const ParameterSyntax syntax = ReadSyntax(definition.RawSyntax);
        if (syntax.parts.empty())
            return definition.Keyword;
        std::string parameter;
        for (const NameKind kind : syntax.parts)
            parameter += (parameter.empty() ? "" : "; ") + (kind == NameKind::None ? Prose() : Name(kind));
        return definition.Keyword + " <" + parameter + ">";
    }

    std::string Command() { return Call(commands_[Pick(commands_.size())]); }

    std::string Line() {
        if (Pick(3) == 0)
            return Command();
        std::string line = "if";
        for (std::size_t count = 1 + Pick(2); count > 0; --count)
            line += (Pick(3) == 0 ? " not " : " ") + Call(conditions_[Pick(conditions_.size())]).substr(3) +
                    (count > 1 ? " and" : " then ");
        line += Pick(4) == 0 ? Line() : Command();
        return line + (Pick(2) == 0 ? " else " + Command() : "");
    }

    std::string Script() {
        std::string script;
        for (std::size_t count = 1 + Pick(5); count > 0; --count)
            script += Line() + "\r\n";
        return script + "' lamp, Hall and goto <Hall>\r\n";
    }

    void FillLists(GameModel& game) {
        for (const std::string& name : names_[NameKind::Item])
            game.Items.Append({name, Pick(2) == 0});
        for (const std::string& name : names_[NameKind::Collectable])
            game.Collectables.Append({name + " p=0 [! lamp]", name});
        for (const std::string& name : names_[NameKind::Procedure])
            game.Procedures.Append({name, Script()});
        // Every variable, flag and timer is used somewhere.
        std::string all = "' all\r\n";
        for (const std::string& name : names_[NameKind::Variable])
            all += "set <" + name + "; 1>\r\n";
        for (const std::string& name : names_[NameKind::Flag])
            all += "flag on <" + name + ">\r\n";
        for (const std::string& name : names_[NameKind::Timer])
            all += "timer on <" + name + ">\r\n";
        game.Procedures.Append({"~Internal Procedure 0", all});
        game.NextInternalProcedure = 1;
        game.StartScript = "do <~Internal Procedure 0>";
        for (const std::string& name : names_[NameKind::TextSection])
            game.TextSections.Append({name, Prose() + "\r\n" + Prose()});
        for (const std::string& name : names_[NameKind::Menu]) {
            SelectionMenu& menu = game.SelectionMenus.Append({name, Prose(), {}});
            menu.Choices.Append({Prose(), Line()});
        }
        game.Synonyms.Append({"get; key", "lamp"});
        game.Includes.Append("lamp");
    }

    void FillRoom(Room& room, const std::string& name) {
        room.Name = name;
        room.Alias = Prose();
        room.Look = Prose();
        room.Out = ScriptPair{Name(NameKind::Room), Line()};
        room.North = ScriptPair{Name(NameKind::Room), ""};
        room.SouthWest = ScriptPair{ActionExit, Line()};
        room.Script = Line();
        room.Places.Append({Name(NameKind::Room), ""});
        room.Places.Append({"the lamp; " + Name(NameKind::Room), Line()});
        room.Commands.Append({Pattern(), Line()});
        room.Uses.Append({Name(NameKind::Item), Line()});
        for (const NameKind kind : {NameKind::Character, NameKind::Object}) {
            Thing& thing = (kind == NameKind::Object ? room.Objects : room.Characters).Append();
            // The first rooms have one each, so that each stands somewhere.
            thing.Name = names_[kind][static_cast<std::size_t>(things_++ / 2) % names_[kind].size()];
            thing.Look = Line();
            thing.Prefix = Prose();
            thing.Uses.Append({Name(NameKind::Item), Line()});
            thing.MiscTags = "  weight " + Line() + "\r\n";
        }
        room.MiscTags = "sound <" + Name(NameKind::File) + ">\r\n";
    }

    std::mt19937 random_;
    NamePools names_;
    const CommandCatalogue& catalogue_;
    std::vector<int> commands_;
    std::vector<int> conditions_;
    int things_ = 0;
};

} // namespace zem::test
