#include "readback/LooseComparison.h"

#include "base/LineText.h"
#include "base/TextFile.h"
#include "model/Fields.h"

#include <algorithm>
#include <string_view>

namespace zem {

namespace {

/// Takes the next line that is not blank off the text, without the blanks around it; empty at the end.
std::string_view TakeFilledLine(std::string_view& text) {
    std::string_view line;
    while (line.empty() && !text.empty())
        line = Trim(TakeLine(text));
    return line;
}

/// The same lines, but for blank ones and the blanks around them.
bool IsSame(std::string_view a, std::string_view b) {
    while (!a.empty() || !b.empty())
        if (TakeFilledLine(a) != TakeFilledLine(b))
            return false;
    return true;
}

/// The same lines, but for blanks at their ends.
bool IsSameText(std::string_view a, std::string_view b) {
    const auto end = [](std::string_view line) { return line.substr(0, line.find_last_not_of(' ') + 1); };
    while (!a.empty() && !b.empty())
        if (end(TakeLine(a)) != end(TakeLine(b)))
            return false;
    return Trim(a).empty() && Trim(b).empty();
}

bool IsSame(const std::string& a, const std::string& b) {
    return a == b || IsSame(std::string_view(a), std::string_view(b));
}
bool IsSame(bool a, bool b) {
    return a == b;
}
bool IsSame(std::int16_t a, std::int16_t b) {
    return a == b;
}
bool IsSame(const Shared<std::string>& a, const Shared<std::string>& b) {
    return IsSame(*a, *b);
}
bool IsSame(const TextSection& a, const TextSection& b) {
    return a.Name == b.Name && IsSameText(a.Text, b.Text);
}

/// An exit that leads to a room may have kept an action that it does not run.
bool IsSame(const Shared<ScriptPair>& a, const Shared<ScriptPair>& b) {
    return a->Key == b->Key && (a->Key != ActionExit || IsSame(a->Script, b->Script));
}

template <class Record>
bool IsSame(const Record& a, const Record& b);

template <RecordList Records>
bool IsSame(const Records& a, const Records& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](const auto& left, const auto& right) { return IsSame(left, right); });
}

template <class Record>
bool IsSame(const Record& a, const Record& b) {
    bool same = true;
    ForEachField<Record>([&](const auto& field) { same = same && IsSame(a.*field.member, b.*field.member); });
    return same;
}

// The way out runs its action before it is gone.
template <>
bool IsSame(const Room& a, const Room& b) {
    bool same = IsSame(a.Out->Script, b.Out->Script);
    ForEachField<Room>([&](const auto& field) { same = same && IsSame(a.*field.member, b.*field.member); });
    return same;
}

/// The game with what every file gives: the standard texts, the current version, and at least one item.
/// Where no item is a start item, those without a name are.
GameModel AsRead(GameModel game) {
    game.KelVersion = CurrentKelVersion;
    if (game.Items.IsEmpty())
        game.Items.Append();
    for (int k = 1; k <= game.Items.Count(); ++k)
        if (game.Items[k].IsStartItem && Trim(game.Items[k].Name).empty())
            game.Items.Edit(k).IsStartItem = false;
    AddStandardTexts(game);
    return game;
}

} // namespace

bool IsSameInFile(const GameModel& game, const GameModel& back) {
    return IsSame(AsRead(game), AsRead(back));
}

} // namespace zem
