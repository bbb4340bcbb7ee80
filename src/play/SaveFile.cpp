#include "play/SaveFile.h"

#include "base/LineText.h"
#include "play/Limits.h"
#include "play/Meaning.h"

#include <charconv>
#include <optional>
#include <set>
#include <utility>

namespace zem::play {

namespace {

constexpr std::string_view FirstLine = "veldt save 1";
constexpr std::size_t LargestSave = 64 * 1024 * 1024;

struct NumberCell {
    std::string_view word;
    Cell cell;
};
constexpr NumberCell NumberCells[] = {{"turns", Turns},       {"chance", Chance}, {"now", Now},
                                      {"fontsize", FontSize}, {"ending", Ending}, {"sequence", Sequence}};
constexpr NumberCell TextCells[] = {{"colour", Colour}, {"fontname", FontName}};
constexpr NumberCell RoomCellsOfPlayer[] = {{"here", PlayerRoom}, {"before", RoomBefore}};
constexpr NumberCell NamedCells[] = {{"it", LastIt}, {"he", LastHe}, {"she", LastShe}, {"any", LastAny}};

struct KindWord {
    std::string_view word;
    Kind kind;
};
/// Kinds whose one cell holds a number.
constexpr KindWord PlainKinds[] = {
    {"item", Kind::Item}, {"flag", Kind::Flag}, {"collectable", Kind::Collectable}};

std::uint64_t HashOf(std::string_view text) {
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const char c : text)
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3U;
    return hash;
}

std::string Escaped(std::string_view text) {
    std::string escaped;
    for (const char c : text)
        switch (c) {
        case '\\':
            escaped += "\\\\";
            break;
        case '\t':
            escaped += "\\t";
            break;
        case '\n':
            escaped += "\\n";
            break;
        case '\r':
            escaped += "\\r";
            break;
        default:
            escaped += c;
        }
    return escaped;
}

std::optional<std::string> Unescaped(std::string_view text) {
    std::string plain;
    for (std::size_t k = 0; k < text.size(); ++k) {
        if (text[k] != '\\') {
            plain += text[k];
            continue;
        }
        constexpr std::string_view Codes = "\\tnr";
        constexpr std::string_view Meant = "\\\t\n\r";
        const std::size_t code = ++k < text.size() ? Codes.find(text[k]) : std::string_view::npos;
        if (code == std::string_view::npos)
            return std::nullopt;
        plain += Meant[code];
    }
    return plain;
}

/// Builds the lines of a saved game.
class Writer {
public:
    Writer(const World& world, const State& state) : world_(world), names_(world.GetNames()), state_(state) {}

    std::string Write() {
        Line({FirstLine});
        Line({"game", world_.Game().GameName});
        // Without a line "here" the player is in no room: the script of the start may have closed it.
        for (const NumberCell& row : NumberCells)
            if (state_[row.cell] != 0)
                Line({row.word, std::to_string(state_[row.cell])});
        for (const NumberCell& row : TextCells)
            if (state_[row.cell] != 0)
                Line({row.word, state_.Text(row.cell)});
        for (const NumberCell& row : RoomCellsOfPlayer)
            if (state_[row.cell] != 0)
                Line({row.word, RoomName(state_[row.cell])});
        for (const NumberCell& row : NamedCells)
            WriteReference(row.word, Reference::Unpack(state_[row.cell]));
        for (std::int64_t k = 0; k < state_[WaitCount]; ++k)
            WriteWait(static_cast<Cell>(FirstWait + static_cast<Cell>(k) * WaitCells));
        WriteRooms();
        WriteThings();
        for (const KindWord& row : PlainKinds)
            ForEachChanged(row.kind, 1, [&](std::string_view name, Cell cell) {
                Line({row.word, name, std::to_string(state_[cell])});
            });
        ForEachChanged(Kind::Variable, 1, [&](std::string_view name, Cell cell) {
            Line({"variable", name, IsNumber(state_[cell]) ? "n" : "t", state_.Text(cell)});
        });
        ForEachChanged(Kind::Timer, TimerCells, [&](std::string_view name, Cell cell) {
            Line({"timer", name, std::to_string(state_[cell + TimerOn]),
                  std::to_string(state_[cell + TimerDue]), std::to_string(state_[cell + TimerSequence])});
        });
        return bytes_ + "end\t" + std::to_string(HashOf(bytes_)) + "\n";
    }

private:
    void Line(std::initializer_list<std::string_view> fields) {
        bool isFirst = true;
        for (const std::string_view field : fields) {
            if (!isFirst)
                bytes_ += '\t';
            isFirst = false;
            bytes_ += Escaped(field);
        }
        bytes_ += '\n';
    }

