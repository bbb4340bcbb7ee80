#include "play/Texts.h"

#include "base/LineText.h"

namespace zem::play {

namespace {

/// True when writing out the number of the text gives the text again.
bool IsUsualNumber(std::string_view text) {
    const std::string_view digits = text.starts_with('-') ? text.substr(1) : text;
    if (digits.empty() || digits.size() > 10 || (digits.front() == '0' && text.size() > 1))
        return false;
    bool isAll = false;
    const std::int64_t number = LeadingInteger(text, &isAll);
    return isAll && std::to_string(number) == text;
}

} // namespace

std::int64_t LeadingInteger(std::string_view text, bool* isAll) {
    text = Trim(text);
    const bool isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+'))
        text.remove_prefix(1);
    std::int64_t number = 0;
    std::size_t digits = 0;
    while (digits < text.size() && IsDigit(text[digits])) {
        number = std::min<std::int64_t>(number * 10 + (text[digits] - '0'), HighestNumber + 1);
        ++digits;
    }
    if (isAll != nullptr)
        *isAll = digits > 0 && digits == text.size();
    return Bounded(isNegative ? -number : number);
}

TextTable::TextTable() {
    texts_.emplace_back();
    values_.emplace(texts_.front(), EmptyText);
}

TextTable::TextTable(const TextTable& other) : texts_(other.texts_) {
    for (std::size_t k = 0; k < texts_.size(); ++k)
        values_.emplace(texts_[k], static_cast<Value>(2 * k));
}

TextTable& TextTable::operator=(const TextTable& other) {
    return *this = TextTable(other);
}

Value TextTable::Add(std::string_view text) {
    if (IsUsualNumber(text))
        return FromNumber(LeadingInteger(text));
    if (const auto found = values_.find(text); found != values_.end())
        return found->second;
    const auto value = static_cast<Value>(2 * texts_.size());
    values_.emplace(texts_.emplace_back(text), value);
    return value;
}

std::string TextTable::Text(Value value) const {
    return IsNumber(value) ? std::to_string(NumberIn(value)) : texts_[static_cast<std::size_t>(value / 2)];
}

std::int64_t TextTable::ToNumber(Value value) const {
    return IsNumber(value) ? NumberIn(value) : LeadingInteger(texts_[static_cast<std::size_t>(value / 2)]);
}

std::uint64_t TextTable::Hash(Value value) const {
    if (IsNumber(value))
        return static_cast<std::uint64_t>(value);
    std::uint64_t hash = 0xCBF29CE484222325U;
    for (const char c : texts_[static_cast<std::size_t>(value / 2)])
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3U;
    return hash;
}

void TextTable::Shrink(std::size_t count) {
    while (texts_.size() > count) {
        values_.erase(texts_.back());
        texts_.pop_back();
    }
}

} // namespace zem::play
