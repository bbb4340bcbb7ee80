#include "game/References.h"

#include "base/LineText.h"
#include "game/PlaceOrder.h"
#include "game/RawScripts.h"

#include <algorithm>

namespace zem {

namespace {

using detail::RecordReferences;

/// What stands between two of the same signs, and so may be a variable.
std::vector<std::string_view> CandidatesIn(std::string_view text) {
    std::vector<std::string_view> candidates;
    ForEachVariable(text, [&](TextRange range, char) {
        candidates.push_back(range.Of(text));
        return false; // the second sign may be the first one of another
    });
    return candidates;
}

/// The range without the blanks around it, of the whole text.
TextRange Trimmed(std::string_view text) {
    return TrimmedRange(text, {0, text.size()});
}

/// The name of a room in a place's key, "name" or "prefix; name".
TextRange NameInTarget(std::string_view key) {
    const std::size_t semicolon = key.find(';');
    return TrimmedRange(key, {semicolon == std::string_view::npos ? 0 : semicolon + 1, key.size()});
}

/// Reads the texts of one record.
class ReferenceFinder {
public:
    explicit ReferenceFinder(const CommandLookup& commands) : commands_(commands) {}

    void Read(const RecordText& text) {
        place_ = text.place;
        text_ = text.text;
        ReadField(text.use);
    }

    RecordReferences Take() {
        std::sort(found_.variables.begin(), found_.variables.end());
        const auto last = std::unique(found_.variables.begin(), found_.variables.end());
        found_.variables.erase(last, found_.variables.end());
        return std::move(found_);
    }

private:
    void ReadField(FieldUse use) {
        switch (use.kind) {
        case FieldKind::Name:
            return ReadName(Trimmed(text_), use.names, ReferenceRole::Definition);
        case FieldKind::Reference:
            return ReadName(Trimmed(text_), use.names, ReferenceRole::Use);
        case FieldKind::Exit:
            return text_ == ActionExit ? void() : ReadName(Trimmed(text_), use.names, ReferenceRole::Use);
        case FieldKind::Target:
            AddPrinted({0, std::min(text_.find(';'), text_.size())}, nullptr);
            return ReadName(NameInTarget(text_), use.names, ReferenceRole::Use);
        case FieldKind::Definition:
            AddName({0, std::min(text_.find(' '), text_.size())}, use.names, ReferenceRole::Definition);
            return AddPrinted({0, text_.size()}, nullptr);
        case FieldKind::Script:
            return ForEachLine(text_, [&](TextRange line, int) { ReadScriptLine(line); });
        case FieldKind::Text:
            return AddPrinted({0, text_.size()}, nullptr);
        case FieldKind::Pattern:
            return ReadPattern();
        case FieldKind::RawLines:
            return ForEachLine(text_, [&](TextRange line, int) { ReadRawLine(line); });
        case FieldKind::Words: // no variable stands there
        case FieldKind::Value:
        case FieldKind::Number:
        case FieldKind::Mark:
        case FieldKind::Records:
        case FieldKind::OwnersKey:
            break;
        }
    }

    /// A name in a field of its own, in which a variable may stand, too.
    void ReadName(TextRange bytes, NameKind kind, ReferenceRole role) {
        AddName(bytes, kind, role);
        AddPrinted(bytes, nullptr);
    }

    Reference& Add(TextRange bytes, NameKind kind) {
        Reference& reference = found_.references.emplace_back();
        reference.place = place_;
        reference.place.bytes = bytes;
        reference.kind = kind;
        reference.name = bytes.Of(text_);
        return reference;
    }

    void AddName(TextRange bytes, NameKind kind, ReferenceRole role) {
        if (!bytes.IsEmpty())
            Add(bytes, kind).role = role;
    }

    void AddPrinted(TextRange bytes, const CommandEntry* command) {
        const std::string_view text = bytes.Of(text_);
        std::vector<std::string_view> candidates = CandidatesIn(text);
        if (candidates.empty())
            return;
        Place place = place_;
        place.bytes = bytes;
        found_.printed.push_back({place, text, command, std::move(candidates)});
    }

