#include "reader/InspectFile.h"

#include "base/TextFile.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace zem::test {
namespace {

using namespace std::string_literals;

struct Case {
    const char* what;
    std::string file;
    std::vector<std::string> remarks; // "LINE: a part of the text"
    DroppedLines dropped = {};
};

void ExpectInspection(const Case& expected) {
    SCOPED_TRACE(expected.what);
    const FileInspection found = InspectFile(expected.file);
    EXPECT_EQ(found.dropped.comments, expected.dropped.comments);
    EXPECT_EQ(found.dropped.others, expected.dropped.others);
    ASSERT_EQ(found.remarks.size(), expected.remarks.size());
    for (std::size_t k = 0; k < expected.remarks.size(); ++k) {
        const std::string& part = expected.remarks[k];
        const std::string remark = std::to_string(found.remarks[k].line) + ": " + found.remarks[k].text;
        EXPECT_EQ(remark.substr(0, remark.find(' ')), part.substr(0, part.find(' ')));
        EXPECT_NE(remark.find(part.substr(part.find(' ') + 1)), std::string::npos) << remark;
    }
}

const std::string PlainGame = "define game <x>\r\nend define\r\n";
const std::string PlainRoom = "define room <r>\r\nend define\r\n";

TEST(InspectFile, TellsWhatALoadMakesOfOddFiles) {
    const Case cases[] = {
        {"a plain game", PlainGame + PlainRoom, {}},
        {"UTF-8", "define game <\xC3\xA9>\nend define\n", {"0: is UTF-8"}},
        {"a UTF-8 mark", "\xEF\xBB\xBF" + PlainGame + PlainRoom, {"1: hides the first line"}, {0, 2}},
        {"a UTF-8 mark and nothing else",
         "\xEF\xBB\xBF" + PlainGame,
         {"0: no Kel game", "1: UTF-8 mark"},
         {0, 2}},
        {"UTF-16", "\xFF\xFE"s + "d\0e\0f\0"s, {"0: is UTF-16", "0: no Kel game"}, {0, 1}},
        {"a program", "\x7F" + "ELF\x02\x01\x01\0\0\0\0\0\0"s, {"0: no text", "0: no Kel game"}, {0, 1}},
        {"prose", "Dear diary,\n\n'today'\n", {"0: no Kel game"}, {1, 1}},
        {"nothing at all", "", {}},
        {"a conflict",
         PlainGame + "define procedure <p>\n<<<<<<< HEAD\na\n||||||| base\nb\n=======\nc\n>>>>>>> other\nend "
                     "define\n",
         {"4: lines of both versions", "6: other version", "8: other version", "10: ends a conflict"}},
        {"no conflict", PlainGame + "define text <t>\nTitle\n=======\n<<<<<<<< eight\nend define\n", {}},
        {"a room without a blank", PlainGame + "define room<r>\n'c\nend define\n", {"3: writes it twice"}},
        {"a thing that is not closed",
         PlainGame +
             "define room <r>\ndefine object <a>\nlook <b>\ndefine object <c>\nend define\nend define\n"
             "end define\n",
         {"6: inside a character or object no block is read"}},
        {"a line of a thing that begins like a block",
         PlainGame + "define room <r>\ndefine object <a>\ndefined <b>\nend define\nend define\nend define\n",
         {"5: inside a character or object no block is read"}},
        {"synonyms in capitals", PlainGame + "Define Synonyms\na=b\nend define\n", {"3: writes them twice"}},
        {"game in capitals",
         "define Game <g>\nstart <r>\n\nend define\n" + PlainRoom,
         {"1: not read"},
         {0, 3}},
        {"no blank before the game's name",
         "define game<g>\nend define\n",
         {"1: kept as it is, but not read"}},
        {"a block in a room",
         PlainGame + "define room <r>\n'c\ndefine timer <t>\n'd\nx\nend define\ndefine object <o>\n'e\nend "
                     "define\nend define\n",
         {"5: a save drops it"},
         {3, 3}},
        {"two games",
         PlainGame + PlainRoom + "define game <y>\n'c\nz\nend define\n",
         {"1: only the last is read"},
         {1, 2}},
        {"a lost object", PlainGame + "define object <o>\nend define\n", {"3: must stand inside a room"}},
        {"a kind of its own", PlainGame + "define timer <t>\n'c\nend define\n", {}},
        {"text without a blank", PlainGame + "define text<t>\nx\nend define\n", {"3: \"define text <\""}},
        {"a block without an end", PlainGame + "'c\n<<<<<<< a\ndefine room <r>\n", {"4: a conflict"}},
        {"lines that a menu does not know",
         PlainGame + "define selection <m>\n'c\ninfo <i>\nmaybe\nchoice <c> x\nend define\n",
         {},
         {1, 1}},
        {"what a save writes itself",
         "' /a/b.kel created by ZEM 1.0\n\n'*** The following line is required by ZEM - please do not "
         "remove\n"
         "'ZEM-NIP <7>\n\n!include <lib>\n" +
             PlainGame,
         {}},
        {"comments, of which those of scripts and texts stay",
         "'1\n" + PlainGame +
             "'2\ndefine room <r>\n'3\nscript {\n'4\nmsg <x>\n}\nend define\ndefine procedure <p>\n'5\nend "
             "define\n",
         {},
         {3, 0}},
    };
    for (const Case& expected : cases)
        ExpectInspection(expected);
}

// What was written by a save, the next save writes again.
TEST(InspectFile, FindsNothingDroppedInWhatASaveWrote) {
    int files = 0;
    for (const auto& entry : std::filesystem::directory_iterator(ZEM_TEST_DATA "/format"))
        if (entry.path().extension() == ".saved") {
            const FileInspection found = InspectFile(ReadFile(entry.path()));
            EXPECT_EQ(found.dropped, DroppedLines()) << entry.path();
            ++files;
        }
    EXPECT_GT(files, 5);
}

TEST(TextEncoding, IsToldByTheBytes) {
    const std::pair<std::string, TextEncoding> cases[] = {
        {"", TextEncoding::Windows1252},
        {"plain\r\n\x1A", TextEncoding::Windows1252},
        {"caf\xE9 \x93quoted\x94", TextEncoding::Windows1252},
        {"caf\xC3\xA9", TextEncoding::Utf8},
        {"cut off: \xC3", TextEncoding::Windows1252},
        {"overlong \xC0\xAF", TextEncoding::Windows1252},
        {"surrogate \xED\xA0\x80", TextEncoding::Windows1252},
        {"\xEF\xBB\xBFplain", TextEncoding::Utf8WithMark},
        {"\xFE\xFF\0d\0e"s, TextEncoding::Utf16},
        {"d\0e\0f\0i\0n\0e\0"s, TextEncoding::Utf16},
        {"\0d\0e\0f\0i\0n\0e"s, TextEncoding::Utf16},
        {"\x7F" + "ELF\x01\x02\0\0"s, TextEncoding::Binary},
    };
    for (const auto& [bytes, encoding] : cases)
        EXPECT_EQ(static_cast<int>(DetectEncoding(bytes)), static_cast<int>(encoding)) << bytes;
    std::string random;
    for (unsigned k = 1, value = 7; k <= 1000; ++k, value = value * 1103515245 + 12345)
        random += static_cast<char>(value >> 16);
    EXPECT_EQ(static_cast<int>(DetectEncoding(random)), static_cast<int>(TextEncoding::Binary));
}

TEST(TextEncoding, Utf8BecomesWindows1252WithAListOfWhatIsLacking) {
    const ConvertedText text =
        Utf8ToWindows1252("\xEF\xBB\xBF"
                          "caf\xC3\xA9 \xE2\x82\xAC\n\xCE\xB1\xF0\x9F\x98\x80\n\xCE\xB1\xC2\x81\xFF");
    EXPECT_EQ(text.bytes, "caf\xE9 \x80\n??\n?\x81?");
    std::string lacking;
    for (const LackingCharacter& character : text.lacking)
        lacking += std::to_string(static_cast<unsigned>(character.code)) + ' ' + character.utf8 + ' ' +
                   std::to_string(character.line) + ' ' + std::to_string(character.count) + ", ";
    EXPECT_EQ(lacking, "945 \xCE\xB1 2 2, 128512 \xF0\x9F\x98\x80 2 1, 65533 \xEF\xBF\xBD 3 1, ");
}

} // namespace
} // namespace zem::test
