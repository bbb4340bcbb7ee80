// Procedures again in the place of marked braces, with numbers.
#include "base/LineText.h"
#include "merge/InlineScripts.h"
#include "model/Texts.h"

#include <charconv>
#include <map>
#include <set>
#include <unordered_map>
#include <unordered_set>

namespace zem::merge {

namespace {

constexpr std::string_view Open = "{\t";
constexpr std::string_view Close = "}\t";

std::string NameOf(int number) {
    return std::string(InternalProcedure) + ' ' + std::to_string(number);
}

/// The numbers in use, and new ones.
class Numbers {
public:
    explicit Numbers(std::int16_t next) : next_(next) {}

    void Take(int number) { taken_.insert(number); }

    /// The number if it is free, otherwise another one.
    int GiveOr(int wanted) {
        const int number = taken_.contains(wanted) ? FreeNumber() : wanted;
        taken_.insert(number);
        next_ = std::max(next_, number + 1);
        return number;
    }

    std::int16_t Next() const { return static_cast<std::int16_t>(std::min(next_, 32767)); }

private:
    int FreeNumber() {
        constexpr int Last = 32766;
        int number = taken_.empty() ? next_ : std::max(next_, *taken_.rbegin() + 1);
        for (number = number > Last ? 0 : number; taken_.contains(number); ++number)
            if (number > Last)
                throw KelError("the numbers of internal procedures end at 32,767");
        return number;
    }

    std::set<int> taken_;
    int next_;
};

/// A marked brace and what stands between it and its partner.
struct MarkedBody {
    std::size_t begin = std::string_view::npos; // of the brace; npos for none
    std::size_t end = 0;                        // behind its partner
    char version = ' ';
    int number = 0;
    std::string_view body;
    bool isEnded = true;
};

MarkedBody FindBody(std::string_view text, std::size_t from) {
    MarkedBody found;
    found.begin = text.find(Open, from);
    if (found.begin == std::string_view::npos)
        return found;
    const std::size_t mark = found.begin + Open.size();
    const std::size_t first = text.find('\n', mark) + 1;
    found.version = text[mark];
    std::from_chars(text.data() + mark + 1, text.data() + text.size(), found.number);
    int depth = 1;
    std::size_t at = first;
    while (depth > 0) {
        at = text.find('\t', at);
        if (at == std::string_view::npos)
            return {};
        const bool opens = text[at - 1] == '{';
        depth += opens ? 1 : text[at - 1] == '}' ? -1 : 0;
        at = opens ? text.find('\t', at + 1) + 1 : at + 1;
    }
    found.body = text.substr(first, at - Close.size() - first);
    found.end = at + 1;
    found.isEnded = at < text.size() && text[at] == '+';
    if (!found.isEnded && found.body.ends_with("\r\n"))
        found.body.remove_suffix(2);
    return found;
}

class ProcedureMaker {
public:
    ProcedureMaker(GameModel& game, const GameModel& order)
        : game_(game),
          order_(order),
          numbers_(game.NextInternalProcedure) {
        for (const Procedure& procedure : game.Procedures)
            names_.insert(procedure.Name);
        TakeOwnNumbers();
    }

    std::vector<int> Run() {
        ReplaceTexts(game_,
                     [&](const Place&, FieldUse, const std::string& text) -> std::optional<std::string> {
                         if (text.find(Open) == std::string::npos)
                             return std::nullopt;
                         return Contract(text);
                     });
        game_.NextInternalProcedure = numbers_.Next();
        return Insert();
    }

private:
    /// The numbers of version 'o' stay, so those of others must not take them.
    void TakeOwnNumbers() {
        ForEachText(game_, [&](const Place&, FieldUse, const std::string& text) {
            for (std::size_t at = text.find(Open); at != std::string::npos; at = text.find(Open, at + 1))
                if (text.compare(at + Open.size(), 1, "o") == 0) {
                    int number = 0;
                    std::from_chars(text.data() + at + 3, text.data() + text.size(), number);
                    own_.insert(number);
                }
        });
        for (const int number : own_)
            numbers_.Take(number);
        const std::string start = std::string(InternalProcedure) + ' ';
        for (const std::string& name : names_)
            if (EqualIgnoringCase(std::string_view(name).substr(0, start.size()), start))
                numbers_.Take(static_cast<int>(LeadingReal(std::string_view(name).substr(start.size()))));
    }

    std::string Contract(std::string_view text) {
        std::string result;
        std::size_t done = 0;
        for (MarkedBody found = FindBody(text, 0); found.begin != std::string_view::npos;
             found = FindBody(text, found.end)) {
            result.append(text.substr(done, found.begin - done));
            result.append("do <").append(NameFor(found, Contract(found.body))).append(">");
            done = found.end;
        }
        return result.append(text.substr(done));
    }

    /// The procedure of this body: the one that several scripts call is made once.
    std::string NameFor(const MarkedBody& found, std::string body) {
        auto& made = made_[{found.version, found.number}];
        for (const auto& [name, madeBody] : made)
            if (madeBody == body)
                return name;
        const bool keepsNumber = found.version == 'o' && made.empty() && own_.contains(found.number) &&
                                 !names_.contains(NameOf(found.number));
        std::string name = NameOf(keepsNumber ? found.number : numbers_.GiveOr(found.number));
        made.emplace_back(name, body);
        bodies_.emplace(name, std::move(body));
        inOrder_.push_back(name);
        return name;
    }

    /// Puts the procedures where they stood, behind the same procedure as before; new ones to the end.
    std::vector<int> Insert() {
        std::map<std::string, std::vector<std::string>> behind;
        std::map<std::string, int> seen;
        std::string anchor;
        std::unordered_set<std::string> placed;
        for (const Procedure& procedure : order_.Procedures) {
            if (bodies_.contains(procedure.Name) && placed.insert(procedure.Name).second)
                behind[anchor].push_back(procedure.Name);
            else if (names_.contains(procedure.Name))
                anchor = procedure.Name + '\n' + std::to_string(++seen[procedure.Name]);
        }
        Table<Procedure> result;
        const auto append = [&](const std::vector<std::string>& names) {
            for (const std::string& name : names)
                result.Append({name, bodies_[name]});
        };
        append(behind[""]);
        std::vector<int> entries = {0};
        seen.clear();
        for (const Procedure& procedure : game_.Procedures) {
            result.Append(procedure);
            entries.push_back(result.Count());
            append(behind[procedure.Name + '\n' + std::to_string(++seen[procedure.Name])]);
        }
        std::erase_if(inOrder_, [&](const std::string& name) { return placed.contains(name); });
        append(inOrder_);
        game_.Procedures = result;
        return entries;
    }

    GameModel& game_;
    const GameModel& order_;
    Numbers numbers_;
    std::set<int> own_;
    std::unordered_set<std::string> names_; // of the procedures that are no script's
    std::map<std::pair<char, int>, std::vector<std::pair<std::string, std::string>>> made_; // name and body
    std::unordered_map<std::string, std::string> bodies_;
    std::vector<std::string> inOrder_;
};

} // namespace

std::vector<int> PutProceduresBack(GameModel& game, const GameModel& order) {
    return ProcedureMaker(game, order).Run();
}

} // namespace zem::merge
