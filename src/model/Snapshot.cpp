#include "model/Snapshot.h"

#include "model/Fields.h"

#include <cstdint>
#include <limits>

namespace zem {

namespace {

constexpr std::string_view Magic = "ZEM snapshot 1\n";
constexpr std::size_t ChecksumSize = 8;

/// FNV-1a, which finds damage by accident.
std::uint64_t Checksum(std::string_view bytes) {
    std::uint64_t sum = 0xCBF29CE484222325U;
    for (const char c : bytes)
        sum = (sum ^ static_cast<unsigned char>(c)) * 0x100000001B3U;
    return sum;
}

class Writer {
public:
    std::string bytes{Magic};

    void Number(std::uint64_t value, int size) {
        for (int i = 0; i < size; ++i)
            bytes += static_cast<char>(value >> (8 * i) & 0xFF);
    }

    void Value(const std::string& text) {
        if (text.size() > std::numeric_limits<std::uint32_t>::max())
            throw KelError("a text of the game is too large to be copied");
        Number(text.size(), 4);
        bytes += text;
    }
    void Value(bool value) { Number(value ? 1 : 0, 1); }
    void Value(std::int16_t value) { Number(static_cast<std::uint16_t>(value), 2); }

    template <class Record>
    void Value(const Shared<Record>& record) {
        Value(*record);
    }
    void Value(const RecordList auto& list) {
        Value(list.Count());
        for (const auto& record : list)
            Value(record);
    }
    template <class Record>
    void Value(const Record& record) {
        ForEachField<Record>([&](const auto& field) { Value(record.*field.member); });
    }
};

class Reader {
public:
    explicit Reader(std::string_view bytes) : bytes_(bytes) {}

    bool IsAtEnd() const { return bytes_.empty(); }

    std::string_view Take(std::size_t size) {
        if (size > bytes_.size())
            throw KelError("the copy of the game is damaged: it ends too early");
        const std::string_view taken = bytes_.substr(0, size);
        bytes_.remove_prefix(size);
        return taken;
    }

    std::uint64_t Number(std::size_t size) {
        std::uint64_t value = 0;
        int shift = 0;
        for (const char c : Take(size)) {
            value |= std::uint64_t{static_cast<unsigned char>(c)} << shift;
            shift += 8;
        }
        return value;
    }

    void Value(std::string& text) { text = Take(Number(4)); }
    void Value(bool& value) {
        const std::uint64_t number = Number(1);
        if (number > 1)
            throw KelError("the copy of the game is damaged: a mark is neither set nor unset");
        value = number == 1;
    }
    void Value(std::int16_t& value) { value = static_cast<std::int16_t>(Number(2)); }

    template <class Record>
    void Value(Shared<Record>& record) {
        Record value;
        Value(value);
        if (value != *record)
            record = std::move(value);
    }
    void Value(RecordList auto& list) {
        std::int16_t count = 0;
        Value(count);
        if (count < 0)
            throw KelError("the copy of the game is damaged: a list has fewer than no entries");
        for (int k = 1; k <= count; ++k)
            Value(list.Append());
    }
    template <class Record>
    void Value(Record& record) {
        ForEachField<Record>([&](const auto& field) { Value(record.*field.member); });
    }

private:
    std::string_view bytes_;
};

} // namespace

std::string WriteSnapshot(const GameModel& game) {
    Writer writer;
    writer.Value(game.FileName);
    writer.Value(game.Modified);
    writer.Value(game);
    writer.Number(Checksum(writer.bytes), ChecksumSize);
    return std::move(writer.bytes);
}

GameModel ReadSnapshot(std::string_view bytes) {
    if (!bytes.starts_with(Magic) || bytes.size() < Magic.size() + ChecksumSize)
        throw KelError("this is no copy of a game");
    const std::string_view content = bytes.substr(0, bytes.size() - ChecksumSize);
    if (Reader(bytes.substr(content.size())).Number(ChecksumSize) != Checksum(content))
        throw KelError("the copy of the game is damaged");
    Reader reader(content.substr(Magic.size()));
    GameModel game;
    reader.Value(game.FileName);
    reader.Value(game.Modified);
    reader.Value(game);
    if (!reader.IsAtEnd())
        throw KelError("the copy of the game is damaged: it is too long");
    return game;
}

} // namespace zem
