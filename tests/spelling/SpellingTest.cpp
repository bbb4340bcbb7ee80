#include "base/KelError.h"
#include "base/TextEncoding.h"
#include "figures/PrintedWords.h"
#include "spelling/DictionaryList.h"
#include "spelling/UnknownWords.h"
#include "support/Cases.h"
#include "support/Catalogue.h"
#include "support/Games.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <regex>

namespace zem::test {
namespace {

using namespace spelling;

const std::string DictionaryData = ZEM_TEST_DATA "/spelling/";

std::shared_ptr<const Dictionary> LoadDictionary(const std::string& name) {
    return std::make_shared<const Dictionary>(DictionaryData + name + ".aff");
}

/// The unknown words of a text, with a blank between them; "[]" around what is marked of a word with codes
/// inside.
std::string UnknownOf(const std::string& text, const Speller& speller) {
    std::string unknown;
    ForEachUnknownWord(text, speller, [&](const CheckedWord& word) {
        unknown += (unknown.empty() ? "" : " ") + std::string(word.word);
        if (!word.isWhole)
            unknown += "[" + std::string(word.range.Of(text)) + "]";
        else
            EXPECT_EQ(word.range.Of(text), word.word);
    });
    return unknown;
}

TEST(Spelling, KnowsWhatIsAWord) {
    const Speller speller(LoadDictionary("en_XX"), std::make_shared<GameWords>());
    for (const auto& [text, unknown] : Cases<std::string, std::string>{
             {"", ""},
             {"The old lanterns, opened.", ""},
             {"The olld lanterns openned it", "olld openned"},
             {"THE OLD House. THE OLLD", "OLLD"},
             {"'the old' \x93here\x94 \x91old\x92", ""},
             {"don't don\x92t o'clock half-forgotten will-o'-the-wisp", ""},
             {"the door's house's xyzzy's XYZZY\x92S-door", "xyzzy XYZZY"},
             {"half-forgoten old-xyzzy-door", "forgoten xyzzy"},
             {"the caf\xE9s na\xEFve caf\xEAs", "caf\xEAs"},
             {"3rd 42 x2 a1b2 b c X", ""},
             // Codes and variables are no words, and what they touch is none to be judged.
             {"|bold|xb |crold|cb |s12small|n|jcdoor", ""},
             {"|bT|xbhe |bTeh|xb", "Teh"},
             {"|bK|xberlevan is |inot|xi here|i", "Kerlevan[erlevan] not"},
             {"doorr|nhouze", "doorr houze"},
             {"#nosuchword# #visitor name# %prcnt% #wordd#s un#it# #it#'s", ""},
             {"5% of the 10% xyzzy", "xyzzy"},
             {"northeast southwest of the door, NE", ""},
         })
        EXPECT_EQ(UnknownOf(text, speller), unknown) << text;
    EXPECT_EQ(UnknownOf("xyzzy", Speller()), "") << "without a dictionary nothing is wrong";
}

TEST(Spelling, KnowsWhatTheGameSays) {
    const GameModel game = LoadBytes(
        "define game <Zorkle>\r\nstart <Quayx>\r\ngame author <Jo Nazg\xFBl>\r\nitems <blurple key>\r\n"
        "collectables <glorp i=0 []>\r\nend define\r\ndefine room <Quayx>\r\nalias <Tall Kervella>\r\nprefix "
        "<zee>\r\n"
        "place <zome; Lofft>\r\ndefine object <fnord-box>\r\nsuffix <wobb>\r\nend define\r\n"
        "define character <Mags>\r\nend define\r\nend define\r\n"
        "define procedure <prokk>\r\nmsg <x>\r\nend define\r\ndefine synonyms\r\nsnarf; pick = taek\r\nend "
        "define\r\n");
    auto words = std::make_shared<GameWords>(game);
    words->Add("Pentreath");
    words->Add("whelm");
    const Speller speller(LoadDictionary("en_XX"), words);
    for (const auto& [text, unknown] : Cases<std::string, std::string>{
             {"Zorkle zorkle QUAYX Quayx's blurple glorp Kervella zee zome Lofft fnord box wobb Mags' snarf "
              "taek",
              ""},
             {"Nazg\xFBl NAZG\xDBL Nazg\xFBl\x92s l'Mags d\x92Mags fnord-box-door old-Mags", ""},
             {"Pentreath PENTREATH Pentreath's whelm Whelm WHELM", ""},
             {"pentreath pEntreath prokk's Magss Zorkles", "pentreath pEntreath prokk Magss Zorkles"},
         })
        EXPECT_EQ(UnknownOf(text, speller), unknown) << text;
    EXPECT_FALSE(*words == GameWords(game));
}

TEST(Spelling, ReadsDictionariesInThreeEncodings) {
    for (const auto& [name, word, isKnown] : Cases<const char*, std::string, bool>{
             {"fr_AA", "d\xE9j\xE0", true},
             {"fr_AA", "\x9Cuvre", true}, // spelled with two letters there
             {"fr_AA", "d\xE9j\xE8", false},
             {"fr_AA", "\x9Aok", true}, // it cannot tell
             {"fr_BB", "\x9Cuvre", true},
             {"fr_BB",
              "\x9E"
              "ena",
              true},
             {"fr_BB", "oeuvre", false},
             {"fr_BB", "caf\xE9", true},
             {"en_XX", "caf\xE9s", true},
         })
        EXPECT_EQ(LoadDictionary(name)->Spells(word), isKnown) << name << " " << word;
    EXPECT_EQ(LoadDictionary("fr_BB")->Suggest("\x9Cuvrre").front(), "\x9Cuvre");
    EXPECT_EQ(LoadDictionary("en_XX")->Suggest("caf\xE9z").front(), "caf\xE9");
    EXPECT_EQ(LoadDictionary("en_XX")->Suggest("lanturn").front(), "lantern");
}

TEST(Spelling, NamesADictionaryThatCannotBeUsed) {
    for (const auto& [name, told] : Cases<const char*, const char*>{
             {"ru_RU", "ru_RU.aff is in the encoding KOI8-R"},
             {"cut", "cut.dic is damaged: it ends too early"},
             {"bad", "bad.dic is damaged: it is no text"},
             {"mixed", "mixed.dic is damaged: it is not in UTF-8"},
             {"norules", "norules.aff is damaged"},
             {"nocount", "nocount.dic is damaged: it does not begin with the number"},
             {"nowhere", "nowhere.aff"},
         })
        try {
            LoadDictionary(name);
            ADD_FAILURE() << name << " was taken";
        } catch (const KelError& error) {
            EXPECT_NE(std::string(error.what()).find(told), std::string::npos) << error.what();
        }
}

TEST(Spelling, FindsTheDictionaryOfALanguage) {
    const auto installed = ListDictionaries({"/nowhere", DictionaryData});
    const auto named = [&](const char* language) {
        const InstalledDictionary* found = FindDictionary(installed, language);
        return found == nullptr ? std::string() : found->language;
    };
    for (const auto& [wanted, found] : Cases<const char*, const char*>{{"en_XX", "en_XX"},
                                                                       {"en_US", "en_XX"},
                                                                       {"en", "en_XX"},
                                                                       {"fr_BB", "fr_BB"},
                                                                       {"fr_FR", "fr_AA"},
                                                                       {"de_DE", ""},
                                                                       {"", ""}})
        EXPECT_EQ(named(wanted), found) << wanted;
    EXPECT_NE(TellNoDictionary(installed, "de_DE").find("en_XX, fr_AA"), std::string::npos);
    EXPECT_NE(TellNoDictionary({}, "de_DE").find("No dictionary is installed"), std::string::npos);
}

/// Prose wherever a game prints it, and where it does not.
GameModel GameWithTypos() {
    return LoadBytes(
        "define game <Brambl>\r\nstart <Hall>\r\ngame info <One grublet.|nTwo grublets|nn>\r\n"
        "startscript msg <A grublet! The Kerl was old. Kerl, you and Kerl. Kerl is here.>\r\n"
        "command <grublet #what#> if flag <grublet> then msg <half-grublet> else goto <grublet>\r\n"
        "error <badgo; No grublet there.>\r\nend define\r\n"
        "define room <Hall>\r\nlook <The |bgrublet|xb is old, gru|bblet.>\r\n"
        "indescription <You is in gruble>\r\n"
        "description {\r\nmsg <the 'grublet's>\r\nmsg <#grublet#>\r\n}\r\nend define\r\n"
        "define text <intro>\r\nIt is a\r\ngrublet, it is.\r\nend define\r\n"
        "define selection <menuu>\r\ninfo <Grublet>\r\nchoice <old grublet> msg <a>\r\nend define\r\n");
}

TEST(Spelling, ShowsEachUnknownWordOnceWithItsPlaces) {
    const GameModel game = GameWithTypos();
    const CommandLookup commands(ShippedCatalogue());
    const CheckedTexts checked =
        CheckTexts(game, commands, {LoadDictionary("en_XX"), std::make_shared<GameWords>(game)});
    std::map<std::string, std::size_t> counts;
    for (const UnknownWord& unknown : checked.unknown) {
        counts[unknown.word] = unknown.count;
        EXPECT_EQ(unknown.places.size(), unknown.count);
        EXPECT_EQ(unknown.looksLikeName, unknown.word == "Kerl") << unknown.word;
        for (const Place& place : unknown.places)
            EXPECT_NE(unknown.word.find(place.bytes.Of(TextAt(game, place))), std::string::npos)
                << DescribePlace(game, place);
    }
    EXPECT_EQ(checked.unknown.front().word, "grublet");
    EXPECT_EQ(counts["Kerl"], 4u);
    EXPECT_EQ(counts["gruble"], 1u);
    EXPECT_EQ(counts["grublets"], 1u);
    EXPECT_EQ(counts["Grublet"], 1u);
    EXPECT_EQ(counts.count("menuu") + counts.count("Brambl"), 0u);
}

TEST(Spelling, CorrectsEverywhereAndNothingElse) {
    const CommandLookup commands(ShippedCatalogue());
    GameModel game = GameWithTypos();
    const GameModel before = game;
    const std::string saved = SaveToBytes(game);
    const std::size_t replaced = CorrectEverywhere(game, commands, "grublet", "small light");
    std::string expected = saved;
    const auto correct = [&](const std::string& from, const std::string& to) {
        const std::size_t at = expected.find(from);
        ASSERT_NE(at, std::string::npos) << from;
        expected.replace(at, from.size(), to);
    };
    std::size_t pieces = 0;
    for (const char* from : {"One grublet.", "A grublet!", "half-grublet", "No grublet there", "|bgrublet|xb",
                             "the 'grublet's", "grublet, it", "old grublet"}) {
        std::string to = from;
        to.replace(to.find("grublet"), 7, "small light");
        correct(from, to);
        ++pieces;
    }
    EXPECT_EQ(replaced, pieces);
    EXPECT_EQ(SaveToBytes(game), expected);
    EXPECT_EQ(CorrectEverywhere(game, commands, "nowhere", "x"), 0u);
    game = before;
    for (const char* bad : {"", " ", "a>b", "a<", "x|y", "#x", "50%", "a;b", "a\r\nb"})
        EXPECT_THROW(CorrectEverywhere(game, commands, "grublet", bad), KelError) << bad;
    EXPECT_TRUE(SameGame(game, before));
}

/// No dictionary but this one spells as the samples do.
TEST(Spelling, MarksFewWordsOfTheSamples) {
    const auto installed = ListDictionaries({"/usr/share/hunspell"});
    const InstalledDictionary* british = FindDictionary(installed, "en_GB");
    if (british == nullptr || british->language != "en_GB")
        GTEST_SKIP() << "hunspell-en-gb is not installed";
    const auto dictionary = std::make_shared<const Dictionary>(british->affPath);
    const CommandLookup commands(ShippedCatalogue());
    std::size_t words = 0, marked = 0, afterNames = 0;
    for (const auto& file : std::filesystem::directory_iterator(ZEM_SAMPLES)) {
        if (file.path().extension() != ".kel")
            continue;
        const GameModel game = LoadBytes(ReadBytes(file.path().string()));
        const CheckedTexts checked =
            CheckTexts(game, commands, {dictionary, std::make_shared<GameWords>(game)});
        words += checked.words;
        for (const UnknownWord& unknown : checked.unknown) {
            marked += unknown.count;
            afterNames += unknown.looksLikeName ? 0 : unknown.count;
        }
    }
    RecordProperty("words", static_cast<int>(words));
    RecordProperty("marked", static_cast<int>(marked));
    RecordProperty("markedAfterNames", static_cast<int>(afterNames));
    EXPECT_GT(words, 20000u);
    EXPECT_LE(marked * 450, words);
    EXPECT_LE(afterNames * 1400, words);
}

/// Whether the bytes stand in what a regular expression finds in the text.
bool IsInside(const std::regex& expression, const std::string& text, TextRange bytes) {
    for (std::sregex_iterator found(text.begin(), text.end(), expression), end; found != end; ++found) {
        const auto begin = static_cast<std::size_t>(found->position());
        if (begin < bytes.end && bytes.begin < begin + static_cast<std::size_t>(found->length()))
            return true;
    }
    return false;
}

/// A dictionary that knows none of their words shows where marks can be at all.
TEST(Spelling, MarksNothingInCodesVariablesAndKeywordsOfTheSamples) {
    const Speller speller(LoadDictionary("fr_AA"), std::make_shared<GameWords>());
    const std::regex codes("\\|(c[rblyg]|x[biu]|j[clr]|s..|[biunwc])");
    const std::regex variables("#[^# \r\n]+#|%[^% \r\n]+%");
    const CommandLookup commands(ShippedCatalogue());
    std::size_t marks = 0, inScripts = 0;
    for (const auto& file : FilesIn(ZEM_SAMPLES)) {
        const GameModel game = LoadBytes(ReadBytes(file.string()));
        for (const UnknownWord& unknown : CheckTexts(game, commands, speller).unknown)
            for (const Place& place : unknown.places) {
                const auto found = Resolve(game, place);
                ASSERT_TRUE(found && found->text != nullptr);
                const std::string& text = *found->text;
                const std::size_t from = text.rfind('\n', place.bytes.begin) + 1;
                const std::size_t to = std::min(text.find('\r', place.bytes.begin), text.size());
                const std::string line = text.substr(from, to - from);
                const TextRange bytes{place.bytes.begin - from, place.bytes.end - from};
                ++marks;
                EXPECT_FALSE(IsInside(codes, line, bytes)) << line << ": " << unknown.word;
                EXPECT_FALSE(IsInside(variables, line, bytes)) << line << ": " << unknown.word;
                if (found->use.kind != FieldKind::Script)
                    continue;
                ++inScripts;
                const std::size_t bracket = line.find_last_of("<>", bytes.begin);
                ASSERT_NE(bracket, std::string::npos) << line;
                EXPECT_EQ(line[bracket], '<') << line << ": " << unknown.word;
            }
    }
    EXPECT_GT(marks, 5000u);
    EXPECT_GT(inScripts, 1000u);
}

} // namespace
} // namespace zem::test
