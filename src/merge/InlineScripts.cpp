#include "merge/InlineScripts.h"

#include "model/Texts.h"

#include <algorithm>
#include <charconv>
#include <unordered_map>

namespace zem::merge {

namespace {

constexpr std::string_view Call = "do <~";
constexpr int DeepestNesting = 50;
// A body that several scripts call is put into each of them as long as that stays small.
constexpr std::size_t MostCopiedBytes = 65536;

bool HoldsScript(FieldUse use) {
    return use.kind == FieldKind::Script || use.kind == FieldKind::RawLines;
}

/// The bytes of the next call of an internal procedure, with its name; empty when there is none.
struct FoundCall {
    TextRange bytes;
    std::string_view name;
};

FoundCall FindCall(std::string_view text, std::size_t from) {
    for (std::size_t at = text.find(Call, from); at != std::string_view::npos; at = text.find(Call, at + 1)) {
        const std::size_t name = at + Call.size() - 1;
        const std::size_t end = text.find_first_of(">\r\n", name);
        if (end != std::string_view::npos && text[end] == '>')
            return {{at, end + 1}, text.substr(name, end - name)};
    }
    return {};
}

/// The number in the name of an internal procedure as the editor writes it; nothing for other names.
std::string_view NumberOf(std::string_view name) {
    static const std::string start = std::string(InternalProcedure) + ' ';
    if (!name.starts_with(start))
        return {};
    const std::string_view digits = name.substr(start.size());
    int number = 0;
    const auto [stop, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    const bool isPlain = error == std::errc() && stop == digits.data() + digits.size() && number >= 0 &&
                         (digits.size() == 1 || digits.front() != '0');
    return isPlain ? digits : std::string_view();
}

class Inliner {
public:
    Inliner(const GameModel& game, char version) : before_(game), version_(version) {
        int entry = 0;
        for (const Procedure& procedure : game.Procedures)
            if (++entry; !NumberOf(procedure.Name).empty())
                internal_.emplace(procedure.Name, Internal{entry, &procedure.Script});
        if (!internal_.empty())
            CountCalls();
    }

    InlineGame Run() {
        InlineGame result{before_,
                          std::vector<bool>(static_cast<std::size_t>(before_.Procedures.Count()) + 1)};
        if (internal_.empty())
            return result;
        ReplaceTexts(
            result.game,
            [&](const Place& place, FieldUse use, const std::string& text) -> std::optional<std::string> {
                if (!HoldsScript(use) || IsCandidate(place) || !FindCall(text, 0).bytes.end)
                    return std::nullopt;
                return Expand(text, 0);
            });
        for (const auto& [name, internal] : internal_)
            result.inlined[static_cast<std::size_t>(internal.entry)] = internal.isReached && !internal.isKept;
        return result;
    }

private:
    struct Internal {
        int entry = 0;
        const std::string* body = nullptr;
        std::size_t calls = 0;
        bool isReached = false; // stands in the place of a call
        bool isKept = false;    // a call of it is left
    };

    void CountCalls() {
        ForEachText(before_, [&](const Place&, FieldUse use, const std::string& text) {
            if (!HoldsScript(use))
                return;
            for (FoundCall call = FindCall(text, 0); call.bytes.end != 0;
                 call = FindCall(text, call.bytes.end))
                if (const auto found = internal_.find(call.name); found != internal_.end())
                    ++found->second.calls;
        });
    }

    /// Whether the body may stand at each of its calls. One that is called twice holds no calls itself, so
    /// that what is copied stays small.
    static bool MayStandInCalls(const Internal& internal) {
        return internal.calls == 1 || (internal.calls > 1 && FindCall(*internal.body, 0).bytes.end == 0 &&
                                       internal.body->size() * internal.calls <= MostCopiedBytes);
    }

    /// Whether the place is the body of a procedure that is put into its callers.
    bool IsCandidate(const Place& place) const {
        if (place.steps.front().list != FieldId::GameProcedures)
            return false;
        const auto found = internal_.find(before_.Procedures[place.steps.front().entry].Name);
        return found != internal_.end() && found->second.entry == place.steps.front().entry &&
               MayStandInCalls(found->second);
    }

    std::string Expand(std::string_view text, int depth) {
        std::string expanded;
        std::size_t done = 0;
        for (FoundCall call = FindCall(text, 0); call.bytes.end != 0; call = FindCall(text, call.bytes.end)) {
            const auto found = internal_.find(call.name);
            if (found == internal_.end())
                continue;
            Internal& internal = found->second;
            if (!MayStandInCalls(internal) || depth == DeepestNesting) {
                internal.isKept = true;
                continue;
            }
            internal.isReached = true;
            expanded.append(text.substr(done, call.bytes.begin - done));
            AppendBody(expanded, call.name, Expand(*internal.body, depth + 1));
            done = call.bytes.end;
        }
        return expanded.append(text.substr(done));
    }

    void AppendBody(std::string& text, std::string_view name, const std::string& body) const {
        const bool isEnded = body.ends_with("\r\n");
        text.append("{\t").append(1, version_).append(NumberOf(name)).append("\t\r\n");
        text.append(body).append(isEnded || body.empty() ? "" : "\r\n");
        text.append("}\t").append(isEnded ? "+" : "-");
    }

    GameModel before_;
    char version_;
    std::unordered_map<std::string_view, Internal> internal_;
};

} // namespace

InlineGame WithInlineScripts(const GameModel& game, char version) {
    return Inliner(game, version).Run();
}

std::string WithoutMarks(std::string_view text) {
    std::string plain;
    plain.reserve(text.size());
    while (true) {
        const std::size_t tab = text.find('\t');
        plain.append(text.substr(0, tab));
        if (tab == std::string_view::npos)
            return plain;
        const bool opens = tab > 0 && text[tab - 1] == '{';
        const bool closes = tab > 0 && text[tab - 1] == '}';
        const std::size_t end = opens ? text.find('\t', tab + 1) : closes ? tab + 1 : tab;
        if (!opens && !closes)
            plain += '\t';
        text.remove_prefix(std::min(end == std::string_view::npos ? end : end + 1, text.size()));
    }
}

bool SameText(std::string_view a, std::string_view b) {
    if (a == b)
        return true;
    if (a.find('\t') == std::string_view::npos && b.find('\t') == std::string_view::npos)
        return false;
    return WithoutMarks(a) == WithoutMarks(b);
}

bool BracesMatch(std::string_view text) {
    int depth = 0;
    for (std::size_t at = text.find('\t'); at != std::string_view::npos; at = text.find('\t', at + 1)) {
        const char before = at == 0 ? ' ' : text[at - 1];
        if (before == '{') {
            ++depth;
            at = text.find('\t', at + 1);
            if (at == std::string_view::npos)
                return false;
        } else if (before == '}' && --depth < 0) {
            return false;
        }
    }
    return depth == 0;
}

} // namespace zem::merge