    std::string_view RoomName(std::int64_t packed) const {
        return packed == 0 ? std::string_view() : names_.Name(Kind::Room, static_cast<Number>(packed - 1));
    }

    bool IsChanged(Cell cell) const {
        return cell < world_.Start().size() && state_[cell] != world_.Start()[cell];
    }

    template <class Visit>
    void ForEachChanged(Kind kind, Cell cells, Visit visit) {
        for (Number number = 0; number < names_.Count(kind); ++number) {
            const Cell first = names_.CellOf(kind, number);
            bool isChanged = false;
            for (Cell part = 0; part < cells; ++part)
                isChanged = isChanged || IsChanged(first + part);
            if (isChanged)
                visit(std::string_view(names_.Name(kind, number)), first);
        }
    }

    void WriteReference(std::string_view word, const Reference& reference) {
        if (reference.kind == Reference::Thing)
            Line({word, "thing", names_.Name(Kind::Thing, reference.number)});
        else if (reference.kind == Reference::Item)
            Line({word, "item", names_.Name(Kind::Item, reference.number)});
    }

    void WriteWait(Cell cells) {
        Line({"wait", std::to_string(state_[cells + WaitDue]), std::to_string(state_[cells + WaitSequence]),
              names_.Name(Kind::Procedure, static_cast<Number>(state_[cells + WaitProcedure] - 1))});
    }

    void WriteRooms() {
        ForEachChanged(Kind::Room, FirstExit, [&](std::string_view name, Cell cell) {
            Line({"room", name, std::to_string(state_[cell + Visits]),
                  std::to_string(state_[cell + RoomOff])});
        });
        ForEachChanged(Kind::Room, RoomCells, [&](std::string_view name, Cell cell) {
            for (Cell exit = 0; exit < DirectionCount; ++exit)
                if (IsChanged(cell + FirstExit + exit))
                    Line({"exit", name, DirectionNames[exit],
                          std::to_string(state_[cell + FirstExit + exit] & ExitClosed),
                          RoomName(state_[cell + FirstExit + exit] >> 1)});
        });
    }

    void WriteThings() {
        ForEachChanged(Kind::Thing, ThingCells, [&](std::string_view key, Cell cell) {
            Line({"thing", key, RoomName(state_[cell + Where]), std::to_string(state_[cell + Switches])});
        });
    }

    const World& world_;
    const Names& names_;
    const State& state_;
    std::string bytes_;
};

/// Reads the lines into a list of what to set, and sets nothing before all of them are understood.
class Reader {
public:
    Reader(const World& world, State& state, std::vector<std::string>& lost)
        : world_(world),
          names_(world.GetNames()),
          state_(state),
          lost_(lost) {}

    bool Read(std::string_view bytes) {
        if (bytes.size() > LargestSave || !HasWholeEnd(bytes) || !ReadLines(bytes))
            return false;
        const std::vector<std::int64_t>& start = world_.Start();
        for (std::size_t cell = 0; cell < start.size(); ++cell)
            if (!set_.contains(static_cast<Cell>(cell)))
                state_.Set(static_cast<Cell>(cell), start[cell]);
        for (const auto& [cell, value] : numbers_)
            state_.Set(cell, value);
        for (const auto& [cell, text] : texts_)
            state_.SetText(cell, text);
        return true;
    }

private:
    /// Cuts the last line off, which must hold the hash of all before it.
    static bool HasWholeEnd(std::string_view& bytes) {
        const std::size_t end = bytes.rfind("end\t");
        if (end == std::string_view::npos || !bytes.ends_with('\n'))
            return false;
        const std::string_view hash = bytes.substr(end + 4, bytes.size() - end - 5);
        bytes = bytes.substr(0, end);
        return hash == std::to_string(HashOf(bytes));
    }

    bool ReadLines(std::string_view bytes) {
        bool isFirst = true;
        while (!bytes.empty()) {
            const std::size_t end = bytes.find('\n');
            if (end == std::string_view::npos)
                return false;
            const std::string_view line = bytes.substr(0, end);
            bytes.remove_prefix(end + 1);
            if (isFirst ? line != FirstLine : !ReadLine(line))
                return false;
            isFirst = false;
        }
        return !isFirst;
    }

