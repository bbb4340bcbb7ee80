#include "merge/CommonRuns.h"

#include "base/LineText.h"
#include "merge/InlineScripts.h"

#include <algorithm>
#include <deque>
#include <string>
#include <unordered_map>

namespace zem::merge {

namespace {

// Beyond so many pieces that differ, people read two texts and not the differences of one.
constexpr int MostDifferences = 1000;

/// Equal pieces as equal numbers.
class PieceNumbers {
public:
    std::vector<int> Of(const std::vector<std::string_view>& pieces) {
        std::vector<int> numbers;
        numbers.reserve(pieces.size());
        for (std::string_view piece : pieces) {
            if (piece.find('\t') != std::string_view::npos)
                piece = plain_.emplace_back(WithoutMarks(piece));
            numbers.push_back(known_.emplace(piece, static_cast<int>(known_.size())).first->second);
        }
        return numbers;
    }

private:
    std::unordered_map<std::string_view, int> known_;
    std::deque<std::string> plain_; // owns what the map looks at
};

/// The greedy search for the shortest way from one list to the other (Myers 1986): how far one comes on each
/// diagonal with d differences.
class ShortestEdit {
public:
    ShortestEdit(const int* a, int sizeA, const int* b, int sizeB)
        : a_(a),
          b_(b),
          sizeA_(sizeA),
          sizeB_(sizeB) {}

    /// Pairs of equal pieces from the last to the first; none when the lists differ in too much.
    std::vector<std::pair<int, int>> Pairs() {
        const int most = std::min(sizeA_ + sizeB_, MostDifferences);
        for (int d = 0; d <= most; ++d) {
            reached_.emplace_back(static_cast<std::size_t>(2 * d + 1));
            for (int k = -d; k <= d; k += 2) {
                int x = Start(d, k);
                while (x < sizeA_ && x - k < sizeB_ && a_[x] == b_[x - k])
                    ++x;
                At(d, k) = x;
                if (k == sizeA_ - sizeB_ && x >= sizeA_)
                    return WalkBack(d);
            }
        }
        return {};
    }

private:
    int& At(int d, int k) { return reached_[static_cast<std::size_t>(d)][static_cast<std::size_t>(k + d)]; }

    bool CameDown(int d, int k) { return k == -d || (k != d && At(d - 1, k - 1) < At(d - 1, k + 1)); }

    int Start(int d, int k) {
        if (d == 0)
            return 0;
        return CameDown(d, k) ? At(d - 1, k + 1) : At(d - 1, k - 1) + 1;
    }

    std::vector<std::pair<int, int>> WalkBack(int d) {
        std::vector<std::pair<int, int>> pairs;
        int x = sizeA_;
        int k = sizeA_ - sizeB_;
        for (; d >= 0; --d) {
            const int start = Start(d, k);
            while (x > start) {
                --x;
                pairs.emplace_back(x, x - k);
            }
            if (d == 0)
                break;
            const bool down = CameDown(d, k);
            k += down ? 1 : -1;
            x = At(d - 1, k);
        }
        return pairs;
    }

    const int* a_;
    const int* b_;
    int sizeA_;
    int sizeB_;
    std::vector<std::vector<int>> reached_; // by d, then by diagonal from -d
};

void AddPair(std::vector<CommonRun>& runs, std::size_t a, std::size_t b) {
    if (!runs.empty() && runs.back().a + runs.back().count == a && runs.back().b + runs.back().count == b)
        ++runs.back().count;
    else
        runs.push_back({a, b, 1});
}

/// Letters, digits and what stands inside of words.
bool IsWordByte(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '\'' ||
           static_cast<unsigned char>(c) >= 0x80;
}

} // namespace

std::vector<CommonRun> CommonRuns(const std::vector<std::string_view>& a,
                                  const std::vector<std::string_view>& b) {
    PieceNumbers numbers;
    const std::vector<int> numbersA = numbers.Of(a);
    const std::vector<int> numbersB = numbers.Of(b);
    const std::size_t least = std::min(a.size(), b.size());
    std::size_t front = 0;
    while (front < least && numbersA[front] == numbersB[front])
        ++front;
    std::size_t back = 0;
    while (back < least - front && numbersA[a.size() - 1 - back] == numbersB[b.size() - 1 - back])
        ++back;

    std::vector<CommonRun> runs;
    for (std::size_t k = 0; k < front; ++k)
        AddPair(runs, k, k);
    const auto pairs = ShortestEdit(numbersA.data() + front, static_cast<int>(a.size() - front - back),
                                    numbersB.data() + front, static_cast<int>(b.size() - front - back))
                           .Pairs();
    for (auto pair = pairs.rbegin(); pair != pairs.rend(); ++pair)
        AddPair(runs, front + static_cast<std::size_t>(pair->first),
                front + static_cast<std::size_t>(pair->second));
    for (std::size_t k = back; k > 0; --k)
        AddPair(runs, a.size() - k, b.size() - k);
    return runs;
}

std::vector<std::string_view> LinesOf(std::string_view text) {
    return text.empty() ? std::vector<std::string_view>() : SplitAt(text, "\r\n");
}

std::vector<std::string_view> WordsOf(std::string_view text) {
    std::vector<std::string_view> words;
    while (!text.empty()) {
        std::size_t size = 0;
        while (size < text.size() && IsWordByte(text[size]))
            ++size;
        size = std::max<std::size_t>(size, 1);
        words.push_back(text.substr(0, size));
        text.remove_prefix(size);
    }
    return words;
}

} // namespace zem::merge