    void ReadPattern() {
        ForEachVariable(text_, [&](TextRange range, char sign) {
            if (sign != '#')
                return false;
            Add(range, NameKind::Variable).sign = sign;
            found_.variables.push_back(range.Of(text_));
            return true;
        });
    }

    void ReadScriptLine(TextRange line) { ReadCalls(line.begin, TakeApart(line.Of(text_), commands_)); }

    void ReadCalls(std::size_t begin, const ScriptLine& parsed) {
        ForEachCall(parsed, [&](const ScriptCall& call) {
            if (call.hasParameter)
                ReadParameter(begin + call.parameter.begin, begin + call.parameter.end, call.entry);
            else if (call.entry != nullptr)
                ReadCommand(*call.entry);
        });
    }

    /// While a procedure runs for every object or character, this variable holds the name.
    void ReadCommand(const CommandEntry& command) {
        if (command.keyword == "every object" || command.keyword == "every character")
            found_.variables.push_back("thing");
    }

    void ReadParameter(std::size_t begin, std::size_t end, const CommandEntry* command) {
        AddPrinted({begin, end}, command);
        if (command == nullptr)
            return;
        ReadCommand(*command);
        int part = 0;
        ForEachPart(text_.substr(begin, end - begin), command->syntax, [&](TextRange range, NameKind kind) {
            const auto number = static_cast<std::int8_t>(std::min(part++, 127));
            if (kind == NameKind::None || range.IsEmpty())
                return;
            Reference& reference = Add({begin + range.begin, begin + range.end}, kind);
            reference.part = number;
            reference.command = command;
            if (kind == NameKind::Variable)
                found_.variables.push_back(reference.name);
        });
    }

    void ReadRawLine(TextRange line) {
        const std::string_view text = line.Of(text_);
        if (BeginsWith(text, "define timer "))
            ReadTimer(line);
        ForEachScriptInRawLine(text, commands_, [&](std::size_t at, const ScriptLine& parsed) {
            ReadCalls(line.begin + at, parsed);
        });
    }

    void ReadTimer(TextRange line) {
        const std::size_t open = text_.find('<', line.begin);
        const std::size_t close = std::min(text_.find('>', open), text_.size());
        if (open < line.end && close < line.end)
            AddName(TrimmedRange(text_, {open + 1, close}), NameKind::Timer, ReferenceRole::Definition);
    }

