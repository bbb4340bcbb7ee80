#include "spelling/Speller.h"

namespace zem::spelling {

bool IsLikeVariable::operator()(std::string_view name) const {
    constexpr std::size_t Longest = 40;
    constexpr auto MostBlanks = 3;
    return name.size() <= Longest && std::count(name.begin(), name.end(), ' ') <= MostBlanks &&
           name.front() != ' ' && name.back() != ' ';
}

std::string_view WithoutGenitive(std::string_view word) {
    const std::size_t size = word.size();
    const bool isGenitive = size > 2 && (word[size - 2] == '\'' || word[size - 2] == '\x92') &&
                            (word[size - 1] == 's' || word[size - 1] == 'S');
    return isGenitive ? word.substr(0, size - 2) : word;
}

bool Speller::KnowsPart(std::string_view word) const {
    if (word.size() < 2 || words_->Knows(word) || dictionary_->Spells(word))
        return true;
    const std::string_view stem = WithoutGenitive(word);
    return stem.size() < word.size() && dictionary_->Spells(stem);
}

bool Speller::Knows(std::string_view word) const {
    if (!IsOn() || KnowsPart(word))
        return true;
    if (word.find('-') == std::string_view::npos)
        return false;
    for (std::size_t begin = 0; begin <= word.size();) {
        const std::size_t end = std::min(word.find('-', begin), word.size());
        if (end > begin && !KnowsPart(word.substr(begin, end - begin)))
            return false;
        begin = end + 1;
    }
    return true;
}

bool IsInMidSentence(std::string_view text, std::size_t byte) {
    while (byte > 0) {
        const char before = text[byte - 1];
        if (IsProseLetter(before) || before == ',' || before == ';' || before == ')')
            return true;
        if (before != ' ' && before != '\r' && before != '\n' && before != '(')
            return false;
        --byte;
    }
    return false;
}

} // namespace zem::spelling
