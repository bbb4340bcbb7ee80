#include "problems/CheckedGame.h"

#include "base/LineText.h"
#include "model/Texts.h"
#include "play/Libraries.h"
#include "problems/NameUses.h"
#include "problems/PrintedTexts.h"
#include "problems/ScriptFlow.h"
#include "problems/TimerBlocks.h"
#include "problems/WaysThrough.h"

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace zem::problems {

const char* WordFor(Level level) {
    switch (level) {
    case Level::Error:
        return "error";
    case Level::Warning:
        return "warning";
    case Level::Hint:
        break;
    }
    return "hint";
}

Libraries ReadLibraries(const GameModel& game, const FilesBeside& files) {
    play::GameFiles all =
        play::WithLibraries(game, [&](const std::string& name) { return files.Read(name); });
    Libraries libraries;
    const auto noteMissing = [&](const GameModel& includer) {
        for (const std::string& name : includer.Includes)
            if (name != play::BuiltInVerbs &&
                std::find(all.libraryNames.begin(), all.libraryNames.end(), name) == all.libraryNames.end())
                libraries.missing.push_back(name);
    };
    noteMissing(game);
    for (const GameModel& library : all.libraries)
        noteMissing(library);
    libraries.games = std::move(all.libraries);
    return libraries;
}

Place CheckedLine::At(TextRange range) const {
    Place part = place;
    part.bytes = {place.bytes.begin + range.begin, place.bytes.begin + range.end};
    return part;
}

CheckedGame::CheckedGame(CheckInput input) : input_(std::move(input)), owners_(input_.game) {
    CollectLines();
    CollectCalls();
    CollectScripts();
    CollectNames(Game(), ownNames_);
    if (!LibraryGames().empty())
        names_ = ownNames_;
    for (const GameModel& library : LibraryGames())
        CollectNames(library, names_);
    CollectMentions();
    mayHoldAnyName_ = !input_.libraries->missing.empty();
}

void CheckedGame::AddLine(const Place& place, std::string_view text, TextRange range) {
    const TextRange line = TrimmedRange(text, range);
    if (line.IsEmpty() || text[line.begin] == '\'')
        return;
    Place at = place;
    at.bytes = line;
    const std::string_view words = line.Of(text);
    lines_.push_back({at, words, TakeApart(words, Commands())});
}

void CheckedGame::CollectLines() {
    std::size_t count = 0;
    ForEachText(Game(), [&](const Place&, FieldUse use, const std::string& text) {
        if (use.kind == FieldKind::Script)
            count += 1 + static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
    });
    lines_.reserve(count);
    ForEachText(Game(), [&](const Place& place, FieldUse use, const std::string& text) {
        if (use.kind == FieldKind::Script)
            ForEachLine(text, [&](TextRange range, int) { AddLine(place, text, range); });
        else if (place.field == FieldId::GameUnknownBlocks)
            for (const TimerBlock& timer : TimerBlocksIn(text))
                for (const TextRange script : timer.scripts)
                    AddLine(place, text, script);
    });
}

void CheckedGame::CollectCalls() {
    std::size_t count = 0;
    for (const CheckedLine& line : lines_)
        count += line.parsed.conditions.size() + line.parsed.actions.size();
    calls_.reserve(count);
    std::vector<std::size_t> ends; // of the parts of each call
    ends.reserve(count);
    for (const CheckedLine& line : lines_) {
        const auto add = [&](const ScriptCall& call, bool isCondition, bool isNegated) {
            CheckedCall checked{&line, &call, isCondition, isNegated, {}};
            if (call.hasParameter) {
                static const ParameterSyntax noSyntax;
                ForEachPart(call.parameter.Of(line.text), call.entry ? call.entry->syntax : noSyntax,
                            [&](TextRange part, NameKind kind) {
                                const std::size_t at = call.parameter.begin;
                                parts_.push_back({{at + part.begin, at + part.end}, kind});
                            });
            }
            ends.push_back(parts_.size());
            calls_.push_back(checked);
        };
        for (const ScriptCondition& condition : line.parsed.conditions)
            add(condition.call, true, condition.isNegated);
        for (const ScriptAction& action : line.parsed.actions)
            if (!action.IsIf())
                add(action.call, false, false);
    }
    std::size_t begin = 0;
    for (std::size_t call = 0; call < calls_.size(); ++call) {
        calls_[call].parts = std::span(parts_).subspan(begin, ends[call] - begin);
        begin = ends[call];
    }
    std::unordered_map<const CommandEntry*, std::vector<const CheckedCall*>*> lists;
    for (const CheckedCall& call : calls_) {
        if (call.call->entry == nullptr)
            continue;
        std::vector<const CheckedCall*>*& list = lists[call.call->entry];
        if (list == nullptr)
            list = &callsOf_[call.call->entry->keyword];
        list->push_back(&call);
    }
}

void CheckedGame::CollectScripts() {
    std::size_t call = 0;
    for (std::size_t line = 0; line < lines_.size();) {
        const std::size_t firstLine = line;
        const std::size_t firstCall = call;
        const Place place = lines_[line].place.WholeField();
        while (line < lines_.size() && lines_[line].place.WholeField() == place)
            ++line;
        while (call < calls_.size() && calls_[call].line < lines_.data() + line)
            ++call;
        scripts_.push_back({place, std::span(lines_).subspan(firstLine, line - firstLine),
                            std::span(calls_).subspan(firstCall, call - firstCall)});
    }
}

const std::vector<const CheckedCall*>& CheckedGame::CallsOf(std::string_view keyword) const {
    static const std::vector<const CheckedCall*> none;
    const auto found = callsOf_.find(keyword);
    return found == callsOf_.end() ? none : found->second;
}

void CheckedGame::CollectNames(const GameModel& game, std::map<NameKind, NameSet>& names) const {
    const auto addAll = [&](NameKind kind, const auto& records) {
        for (const auto& record : records)
            names[kind].Add(record.Name);
    };
    addAll(NameKind::Room, game.Rooms);
    for (const Room& room : game.Rooms) {
        addAll(NameKind::Object, room.Objects);
        addAll(NameKind::Character, room.Characters);
        addAll(NameKind::Thing, room.Characters);
        addAll(NameKind::Thing, room.Objects);
    }
    addAll(NameKind::Item, game.Items);
    addAll(NameKind::Procedure, game.Procedures);
    addAll(NameKind::TextSection, game.TextSections);
    addAll(NameKind::Menu, game.SelectionMenus);
    addAll(NameKind::Collectable, game.Collectables);
}

namespace {

const NameSet& Find(const std::map<NameKind, NameSet>& names, NameKind kind) {
    static const NameSet none;
    const auto found = names.find(kind);
    return found == names.end() ? none : found->second;
}

} // namespace

CheckedGame::~CheckedGame() = default;

const std::vector<NameUse>& CheckedGame::NameUses() const {
    if (nameUses_ == nullptr)
        nameUses_ = std::make_unique<std::vector<NameUse>>(FindNameUses(*this));
    return *nameUses_;
}

const ScriptFlow& CheckedGame::Flow() const {
    if (flow_ == nullptr)
        flow_ = std::make_unique<ScriptFlow>(*this);
    return *flow_;
}

const std::vector<PrintedText>& CheckedGame::Prints() const {
    if (prints_ == nullptr)
        prints_ = std::make_unique<std::vector<PrintedText>>(PrintedTexts(*this));
    return *prints_;
}

const WaysThrough& CheckedGame::Ways() const {
    if (ways_ == nullptr)
        ways_ = std::make_unique<WaysThrough>(*this);
    return *ways_;
}

const NameSet& CheckedGame::Names(NameKind kind) const {
    return Find(LibraryGames().empty() ? ownNames_ : names_, kind);
}

const NameSet& CheckedGame::OwnNames(NameKind kind) const {
    return Find(ownNames_, kind);
}

void CheckedGame::CollectMentions() {
    ForEachText(Game(), [&](const Place& place, FieldUse use, const std::string& text) {
        if (use.kind != FieldKind::RawLines)
            return;
        std::size_t from = 0;
        if (place.field == FieldId::GameUnknownBlocks)
            for (const TimerBlock& timer : TimerBlocksIn(text)) { // whose heads make names, and use none
                CollectMentionsIn(std::string_view(text).substr(from, timer.name.begin - from));
                from = timer.name.end;
            }
        CollectMentionsIn(std::string_view(text).substr(from));
    });
    for (const GameModel& library : LibraryGames())
        ForEachText(library, [&](const Place&, FieldUse use, const std::string& text) {
            if (use.kind == FieldKind::RawLines || use.kind == FieldKind::Script)
                CollectMentionsIn(text);
            else if (use.kind == FieldKind::Reference || use.kind == FieldKind::Exit)
                mentions_.insert(text);
        });
}

void CheckedGame::CollectMentionsIn(std::string_view text) {
    for (std::size_t at = 0; (at = text.find_first_not_of(" \r\n\t<>;", at)) != std::string_view::npos;) {
        const std::size_t end = std::min(text.find_first_of(" \r\n\t<>;", at), text.size());
        words_.insert(text.substr(at, end - at));
        at = end;
    }
    for (std::size_t open = text.find('<'); open != std::string_view::npos; open = text.find('<', open + 1)) {
        const std::size_t close = text.find('>', open);
        if (close == std::string_view::npos)
            return;
        const std::string_view inside = text.substr(open + 1, close - open - 1);
        for (std::size_t begin = 0; begin <= inside.size();) {
            const std::size_t end = std::min(inside.find(';', begin), inside.size());
            mentions_.insert(TrimmedRange(inside, {begin, end}).Of(inside));
            begin = end + 1;
        }
    }
}

bool CheckedGame::MayBeUnknown(std::string_view name) const {
    if (mayHoldAnyName_)
        return true;
    const auto holdsIt = [name](const GameModel& game) {
        return game.UnknownBlocks->find(name) != std::string::npos;
    };
    return holdsIt(Game()) || std::any_of(LibraryGames().begin(), LibraryGames().end(), holdsIt);
}

Level CheckedGame::Softened(Level level, std::string_view name) const {
    if (level == Level::Hint || !MayBeUnknown(name))
        return level;
    return level == Level::Error ? Level::Warning : Level::Hint;
}

} // namespace zem::problems
