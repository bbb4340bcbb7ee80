#include "support/Games.h"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace zem::test {
namespace {

/// Loading what was saved must give the game that was saved, and saving that must give the same bytes.
void ExpectRoundTrip(const GameModel& game) {
    const std::string saved = SaveToBytes(game);
    const GameModel again = LoadBytes(saved);
    EXPECT_TRUE(SameGame(WithoutNamelessItem(game), WithoutNamelessItem(again))) << saved;
    EXPECT_EQ(SaveToBytes(again), saved);
}

TEST(RoundTrip, KeepsEverySample) {
    for (const auto& sample : FilesIn(ZEM_SAMPLES)) {
        SCOPED_TRACE(sample.filename());
        ExpectRoundTrip(LoadBytes(ReadBytes(sample)));
    }
}

/// Writes random game files the way authors do: any order, any capitals, comments, blanks, tabs, braces.
/// Left out is what cannot come back by the nature of the format: a line that ends "__" only after its
/// trailing blanks are gone, an "else" in the tags, an include inside a block, a block that is not quite a
/// room.
class GameFileGenerator {
public:
    explicit GameFileGenerator(unsigned seed) : random_(seed) {}

    std::string Generate() {
        Line("define game <" + Text() + ">");
        Lines({"start <$>",
               "game author <$>",
               "game info <$>",
               "startscript $s",
               "description $s",
               "afterturn $s",
               "default fontsize <12>",
               "command <$> $s",
               "command <$>",
               "use <$> $s",
               "nodebug",
               "error <badgo; $>",
               "error <unknown; $>",
               "items <lamp; key, rope>",
               "possitems <$w>",
               "startitems <Key, rope>",
               "collectables <gold p=0 [!]; luck n=3 []>",
               "mood <$>",
               "' $",
               ""});
        End();
        for (int count = Pick(6); count > 0; --count)
            OtherBlock();
        return std::move(file_);
    }

private:
    int Pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random_); }

    std::string OneOf(const std::vector<std::string>& texts) {
        return texts[static_cast<std::size_t>(Pick(static_cast<int>(texts.size())))];
    }

    std::string Word() { return OneOf({"hall", "Attic", "caf\xE9", "x", "a b", "|b|xb", "12", "'"}); }

    std::string Text() {
        std::string text;
        for (int count = Pick(4); count > 0; --count)
            text += Word() + (Pick(3) == 0 ? "\t" : " ");
        return text;
    }

    /// With the signs of Lines in it.
    std::string Script() {
        return OneOf({"if flag <$w> then msg <$> else die", "{ msg <$> }",
                      "{\n  msg <$>\n\n  if x then {\n do <$w>\n }\n else msg <no>\n}",
                      "if has <x> then {\nwin\n} else { die }", "msg <$__\n   and more>", "msg <$>"});
    }

    void Line(const std::string& line) {
        file_.append(static_cast<std::size_t>(Pick(3)) * 2, ' ').append(line);
        file_ += Pick(4) == 0 ? "\n" : "\r\n";
    }

    void End() {
        Line(Pick(4) == 0 ? "END define" : "end define");
        if (Pick(2) == 0)
            Line(Pick(2) == 0 ? "' between blocks" : "");
    }

    /// Writes some lines: "$" stands for a text, "$s" for a script, "$w" for a word.
    void Lines(const std::vector<std::string>& patterns) {
        for (int count = Pick(12); count > 0; --count) {
            std::string line = OneOf(patterns);
            for (std::size_t at = line.find('$'); at != std::string::npos; at = line.find('$')) {
                const char kind = at + 1 < line.size() ? line[at + 1] : ' ';
                const bool plain = kind != 's' && kind != 'w';
                line.replace(at, plain ? 1 : 2, kind == 's' ? Script() : plain ? Text() : Word());
            }
            Line(line);
        }
    }

    void RoomBlock() {
        Line("define room <" + std::to_string(++names_) + Word() + ">");
        for (int count = Pick(4); count > 0; --count) {
            Lines({"alias <$>", "LOOK <$>", "out <$w>", "out <$w> $s", "north <$w>", "south $s", "West <$w>",
                   "southeast $s", "place <the; $w> $s", "place <$w>", "prefix <$>", "script $s",
                   "indescription <$>", "description $s", "command <$> $s", "use <$w> $s", "give <$w>", "' $",
                   ""});
            const bool character = Pick(2) == 0;
            Line(std::string("define ") + (character ? "character <" : "object <") + Word() + ">");
            Lines({"look <$>", "look $s", "speak <$>", "gender <$>", "prefix <$>", "suffix <$>", "hidden",
                   "invisible", "Hidden", "take $s", "give <$w> $s", "use <$w> $s", "' $", "heavy", ""});
            Line("end define");
        }
        End();
    }

    void OtherBlock() {
        switch (Pick(6)) {
        case 0:
            RoomBlock();
            return;
        case 1:
            Line("define text <" + std::string(Pick(3) == 0 ? "Win" : Word()) + ">");
            Lines({"$", "", "else { $", "' $"});
            break;
        case 2:
            Line("define procedure <" + Word() + ">");
            Lines({"msg <$>", "$s", "", "' $", "else msg <$>"});
            break;
        case 3:
            Line("define selection <" + Word() + ">");
            Lines({"info <$>", "choice <$> $s", "choice <$>", "' $"});
            break;
        case 4:
            Line("define synonyms");
            Lines({"$w; $w = $w", "$w = $", "=$w = $w"});
            break;
        default:
            Line("define timer <" + Word() + ">");
            Lines({"interval <5>", "action $s", "", "$"});
            Line("define part <x>");
            Line("end define");
        }
        End();
    }

    std::mt19937 random_;
    std::string file_;
    int names_ = 0;
};

TEST(RoundTrip, KeepsGeneratedGames) {
    for (unsigned seed = 1; seed <= 400 && !::testing::Test::HasFailure(); ++seed) {
        const std::string file = GameFileGenerator(seed).Generate();
        SCOPED_TRACE("seed " + std::to_string(seed) + "\n" + file);
        ExpectRoundTrip(LoadBytes(file));
    }
}

} // namespace
} // namespace zem::test
