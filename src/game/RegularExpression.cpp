#include "game/RegularExpression.h"

#include "base/TextEncoding.h"

#include <algorithm>
#include <array>
#include <cstdint>

#define PCRE2_CODE_UNIT_WIDTH 8
#include <pcre2.h>

namespace zem {

namespace {

// A match that takes more steps than this was not meant so. An ordinary one takes a few dozen.
constexpr std::uint32_t MostSteps = 300'000;
constexpr std::uint32_t MostHeapKilobytes = 20'000;

bool IsAscii(std::string_view text) {
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

PCRE2_SPTR Units(std::string_view text) {
    return reinterpret_cast<PCRE2_SPTR>(text.data());
}

struct FreeCompile {
    void operator()(pcre2_compile_context* context) const { pcre2_compile_context_free(context); }
};

} // namespace

struct RegularExpression::Compiled {
    struct FreeCode {
        void operator()(pcre2_code* code) const { pcre2_code_free(code); }
    };
    struct FreeMatch {
        void operator()(pcre2_match_context* context) const { pcre2_match_context_free(context); }
    };
    struct FreeData {
        void operator()(pcre2_match_data* data) const { pcre2_match_data_free(data); }
    };

    std::unique_ptr<pcre2_code, FreeCode> code;
    // The same for texts of ASCII, which most are: without the classes of all letters of the world it is
    // several times as fast. Null where the expression itself is none of ASCII.
    std::unique_ptr<pcre2_code, FreeCode> asciiCode;
    const pcre2_code* current = nullptr; // for the text
    std::unique_ptr<pcre2_match_context, FreeMatch> limits;
    std::unique_ptr<pcre2_match_data, FreeData> match;
};

RegularExpression::RegularExpression(std::string_view expression, Option capitals)
    : compiled_(std::make_unique<Compiled>()) {
    const std::string utf8 = ToUtf8(expression);
    const std::unique_ptr<pcre2_compile_context, FreeCompile> context(pcre2_compile_context_create(nullptr));
    pcre2_set_newline(context.get(), PCRE2_NEWLINE_CRLF);
    const std::uint32_t options =
        PCRE2_MULTILINE | PCRE2_NEVER_BACKSLASH_C | (capitals == AnyCapitals ? PCRE2_CASELESS : 0U);
    int error = 0;
    PCRE2_SIZE at = 0;
    const auto compile = [&](std::uint32_t letters) {
        return pcre2_compile(Units(utf8), utf8.size(), options | letters, &error, &at, context.get());
    };
    if (IsAscii(utf8))
        compiled_->asciiCode.reset(compile(0));
    if (compiled_->asciiCode != nullptr)
        pcre2_jit_compile(compiled_->asciiCode.get(), PCRE2_JIT_COMPLETE);
    compiled_->code.reset(compile(PCRE2_UTF | PCRE2_UCP));
    compiled_->current = compiled_->code.get();
    if (compiled_->code == nullptr) {
        TellProblem(error, at, utf8);
        return;
    }
    pcre2_jit_compile(compiled_->code.get(), PCRE2_JIT_COMPLETE); // without it matching is only slower
    compiled_->limits.reset(pcre2_match_context_create(nullptr));
    pcre2_set_match_limit(compiled_->limits.get(), MostSteps);
    pcre2_set_heap_limit(compiled_->limits.get(), MostHeapKilobytes);
    compiled_->match.reset(pcre2_match_data_create_from_pattern(compiled_->code.get(), nullptr));
}

RegularExpression::~RegularExpression() = default;

void RegularExpression::TellProblem(int code, std::size_t at, std::string_view utf8Expression) {
    std::array<PCRE2_UCHAR, 256> message{};
    pcre2_get_error_message(code, message.data(), message.size());
    const std::size_t character = FromUtf8(utf8Expression.substr(0, at)).size();
    problem_ = "The expression is not understood at character " + std::to_string(character + 1) + ": " +
               reinterpret_cast<const char*>(message.data()) + ".";
}

void RegularExpression::SetText(std::string_view text) {
    next_ = counted_ = countedBytes_ = 0;
    const bool isAscii = IsAscii(text);
    compiled_->current =
        isAscii && compiled_->asciiCode != nullptr ? compiled_->asciiCode.get() : compiled_->code.get();
    if (isAscii) {
        utf8_ = text;
        converted_.clear();
        return;
    }
    converted_ = ToUtf8(text);
    utf8_ = converted_;
}

std::size_t RegularExpression::ToByte(std::size_t utf8Byte) {
    if (converted_.empty())
        return utf8Byte;
    for (; counted_ < utf8Byte; ++counted_)
        if ((static_cast<unsigned char>(utf8_[counted_]) & 0xC0U) != 0x80U)
            ++countedBytes_;
    return countedBytes_;
}

std::optional<TextRange> RegularExpression::Next() {
    while (problem_.empty() && next_ <= utf8_.size()) {
        const int result =
            pcre2_match(compiled_->current, Units(utf8_), utf8_.size(), next_,
                        PCRE2_NO_UTF_CHECK | PCRE2_NOTEMPTY, compiled_->match.get(), compiled_->limits.get());
        if (result == PCRE2_ERROR_NOMATCH)
            break;
        if (result < 0) {
            problem_ = "The expression takes too long on these texts. Make it simpler.";
            break;
        }
        const PCRE2_SIZE* ends = pcre2_get_ovector_pointer(compiled_->match.get());
        // "\K" in a lookahead may begin a match behind its end, or before where the search began.
        if (ends[0] >= ends[1] || ends[0] < next_) {
            next_ = std::max(next_, ends[1]) + 1;
            while (next_ < utf8_.size() && (static_cast<unsigned char>(utf8_[next_]) & 0xC0U) == 0x80U)
                ++next_;
            continue;
        }
        next_ = ends[1];
        const std::size_t begin = ToByte(ends[0]);
        return TextRange{begin, ToByte(ends[1])};
    }
    return std::nullopt;
}

std::string RegularExpression::Expand(std::string_view words) const {
    const PCRE2_SIZE* ends = pcre2_get_ovector_pointer(compiled_->match.get());
    const std::uint32_t groups = pcre2_get_ovector_count(compiled_->match.get());
    std::string expanded;
    for (std::size_t at = 0; at < words.size(); ++at) {
        const char next = at + 1 < words.size() ? words[at + 1] : '\0';
        if (words[at] != '$' || (next != '$' && (next < '0' || next > '9'))) {
            expanded += words[at];
            continue;
        }
        ++at;
        const auto group = static_cast<std::uint32_t>(next - '0');
        if (next == '$')
            expanded += '$';
        else if (group < groups && ends[2 * group] != PCRE2_UNSET && ends[2 * group] <= ends[2 * group + 1])
            expanded += FromUtf8(utf8_.substr(ends[2 * group], ends[2 * group + 1] - ends[2 * group]));
    }
    return expanded;
}

} // namespace zem
