#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace zem::bench {

/// Makes the file of a game that is larger than any author's: 5,000 rooms, 20,000 objects, 3,000 procedures,
/// 2,000 texts and 3 million words, whose scripts name all of them, flags, variables, items and menus.
class LargeGame {
public:
    static constexpr int Rooms = 5000;
    static constexpr int ObjectsInRoom = 4;
    static constexpr int Procedures = 3000;
    static constexpr int Texts = 2000;

    /// The bytes of the file, always the same.
    std::string Make() {
        file_ = "define game <Large>\r\nstart <room 1>\r\nitems <" + Items() +
                ">\r\nstartitems <item 1>\r\ncollectables <score p=0 [! point*s*]>\r\n"
                "startscript set <turns; 0>\r\nafterturn add <turns; 1>\r\n"
                "command <say #words#> msg <\"#words#\", you say.>\r\nend define\r\n\r\n"
                "define synonyms\r\nget = take\r\nend define\r\n\r\n";
        for (int k = 1; k <= Rooms; ++k)
            AddRoom(k);
        for (int k = 1; k <= Procedures; ++k)
            AddProcedure(k);
        for (int k = 1; k <= Texts; ++k)
            file_ +=
                "define text <text " + std::to_string(k) + ">\r\n" + Prose(250) + "\r\nend define\r\n\r\n";
        for (int k = 1; k <= 100; ++k)
            file_ += "define selection <menu " + std::to_string(k) + ">\r\ninfo <" + Prose(8) +
                     ">\r\nchoice <" + Prose(3) + "> " + Command() + "\r\nend define\r\n\r\n";
        return std::move(file_);
    }

private:
    static constexpr int ItemCount = 500;

    int Pick(int count) {
        state_ ^= state_ << 13U;
        state_ ^= state_ >> 7U;
        state_ ^= state_ << 17U;
        return static_cast<int>(state_ % static_cast<std::uint64_t>(count));
    }

    std::string Name(const char* kind, int count) { return kind + std::to_string(1 + Pick(count)); }

    static std::string Items() {
        std::string list;
        for (int k = 1; k <= ItemCount; ++k)
            list += (k == 1 ? "item " : "; item ") + std::to_string(k);
        return list;
    }

    /// Words as frequent as those of a language: the first ones are most of the text.
    std::string Prose(int words) {
        static const std::vector<std::string> Common = {"the",   "of",   "and",   "a",     "to",     "in",
                                                        "you",   "it",   "is",    "that",  "with",   "was",
                                                        "for",   "from", "there", "door",  "lamp",   "wall",
                                                        "stone", "old",  "light", "under", "behind", "water"};
        static const std::vector<std::string> Starts = {"br", "cl", "d", "f",  "gr", "h",
                                                        "l",  "m",  "p", "qu", "s",  "t"};
        static const std::vector<std::string> Middles = {"a", "e", "i", "o", "ou", "ea", "\xE9"};
        static const std::vector<std::string> Ends = {"rd",   "ll",    "nding", "ster", "t",
                                                      "ning", "rough", "llow",  "mber"};
        std::string text;
        for (int k = 0; k < words; ++k) {
            if (k != 0)
                text += ' ';
            if (Pick(2) == 0)
                text += Common[static_cast<std::size_t>(Pick(static_cast<int>(Common.size())))];
            else
                text += Starts[static_cast<std::size_t>(Pick(12))] +
                        Middles[static_cast<std::size_t>(Pick(7))] + Ends[static_cast<std::size_t>(Pick(9))];
            if (Pick(300) == 0)
                text += " #visitor#";
        }
        return text + '.';
    }

    std::string Command() {
        switch (Pick(8)) {
        case 0:
            return "goto <" + Name("room ", Rooms) + ">";
        case 1:
            return "do <" + Name("procedure ", Procedures) + ">";
        case 2:
            return "give <" + Name("item ", ItemCount) + ">";
        case 3:
            return "show <" + Name("object ", Rooms * ObjectsInRoom) + ">";
        case 4:
            return "text <" + Name("text ", Texts) + ">";
        case 5:
            return "flag on <" + Name("flag ", 1000) + ">";
        case 6:
            return "add <" + Name("number ", 200) + "; 1>";
        default:
            return "msg <" + Prose(20) + ">";
        }
    }

    std::string Line() {
        if (Pick(3) != 0)
            return Command();
        return "if flag <" + Name("flag ", 1000) + "> and has <" + Name("item ", ItemCount) + "> then " +
               Command() + " else " + Command();
    }

    void AddRoom(int k) {
        file_ += "define room <room " + std::to_string(k) + ">\r\nalias <" + Prose(2) + ">\r\nlook <" +
                 Prose(150) + ">\r\nnorth <" + Name("room ", Rooms) + ">\r\nsouth <" + Name("room ", Rooms) +
                 ">\r\neast " + Line() + "\r\nout <" + Name("room ", Rooms) + ">\r\nplace <the; " +
                 Name("room ", Rooms) + ">\r\nscript " + Line() + "\r\ncommand <listen to #words#> " +
                 Line() + "\r\n";
        for (int object = 0; object < ObjectsInRoom; ++object)
            file_ += "define object <object " + std::to_string((k - 1) * ObjectsInRoom + object + 1) +
                     ">\r\nlook msg <" + Prose(30) + ">\r\ntake " + Line() + "\r\nuse <" +
                     Name("item ", ItemCount) + "> " + Line() + "\r\nend define\r\n";
        file_ += "end define\r\n\r\n";
    }

    void AddProcedure(int k) {
        file_ += "define procedure <procedure " + std::to_string(k) + ">\r\n";
        for (int line = 0; line < 8; ++line)
            file_ += (line % 2 == 0 ? "msg <" + Prose(28) + ">" : Line()) + "\r\n";
        file_ += "end define\r\n\r\n";
    }

    std::string file_;
    std::uint64_t state_ = 20'261'122;
};

} // namespace zem::bench