    const CommandLookup& commands_;
    RecordReferences found_;
    Place place_; // of the text that is read
    std::string_view text_;
};

bool ComesBefore(const Reference& a, const Reference& b) {
    return PlaceComesBefore(a.place, b.place);
}

/// Whether the text is one of those that the game-running program looks for, whatever their capitals.
} // namespace

namespace detail {

RecordReferences FindReferences(const std::vector<RecordText>& texts, const CommandLookup& commands) {
    ReferenceFinder finder(commands);
    for (const RecordText& text : texts)
        finder.Read(text);
    return finder.Take();
}

bool HoldsVariable(std::string_view text, const std::unordered_set<std::string_view>& variables) {
    bool holds = false;
    ForEachVariable(text, [&](TextRange range, char) {
        const bool isVariable = variables.contains(range.Of(text));
        holds = holds || isVariable;
        return isVariable;
    });
    return holds;
}

} // namespace detail

ReferenceIndex::ReferenceIndex(const CommandLookup& commands)
    : records_([&commands](const std::vector<RecordText>& texts) {
          return detail::FindReferences(texts, commands);
      }) {}

void ReferenceIndex::GoOnTo(const GameModel& game) {
    records_.GoOnTo(game);
    variables_.clear();
    records_.ForEach([&](PlaceStep, const RecordReferences& made) {
        variables_.insert(made.variables.begin(), made.variables.end());
    });
}

void ReferenceIndex::Finish(Reference& reference, PlaceStep record) const {
    reference.place = InGame(record, reference.place);
    const bool isPart = reference.part >= 0;
    if (isPart && detail::HoldsVariable(reference.name, variables_))
        reference.role = ReferenceRole::MayMean;
}

/// @param fits    whether a reference of the kind is wanted
/// @param mayFit  whether a variable of the name may be, which is asked of many texts
template <class Fits, class MayFit>
std::vector<Reference> ReferenceIndex::Select(NameKind kind, Fits fits, MayFit mayFit) const {
    std::vector<Reference> found;
    const auto take = [&](const Reference& reference) { found.push_back(reference); };
    records_.ForEach([&](PlaceStep record, const RecordReferences& made) {
        for (const Reference& reference : made.references) {
            if (!MeansKind(reference.kind, kind) || !fits(reference))
                continue;
            Reference& finished = found.emplace_back(reference);
            Finish(finished, record);
        }
        if (kind == NameKind::Variable)
            for (const RecordReferences::Printed& printed : made.printed)
                if (std::any_of(printed.candidates.begin(), printed.candidates.end(), mayFit))
                    VisitVariables(printed, record, variables_, take);
    });
    return found;
}

std::vector<Reference> ReferenceIndex::Of(NameKind kind, std::string_view name) const {
    const bool isStandard = kind == NameKind::TextSection && IsStandardText(name);
    const auto isName = [&](const Reference& reference) {
        return reference.name == name || (isStandard && EqualIgnoringCase(reference.name, name));
    };
    const auto mayBecome = [&](const Reference& reference) {
        return reference.part >= 0 && reference.name.find_first_of("#%") != std::string_view::npos;
    };
    std::vector<Reference> found = Select(
        kind, [&](const Reference& reference) { return isName(reference) || mayBecome(reference); },
        [&](std::string_view candidate) { return candidate == name; });
    std::erase_if(found, [&](Reference& reference) {
        if (isName(reference)) {
            if (reference.role == ReferenceRole::MayMean)
                reference.role = ReferenceRole::Use;
            return false;
        }
        return reference.role != ReferenceRole::MayMean || !CanBecome(reference.name, name);
    });
    std::sort(found.begin(), found.end(), ComesBefore);
    return found;
}

std::vector<Reference> ReferenceIndex::InOtherCapitals(NameKind kind, std::string_view name) const {
    const auto isAlike = [&](std::string_view other) {
        return other != name && EqualIgnoringCase(other, name);
    };
    std::vector<Reference> found = Select(
        kind, [&](const Reference& reference) { return isAlike(reference.name); }, isAlike);
    std::erase_if(found, [&](const Reference& reference) { return !isAlike(reference.name); });
    std::sort(found.begin(), found.end(), ComesBefore);
    return found;
}

std::vector<Reference> ReferenceIndex::WouldBeVariable(std::string_view name) const {
    std::vector<Reference> found;
    if (IsVariable(name))
        return found;
    std::unordered_set<std::string_view> variables = variables_;
    variables.insert(name);
    const auto take = [&](const Reference& reference) {
        if (reference.name == name)
            found.push_back(reference);
    };
    records_.ForEach([&](PlaceStep record, const RecordReferences& made) {
        for (const RecordReferences::Printed& printed : made.printed)
            if (printed.MayHold(name))
                VisitVariables(printed, record, variables, take);
    });
    return found;
}

bool CanBecome(std::string_view made, std::string_view name) {
    std::size_t at = 0;      // of the name: what is before it has been found
    std::size_t literal = 0; // of what it is made of: the begin of what has to be found next
    bool isFirst = true;
    bool can = true;
    const auto find = [&](std::string_view piece) {
        const std::size_t found =
            isFirst ? (name.starts_with(piece) ? 0 : std::string_view::npos) : name.find(piece, at);
        can = can && found != std::string_view::npos;
        if (can)
            at = found + piece.size();
        isFirst = false;
    };
    ForEachVariable(made, [&](TextRange range, char) {
        find(made.substr(literal, range.begin - 1 - literal));
        literal = range.end + 1;
        return true;
    });
    const std::string_view last = made.substr(literal);
    return can && !isFirst && name.size() >= at + last.size() && name.ends_with(last);
}

} // namespace zem
