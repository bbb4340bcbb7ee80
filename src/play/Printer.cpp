#include "play/Printer.h"

#include "base/LineText.h"

#include <algorithm>

namespace zem::play {

namespace {

struct CodeRow {
    std::string_view code; // behind the bar
    void (*apply)(Style& style);
};

// In this order; the first that the text goes on with counts.
constexpr CodeRow StyleCodes[] = {
    {"b", [](Style& style) { style.bold = true; }},
    {"xb", [](Style& style) { style.bold = false; }},
    {"u", [](Style& style) { style.underline = true; }},
    {"xu", [](Style& style) { style.underline = false; }},
    {"i", [](Style& style) { style.italic = true; }},
    {"xi", [](Style& style) { style.italic = false; }},
    {"cr", [](Style& style) { style.colour = "red"; }},
    {"cb", [](Style& style) { style.colour.clear(); }},
    {"cl", [](Style& style) { style.colour = "blue"; }},
    {"cy", [](Style& style) { style.colour = "yellow"; }},
    {"cg", [](Style& style) { style.colour = "green"; }},
    {"jc", [](Style& style) { style.alignment = Alignment::Centre; }},
    {"jl", [](Style& style) { style.alignment = Alignment::Left; }},
    {"jr", [](Style& style) { style.alignment = Alignment::Right; }},
};

/// True for a "s" with two digits behind it.
bool IsSize(std::string_view code) {
    return code.size() >= 3 && code[0] == 's' && IsDigit(code[1]) && IsDigit(code[2]);
}

/// How many characters a code takes up behind its bar.
std::size_t LengthOf(std::string_view code) {
    for (const CodeRow& row : StyleCodes)
        if (code.starts_with(row.code))
            return row.code.size();
    return IsSize(code) ? 3 : std::min<std::size_t>(code.size(), 1);
}

} // namespace

void Printer::Begin(const Source& source) {
    style_ = BaseStyle();
    source_ = source;
}

Style Printer::BaseStyle() const {
    Style style;
    style.colour = state_.Text(Colour);
    style.font = state_.Text(FontName);
    if (style.font.empty())
        style.font = world_.Game().DefaultFontName;
    style.size = static_cast<int>(state_[FontSize]);
    if (style.size == 0)
        style.size = world_.Game().DefaultFontSize;
    return style;
}

bool Printer::Print(std::string_view text, std::size_t& at) {
    while (at < text.size()) {
        const std::size_t sign = std::min(text.find_first_of("|#%", at), text.size());
        Raw(text.substr(at, sign - at));
        at = sign;
        if (at == text.size())
            break;
        if (text[at] != '|') {
            at = PrintVariable(text, at);
            continue;
        }
        const bool waits = text.substr(at + 1).starts_with('w');
        at = FollowCode(text, at);
        if (waits)
            return true;
    }
    return false;
}

std::size_t Printer::FollowCode(std::string_view text, std::size_t bar) {
    const std::string_view code = text.substr(bar + 1);
    const std::size_t length = LengthOf(code);
    const std::string_view itself = code.substr(0, length);
    if (itself == "n")
        NewLine();
    else if (itself == "c")
        Add(Piece::Clear);
    else if (IsSize(code))
        style_.size = (code[1] - '0') * 10 + (code[2] - '0');
    else
        for (const CodeRow& row : StyleCodes)
            if (itself == row.code)
                row.apply(style_);
    return bar + 1 + length;
}

std::size_t Printer::PrintVariable(std::string_view text, std::size_t at) {
    std::string value;
    const std::size_t end = ReadVariable(text, at, world_, state_, value);
    if (end == at) {
        Raw(text.substr(at, 1));
        return at + 1;
    }
    Raw(value);
    return end;
}

void Printer::Raw(std::string_view text) {
    text = text.substr(0, limit_ - std::min(limit_, count_));
    if (text.empty())
        return;
    count_ += text.size();
    if (!pieces_.empty()) {
        Piece& last = pieces_.back();
        if (last.kind == Piece::Text && last.source == source_ && last.style == style_) {
            last.text += text;
            return;
        }
    }
    pieces_.push_back({Piece::Text, std::string(text), 0, style_, source_});
}

void Printer::Add(Piece::Kind kind, std::string_view text, int seconds) {
    pieces_.push_back({kind, std::string(text), seconds, {}, source_});
}

std::size_t ReadVariable(std::string_view text, std::size_t at, const World& world, const State& state,
                         std::string& value) {
    const char sign = text[at];
    const std::size_t close = text.find(sign, at + 1);
    if (close == std::string_view::npos)
        return at;
    const std::string_view name = text.substr(at + 1, close - at - 1);
    if (name.empty()) { // two of them print as they are
        value = std::string(2, sign);
        return close + 1;
    }
    const Number variable = world.GetNames().Find(Kind::Variable, name);
    if (variable == None || !world.IsVariable(variable))
        return at;
    const Cell cell = world.GetNames().CellOf(Kind::Variable, variable);
    value = sign == '#' ? state.Text(cell) : std::to_string(state.Texts().ToNumber(state[cell]));
    return close + 1;
}

std::string PutVariablesIn(std::string_view text, const World& world, const State& state) {
    std::string result;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t sign = std::min(text.find_first_of("#%", at), text.size());
        result.append(text.substr(at, sign - at));
        at = sign;
        if (at == text.size())
            break;
        std::string value;
        const std::size_t end = ReadVariable(text, at, world, state, value);
        result.append(end == at ? text.substr(at, 1) : value);
        at = end == at ? at + 1 : end;
    }
    return result;
}

std::string PlainText(std::string_view text) {
    std::string plain;
    while (!text.empty()) {
        const std::size_t bar = std::min(text.find('|'), text.size());
        plain.append(text.substr(0, bar));
        text.remove_prefix(bar);
        if (!text.empty())
            text.remove_prefix(1 + LengthOf(text.substr(1)));
    }
    return plain;
}

bool IsMadeOfCodes(std::string_view text) {
    while (!text.empty()) {
        if (text.front() != '|' || text.substr(1).starts_with('n'))
            return false;
        text.remove_prefix(1 + LengthOf(text.substr(1)));
    }
    return true;
}

} // namespace zem::play
