#include "kel/FormatCodes.h"

#include "support/CaseFile.h"
#include "support/Cases.h"

#include <gtest/gtest.h>
#include <string>

namespace zem::test {
namespace {

TEST(FormatCodes, BecomeWordsOrVanish) {
    for (const auto& [text, shown, removed] : CasesIn<3>("format-codes")) {
        EXPECT_EQ(FormatCodesToText(text, true), shown) << text;
        EXPECT_EQ(FormatCodesToText(text, false), removed) << text;
    }
}

TEST(FormatCodes, SplitATextIntoRunsOfOneLook) {
    for (const auto& [text, runs] : Cases<const char*, const char*>{
             {"a|bb|crc|xb|u|id", "a, b bold, c bold 12, d underlined italic 12, "},
             // A code without a look of its own loses its bar and is shown.
             {"one|ntwo|", "one, ntwo, "},
             {"||bx|s12", "x bold, s12 bold, "},
             {"", ""}}) {
        std::string found;
        ForEachFormattedRun(text, [&](std::string_view run, const TextFormat& format) {
            found.append(run)
                .append(format.bold ? " bold" : "")
                .append(format.underline ? " underlined" : "");
            found.append(format.italic ? " italic" : "");
            found += (format.basicColour < 0 ? "" : ' ' + std::to_string(format.basicColour)) + ", ";
        });
        EXPECT_EQ(found, runs);
    }
}

} // namespace
} // namespace zem::test
