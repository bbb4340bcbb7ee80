#include "commands/JUnitReport.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <string_view>

namespace zem {

namespace {

constexpr std::string_view Replacement = "\xEF\xBF\xBD"; // U+FFFD

/// The length of the UTF-8 character that begins the text, if XML may hold it; else 0.
std::size_t LengthOfCharacter(std::string_view text) {
    const auto first = static_cast<unsigned char>(text.front());
    if (first < 0x80)
        return first >= 0x20 || first == '\t' || first == '\n' ? 1 : 0;
    const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4 || text.size() < length)
        return 0;
    std::uint32_t code = first & (0x7FU >> length);
    for (std::size_t k = 1; k < length; ++k) {
        const auto byte = static_cast<unsigned char>(text[k]);
        if ((byte & 0xC0U) != 0x80U)
            return 0;
        code = code << 6U | (byte & 0x3FU);
    }
    constexpr std::array<std::uint32_t, 5> Lowest = {0, 0, 0x80, 0x800, 0x10000};
    const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
    const bool isCharacter =
        code >= Lowest[length] && code <= 0x10FFFF && !isSurrogate && code != 0xFFFE && code != 0xFFFF;
    return isCharacter ? length : 0;
}

/// The text as XML holds it between tags or quotation marks.
std::string Escaped(std::string_view text) {
    std::string escaped;
    while (!text.empty()) {
        const std::size_t length = LengthOfCharacter(text);
        const std::string_view character = text.substr(0, std::max<std::size_t>(length, 1));
        text.remove_prefix(character.size());
        if (length == 0)
            escaped += character == "\r" ? "" : Replacement;
        else if (character == "&")
            escaped += "&amp;";
        else if (character == "<")
            escaped += "&lt;";
        else if (character == ">")
            escaped += "&gt;";
        else if (character == "\"")
            escaped += "&quot;";
        else
            escaped += character;
    }
    return escaped;
}

std::string Time(double seconds) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.3f", seconds);
    return text.data();
}

} // namespace

std::string JUnitReport(const std::string& suite, const std::vector<ReportedTest>& tests) {
    double seconds = 0;
    for (const ReportedTest& test : tests)
        seconds += test.seconds;
    const auto count = [&](ReportedTest::Result result) {
        return std::to_string(std::count_if(tests.begin(), tests.end(),
                                            [&](const ReportedTest& test) { return test.result == result; }));
    };
    const std::string figures = "tests=\"" + std::to_string(tests.size()) + "\" failures=\"" +
                                count(ReportedTest::Failed) + "\" errors=\"0\" skipped=\"" +
                                count(ReportedTest::Skipped) + "\" time=\"" + Time(seconds) + "\"";
    std::string xml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<testsuites " + figures +
                      ">\n<testsuite name=\"" + Escaped(suite) + "\" " + figures + ">\n";
    for (const ReportedTest& test : tests) {
        xml += "<testcase classname=\"" + Escaped(suite) + "\" name=\"" + Escaped(test.name) + "\" time=\"" +
               Time(test.seconds) + "\"";
        if (test.result == ReportedTest::Passed) {
            xml += "/>\n";
            continue;
        }
        const std::string tag = test.result == ReportedTest::Failed ? "failure" : "skipped";
        xml += "><" + tag + " message=\"" + Escaped(test.message) + "\">" + Escaped(test.details) + "</" +
               tag + "></testcase>\n";
    }
    return xml + "</testsuite>\n</testsuites>\n";
}

} // namespace zem
