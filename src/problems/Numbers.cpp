// Numbers and directions in commands.
#include "base/LineText.h"
#include "problems/Checks.h"
#include "problems/Directions.h"
#include "problems/Fixes.h"
#include "problems/ScriptFlow.h"
#include "problems/TextNumbers.h"

#include <algorithm>
#include <cmath>

namespace zem::problems {

std::optional<double> NumberIn(std::string_view text) {
    text = Trim(text);
    const std::string_view digits = text.substr(text.find_first_of("+-") == 0 ? 1 : 0);
    const std::size_t point = digits.find('.');
    const auto areDigits = [](std::string_view part) {
        return part.find_first_not_of("0123456789") == std::string_view::npos;
    };
    if (!areDigits(digits.substr(0, point)) ||
        (point != std::string_view::npos && !areDigits(digits.substr(point + 1))) ||
        digits.find_first_of("0123456789") == std::string_view::npos)
        return std::nullopt;
    const std::string number(digits); // a number at the very end of its text would be read on past it
    const double value = LeadingReal(number);
    return text.front() == '-' ? -value : value;
}

namespace {

constexpr double Largest = 2147483647;
constexpr double None = -1e30;
constexpr double AnHour = 3600; // in seconds: nobody sits through more
constexpr double ADay = 24 * AnHour;
constexpr double MostRuns = 100000; // a turn runs no more commands

/// What the number of a command may be, and where it stands.
struct NumberRow {
    const char* keyword;
    std::size_t part;
    double lowest;
    double highest;
    double idle; // with it, the command does nothing
};

constexpr NumberRow NumberRows[] = {
    {"pause", 0, 0, AnHour, 0},
    {"fontsize", 0, 1, 72, None},
    {"add", 1, -Largest, Largest, 0},
    {"subtract", 1, -Largest, Largest, 0},
    {"multiply", 1, -Largest, Largest, 1},
    {"roll", 1, 1, Largest, None},
    {"gain", 1, -Largest, Largest, 0},
    {"spend", 1, -Largest, Largest, 0},
    {"set amount", 1, -Largest, Largest, None},
    {"repeat", 0, 0, MostRuns, 0},
    {"after", 0, 0, ADay, None},
    {"if least", 1, -Largest, Largest, None},
    {"if more", 1, -Largest, Largest, None},
    {"if less", 1, -Largest, Largest, None},
    {"if amount", 1, -Largest, Largest, None},
    {"if turns", 0, 0, Largest, 0},
    {"if chance", 0, 1, 99, None}, // with others there is no chance in it
};

bool HasVariable(std::string_view text) {
    return std::count(text.begin(), text.end(), '#') > 1 || std::count(text.begin(), text.end(), '%') > 1;
}

bool IsLineOfItsOwn(const CheckedCall& call) {
    return !call.isCondition && !call.line->parsed.actions.front().IsIf();
}

const char* KindOfNumbers(double number) {
    return number == std::round(number) ? " knows numbers from " : " knows whole numbers from ";
}

void ReportRange(const CheckedCall& call, const NumberRow& row, double number, Findings& findings) {
    const double bound = std::clamp(std::round(number), row.lowest, row.highest);
    const std::string words = std::to_string(static_cast<long>(bound));
    if (Is(call, "if chance")) {
        findings.Add("C02", call.At(row.part),
                     "A chance of " + std::string(call.Part(row.part)) + " per cent is " +
                         ((number > row.highest) != call.isNegated ? "always true." : "never true."));
        return;
    }
    findings
        .Add("C02", call.At(row.part),
             QuoteShortly(call.Keyword()) + KindOfNumbers(number) +
                 std::to_string(static_cast<long>(row.lowest)) + " to " +
                 std::to_string(static_cast<long>(row.highest)) + ", and this is " +
                 std::string(call.Part(row.part)) + '.')
        .fixes = {ReplaceBytes(ChangeTo(words), call.At(row.part), call.Part(row.part), words)};
}

void CheckNumber(const CheckedCall& call, const NumberRow& row, Findings& findings) {
    const std::string_view text = call.Part(row.part);
    if (row.part >= call.parts.size() || text.empty() || HasVariable(text))
        return;
    const std::optional<double> number = NumberIn(text);
    if (!number) {
        findings.Add("C01", call.At(row.part),
                     QuoteShortly(text) + " is no number, and " + QuoteShortly(call.Keyword()) +
                         " counts with the digits at its beginning, or with 0.");
    } else if (*number < row.lowest || *number > row.highest || *number != std::round(*number)) {
        ReportRange(call, row, *number, findings);
    } else if (*number == row.idle) {
        Problem& problem =
            findings.Add("C03", call.At(row.part),
                         "With " + std::string(text) + ", " + QuoteShortly(call.Keyword()) +
                             (call.isCondition ? " asks for nothing: it is always true." : " does nothing."));
        if (IsLineOfItsOwn(call))
            problem.fixes = {RemoveLine("Remove it", call.line->place, call.line->text)};
    }
}

void FindOddNumbers(const CheckedGame& game, Findings& findings) {
    for (const NumberRow& row : NumberRows)
        for (const CheckedCall* call : game.CallsOf(row.keyword))
            CheckNumber(*call, row, findings);
    for (const CheckedCall* call : game.CallsOf("append"))
        if (call->parts.size() == 2 && call->Part(1).empty())
            findings.Add("C03", call->line->At(call->call->keyword),
                         "Nothing is appended, so this does nothing.");
    for (const CheckedCall* call : game.CallsOf("repeat")) {
        if (call->parts.size() != 2 || NumberIn(call->Part(0)) != 1.0)
            continue;
        const TextRange whole = {call->call->keyword.begin, call->call->parameter.end + 1};
        findings.Add("C03", call->At(0), "Once is not again: \"do\" says the same.").fixes = {
            ReplaceBytes("Change to do", call->line->At(whole), whole.Of(call->line->text),
                         "do <" + std::string(call->Part(1)) + '>')};
    }
}

void FindOddDirections(const CheckedGame& game, Findings& findings) {
    for (const char* keyword : {"exit on", "exit off", "exit to", "if exit"})
        for (const CheckedCall* call : game.CallsOf(keyword)) {
            const std::string_view word = call->Part(1);
            if (word.empty() || IsDirection(word))
                continue;
            Problem& problem = findings.Add(
                "C04", call->At(1),
                QuoteShortly(word) + " is no direction" +
                    (call->isCondition ? ", so this condition is never true." : ", so this does nothing."));
            const std::string_view nearest = NearestOf({std::begin(Directions), std::end(Directions)}, word);
            if (!nearest.empty())
                problem.fixes = {ReplaceBytes(ChangeTo(nearest), call->At(1), word, std::string(nearest))};
        }
}

} // namespace

std::span<const Check> NumberChecks() {
    static constexpr Check Rows[] = {
        {"C01", Level::Error, "Words where a number belongs", FindOddNumbers},
        {"C02", Level::Warning, "Numbers that make no sense", FindOddNumbers},
        {"C03", Level::Hint, "Numbers that do nothing", FindOddNumbers},
        {"C04", Level::Error, "Words where a direction belongs", FindOddDirections},
    };
    return Rows;
}

} // namespace zem::problems