    bool ReadLine(std::string_view line) {
        fields_.clear();
        for (const std::string_view field : SplitAt(line, "\t")) {
            std::optional<std::string> plain = Unescaped(field);
            if (!plain)
                return false;
            fields_.push_back(*std::move(plain));
        }
        const std::string& word = fields_.front();
        if (word == "game")
            return fields_.size() == 2;
        if (word == "wait")
            return ReadWait();
        if (word == "room" || word == "exit")
            return word == "room" ? ReadRoom() : ReadExit();
        if (word == "thing")
            return ReadThing();
        if (word == "variable")
            return ReadVariable();
        if (word == "timer")
            return ReadTimer();
        for (const KindWord& row : PlainKinds)
            if (word == row.word)
                return ReadPlain(row);
        return ReadGameCell();
    }

    /// The number in a field; nothing for any other text.
    std::optional<std::int64_t> NumberAt(std::size_t field, std::int64_t lowest, std::int64_t highest) const {
        const std::string& text = fields_[field];
        std::int64_t number = 0;
        const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error != std::errc() || stop != text.data() + text.size() || number < lowest || number > highest)
            return std::nullopt;
        return number;
    }

    static constexpr std::int64_t Most = INT64_MAX / 4;

    bool Set(Cell cell, std::optional<std::int64_t> value) {
        if (!value || !set_.insert(cell).second)
            return false;
        numbers_.emplace_back(cell, *value);
        return true;
    }

    bool SetText(Cell cell, const std::string& text) {
        if (text.size() > Limits::TextInVariable || !set_.insert(cell).second)
            return false;
        texts_.emplace_back(cell, text);
        return true;
    }

    bool Lose(std::string_view what, const std::string& name) {
        lost_.push_back(std::string(what) + " \"" + name + "\"");
        return true;
    }

    /// The packed number of a room, 0 for none or one that the game has no more.
    std::int64_t RoomAt(std::size_t field) {
        if (fields_[field].empty())
            return 0;
        const Number room = names_.Find(Kind::Room, fields_[field]);
        if (room != None && world_.FindRoom(room) != nullptr)
            return static_cast<std::int64_t>(room) + 1;
        Lose("room", fields_[field]);
        return 0;
    }

    bool ReadGameCell() {
        if (fields_.size() == 2) {
            for (const NumberCell& row : NumberCells)
                if (fields_[0] == row.word)
                    return Set(row.cell, row.cell == Chance
                                             ? NumberAt(1, INT64_MIN, INT64_MAX)
                                             : NumberAt(1, 0, row.cell == Ending ? Lost : Most));
            for (const NumberCell& row : TextCells)
                if (fields_[0] == row.word)
                    return SetText(row.cell, fields_[1]);
            for (const NumberCell& row : RoomCellsOfPlayer)
                if (fields_[0] == row.word)
                    return ReadPlayerRoom(row.cell);
        }
        if (fields_.size() == 3)
            for (const NumberCell& row : NamedCells)
                if (fields_[0] == row.word)
                    return ReadReference(row.cell);
        return false;
    }

    bool ReadPlayerRoom(Cell cell) {
        std::int64_t room = RoomAt(1);
        if (cell == PlayerRoom && room == 0 && world_.FindRoom(world_.StartRoom()) != nullptr)
            room = static_cast<std::int64_t>(world_.StartRoom()) + 1;
        return Set(cell, room);
    }

    bool ReadReference(Cell cell) {
        const bool isThing = fields_[1] == "thing";
        if (!isThing && fields_[1] != "item")
            return false;
        const Number number = names_.Find(isThing ? Kind::Thing : Kind::Item, fields_[2]);
        const bool isThere = number != None && (isThing ? world_.FindThing(number) != nullptr
                                                        : world_.FindItem(number) != nullptr);
        return !isThere ||
               Set(cell, Reference{isThing ? Reference::Thing : Reference::Item, number}.Packed());
    }

    bool ReadWait() {
        if (fields_.size() != 4 || waits_ == static_cast<std::int64_t>(MostWaits))
            return false;
        const Number procedure = names_.Find(Kind::Procedure, fields_[3]);
        if (procedure == None || world_.FindProcedure(procedure) == nullptr)
            return Lose("procedure", fields_[3]);
        const auto cells = static_cast<Cell>(FirstWait + static_cast<Cell>(waits_) * WaitCells);
        numbers_.emplace_back(WaitCount, ++waits_);
        set_.insert(WaitCount);
        return Set(cells + WaitDue, NumberAt(1, 0, Most)) &&
               Set(cells + WaitSequence, NumberAt(2, 0, Most)) &&
               Set(cells + WaitProcedure, static_cast<std::int64_t>(procedure) + 1);
    }

