#pragma once

#include "model/Fields.h"
#include "model/GameModel.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <type_traits>

namespace zem::test {

/// Makes games of a few records whose texts are put together from what means something in a game file.
class RandomGame {
public:
    /// @param trapsInTen  how many of ten texts hold such pieces; the others are plain words
    RandomGame(unsigned seed, int trapsInTen) : random_(seed), trapsInTen_(trapsInTen) {}

    GameModel Make() {
        GameModel game;
        Fill(game);
        game.FileName = "games/g.kel";
        game.Modified = Pick(2) == 0;
        return game;
    }

private:
    int Pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random_); }

    template <std::size_t Size>
    const char* PickOf(const std::array<const char*, Size>& pieces) {
        return pieces[static_cast<std::size_t>(Pick(static_cast<int>(Size)))];
    }

    std::string Text() {
        static constexpr std::array Words = {"lamp", "a thin man", "Caf\xE9", "", "msg <x>", "17"};
        static constexpr std::array Pieces = {
            "<",        ">",           "{",      "}",         ",",        ";",       "=",      "[",
            "]",        "'",           "\"",     "__",        "\t",       "\r",      "\n",     " ",
            "\r\n",     "define x",    "if a b", "else",      "defined ", "\xA0",    "\x81",   "|n",
            "lamp",     "door ",       "look ",  "start <x>", "nodebug",  "hidden",  "hidden", "end define",
            "[action]", "!include <>", "\r\n",   "use <x> y", "'ZEM-NIP", "intro\n", "0",      "gold p=0 []"};
        if (Pick(10) >= trapsInTen_)
            return PickOf(Words);
        std::string text;
        for (int count = 1 + Pick(4); count > 0; --count)
            text += PickOf(Pieces);
        return text;
    }

    void Fill(std::string& text) { text = Pick(2) == 0 ? "" : Text(); }
    void Fill(bool& flag) { flag = Pick(4) == 0; }
    void Fill(std::int16_t& number) { number = static_cast<std::int16_t>(Pick(65536) - 32768); }
    void Fill(Collectable& collectable) {
        collectable.Name = "gold";
        collectable.Definition = "gold p=" + Text() + " [" + Text() + "]";
    }
    void Fill(ErrorMessage& message) { message = {"description", "bad" + std::to_string(++names_), Text()}; }
    template <class Record>
    void Fill(Shared<Record>& record) {
        Record value{};
        Fill(value);
        record = value;
    }
    void Fill(RecordList auto& list) {
        for (int count = Pick(3); count > 0; --count)
            Fill(list.Append());
    }
    template <class Record>
    void Fill(Record& record) {
        ForEachField<Record>([&](const auto& field) {
            if (Pick(3) != 0)
                Fill(record.*field.member);
        });
        if constexpr (std::is_same_v<Record, GameModel>)
            record.KelVersion = CurrentKelVersion;
    }

    std::mt19937 random_;
    int trapsInTen_;
    int names_ = 0;
};

} // namespace zem::test
