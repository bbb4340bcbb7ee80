#include "base/LineText.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <system_error>
#include <utility>

namespace zem {

std::string Lower(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(), [](char c) { return Lower(c); });
    return lower;
}

std::string_view GetParameter(std::string_view line) {
    const std::size_t open = line.find('<');
    const std::size_t close = line.find('>');
    if (open == std::string_view::npos || close == std::string_view::npos)
        throw KelError("a parameter in angle brackets is missing");
    if (close < open)
        throw KelError("the first \">\" stands before the first \"<\"");
    return line.substr(open + 1, close - open - 1);
}

std::string_view TextAfterParameter(std::string_view line) {
    const std::size_t close = line.find('>');
    return close == std::string_view::npos ? std::string_view() : Trim(line.substr(close + 1));
}

std::string_view FirstWord(std::string_view text) {
    const std::size_t blank = text.find(' ');
    if (blank == std::string_view::npos)
        throw KelError("a blank after the first word is missing");
    return text.substr(0, blank);
}

std::vector<std::string_view> SplitAt(std::string_view text, std::string_view separator) {
    std::vector<std::string_view> pieces;
    while (true) {
        const std::size_t end = text.find(separator);
        pieces.push_back(text.substr(0, end));
        if (end == std::string_view::npos)
            return pieces;
        text.remove_prefix(end + separator.size());
    }
}

namespace {

std::string ReplaceAll(std::string_view text, std::string_view from, std::string_view to) {
    std::string result;
    result.reserve(text.size());
    std::size_t start = 0;
    for (std::size_t hit = text.find(from); hit != std::string_view::npos; hit = text.find(from, start)) {
        result.append(text.substr(start, hit - start)).append(to);
        start = hit + from.size();
    }
    return result.append(text.substr(start));
}

/// Reads the number at the start of a text, as std::from_chars does.
std::from_chars_result ReadReal(const char* begin, const char* end, double& value) {
#ifdef __wasi__
    // The library of the web player lacks it. There are no locales there.
    const auto isOfNumber = [](char c) {
        return std::string_view("0123456789.eE+-").find(c) != std::string_view::npos;
    };
    const std::string copy(begin, std::find_if_not(begin, end, isOfNumber));
    char* stop = nullptr;
    errno = 0;
    value = std::strtod(copy.c_str(), &stop);
    const char* const at = begin + (stop - copy.c_str());
    return {at, at == begin       ? std::errc::invalid_argument
                : errno == ERANGE ? std::errc::result_out_of_range
                                  : std::errc()};
#else
    return std::from_chars(begin, end, value);
#endif
}

struct ParsedNumber {
    double value = 0;
    bool isNumber = false;
    std::string_view rest;
};

ParsedNumber ParseNumber(std::string_view text) {
    text = TrimLeft(text);
    // from_chars takes "-5" but not "+5", and takes "inf" and "nan", which no author means as a number.
    const bool plus = text.starts_with('+');
    const std::string_view digits = plus ? text.substr(1) : text;
    const std::size_t sign = !plus && digits.starts_with('-') ? 1 : 0;
    if (digits.size() <= sign || std::string_view("0123456789.").find(digits[sign]) == std::string_view::npos)
        return {};
    ParsedNumber number;
    const char* end = digits.data() + digits.size();
    const auto [stop, error] = ReadReal(digits.data(), end, number.value);
    if (error == std::errc::result_out_of_range) {
        const bool isTiny = std::string_view(digits.data(), stop).find('-', 1) != std::string_view::npos;
        number.value = isTiny ? 0 : std::numeric_limits<double>::infinity();
    }
    number.isNumber = error != std::errc::invalid_argument;
    number.rest = std::string_view(stop, static_cast<std::size_t>(end - stop));
    return number;
}

std::int16_t Round(double value) {
    const double rounded = std::nearbyint(value);
    if (!(rounded >= std::numeric_limits<std::int16_t>::min() &&
          rounded <= std::numeric_limits<std::int16_t>::max()))
        throw KelError("the number does not lie between -32,768 and 32,767");
    return static_cast<std::int16_t>(rounded);
}

} // namespace

std::string ShowShortly(std::string_view text) {
    constexpr std::size_t Longest = 40;
    std::string shown(text.substr(0, Longest));
    std::replace_if(
        shown.begin(), shown.end(), [](char c) { return c >= 0 && c < ' '; }, ' ');
    return shown + (text.size() > Longest ? "..." : "");
}

std::string QuoteShortly(std::string_view text) {
    return '"' + ShowShortly(Trim(text)) + '"';
}

void ExpandTabs(std::string& line) {
    std::string expanded;
    expanded.reserve(line.size() + 3 * static_cast<std::size_t>(std::count(line.begin(), line.end(), '\t')));
    for (const char c : line)
        expanded.append(c == '\t' ? 4 : 1, c == '\t' ? ' ' : c);
    line = std::move(expanded);
}

std::string CrLfToBar(std::string_view text) {
    return ReplaceAll(text, "\r\n", "|n");
}

std::string BarToCrLf(std::string_view text) {
    return ReplaceAll(text, "|n", "\r\n");
}

std::int16_t LeadingNumber(std::string_view text) {
    const ParsedNumber number = ParseNumber(text);
    return number.isNumber ? Round(number.value) : std::int16_t{0};
}

double LeadingReal(std::string_view text) {
    const ParsedNumber number = ParseNumber(text);
    return number.isNumber ? number.value : 0;
}

std::int16_t WholeNumber(std::string_view text) {
    const ParsedNumber number = ParseNumber(text);
    if (!number.isNumber || !Trim(number.rest).empty())
        throw KelError("a number is missing");
    return Round(number.value);
}

} // namespace zem