    bool ReadRoom() {
        if (fields_.size() != 4)
            return false;
        const Number room = names_.Find(Kind::Room, fields_[1]);
        if (room == None || world_.FindRoom(room) == nullptr)
            return Lose("room", fields_[1]);
        const Cell cell = names_.CellOf(Kind::Room, room);
        return Set(cell + Visits, NumberAt(2, 0, Most)) && Set(cell + RoomOff, NumberAt(3, 0, 1));
    }

    bool ReadExit() {
        if (fields_.size() != 5)
            return false;
        const Number room = names_.Find(Kind::Room, fields_[1]);
        Cell exit = 0;
        while (exit < DirectionCount && fields_[2] != DirectionNames[exit])
            ++exit;
        const std::optional<std::int64_t> closed = NumberAt(3, 0, 1);
        if (exit == DirectionCount || !closed)
            return false;
        if (room == None || world_.FindRoom(room) == nullptr)
            return Lose("room", fields_[1]);
        return Set(names_.CellOf(Kind::Room, room) + FirstExit + exit, (RoomAt(4) << 1) | *closed);
    }

    bool ReadThing() {
        if (fields_.size() != 4 || fields_[1].empty())
            return false;
        const Number thing = names_.Find(Kind::Thing, fields_[1]);
        if (thing == None || world_.FindThing(thing) == nullptr)
            return Lose(fields_[1].front() == 'c' ? "character" : "object", fields_[1].substr(1));
        const Cell cell = names_.CellOf(Kind::Thing, thing);
        return Set(cell + Where, RoomAt(2)) && Set(cell + Switches, NumberAt(3, 0, Hidden | Off));
    }

    bool ReadPlain(const KindWord& row) {
        if (fields_.size() != 3)
            return false;
        const std::int64_t lowest = row.kind == Kind::Collectable ? -HighestNumber : 0;
        const std::int64_t highest = row.kind == Kind::Collectable ? HighestNumber : 1;
        const std::optional<std::int64_t> value = NumberAt(2, lowest, highest);
        if (!value)
            return false;
        const Number number = names_.Find(row.kind, fields_[1]);
        const bool isThere =
            number != None &&
            (row.kind == Kind::Flag || (row.kind == Kind::Item ? world_.FindItem(number) != nullptr
                                                               : world_.FindCollectable(number) != nullptr));
        return isThere ? Set(names_.CellOf(row.kind, number), value) : Lose(row.word, fields_[1]);
    }

    bool ReadVariable() {
        if (fields_.size() != 4 || (fields_[2] != "n" && fields_[2] != "t"))
            return false;
        const Number number = names_.Find(Kind::Variable, fields_[1]);
        if (number == None)
            return Lose("variable", fields_[1]);
        const Cell cell = names_.CellOf(Kind::Variable, number);
        if (fields_[2] == "t")
            return SetText(cell, fields_[3]);
        const std::optional<std::int64_t> value = NumberAt(3, LowestNumber, HighestNumber);
        return value && Set(cell, FromNumber(*value));
    }

    bool ReadTimer() {
        if (fields_.size() != 5)
            return false;
        const Number timer = names_.Find(Kind::Timer, fields_[1]);
        if (timer == None)
            return Lose("timer", fields_[1]);
        const Cell cell = names_.CellOf(Kind::Timer, timer);
        return Set(cell + TimerOn, NumberAt(2, 0, 1)) && Set(cell + TimerDue, NumberAt(3, 0, Most)) &&
               Set(cell + TimerSequence, NumberAt(4, 0, Most));
    }

    const World& world_;
    const Names& names_;
    State& state_;
    std::vector<std::string>& lost_;
    std::vector<std::string> fields_;
    std::vector<std::pair<Cell, std::int64_t>> numbers_;
    std::vector<std::pair<Cell, std::string>> texts_;
    std::set<Cell> set_;
    std::int64_t waits_ = 0;
};

} // namespace

std::string WriteSave(const World& world, const State& state) {
    return Writer(world, state).Write();
}

bool ReadSave(std::string_view bytes, const World& world, State& state, std::vector<std::string>& lost) {
    std::vector<std::string> found;
    if (!Reader(world, state, found).Read(bytes))
        return false;
    lost = std::move(found);
    return true;
}

} // namespace zem::play
