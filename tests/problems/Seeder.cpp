#include "problems/Seeder.h"

#include "base/LineText.h"

#include <algorithm>
#include <utility>

namespace zem::test {

std::string Seeder::Misspelt(const std::string& word) {
    for (;;) {
        std::string other = word;
        const auto at = static_cast<std::size_t>(Pick(static_cast<int>(word.size())));
        const char letter = static_cast<char>('a' + Pick(26));
        switch (Pick(4)) {
        case 0:
            other.erase(at, 1);
            break;
        case 1:
            other.insert(at, 1, other[at]);
            break;
        case 2:
            other[at] = letter;
            break;
        default:
            std::swap(other[at], other[std::min(at + 1, word.size() - 1)]);
        }
        const bool isName = !other.empty() && Trim(other) == other && !EqualIgnoringCase(other, word);
        if (isName)
            return other;
    }
}

const std::vector<FaultKind>& FaultKinds() {
    static const std::vector<FaultKind> kinds = [] {
        std::vector<FaultKind> all;
        for (const auto& family : {ScriptFaults, RecordFaults, FileFaults})
            for (const FaultKind& kind : family())
                all.push_back(kind);
        return all;
    }();
    return kinds;
}

} // namespace zem::test
