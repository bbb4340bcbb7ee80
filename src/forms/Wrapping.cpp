#include "forms/Wrapping.h"

namespace zem {

namespace {

constexpr qsizetype LongestWord = 5000; // letters, which Qt still wraps within milliseconds

} // namespace

bool HasEndlessWord(QStringView text) {
    qsizetype length = 0;
    for (const QChar character : text) {
        length = character.isSpace() ? 0 : length + 1;
        if (length > LongestWord)
            return true;
    }
    return false;
}

} // namespace zem
