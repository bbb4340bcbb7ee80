#include "game/Timers.h"

#include "base/LineText.h"
#include "base/TextRange.h"

#include <algorithm>
#include <charconv>
#include <limits>

namespace zem {

namespace {

constexpr std::string_view TimerLineEnd = "\r\n";

/// A block and where its values stand; ranges are bytes of all the blocks, empty at `end` where a line is
/// missing.
struct TimerBlock {
    GameTimer timer;
    TextRange whole; // with the empty line behind it
    TextRange name;
    TextRange seconds;
    TextRange action;
    bool hasSeconds = false;
    bool hasAction = false;
    std::size_t end = 0; // where "end define" begins
};

TextRange TrimTabs(std::string_view text, TextRange range) {
    while (range.begin < range.end && (text[range.begin] == ' ' || text[range.begin] == '\t'))
        ++range.begin;
    while (range.begin < range.end && (text[range.end - 1] == ' ' || text[range.end - 1] == '\t'))
        --range.end;
    return range;
}

/// What stands in the brackets that end the line; false where it ends otherwise.
bool FindBrackets(std::string_view text, TextRange line, TextRange& inside) {
    const std::size_t open = text.find('<', line.begin);
    const std::size_t close = text.find('>', line.begin);
    if (open >= line.end || close >= line.end || close < open)
        return false;
    inside = {open + 1, close};
    return close + 1 == line.end;
}

class TimerReader {
public:
    explicit TimerReader(std::string_view text) : text_(text) {}

    std::vector<TimerBlock> Read() {
        for (std::size_t begin = 0; begin < text_.size();) {
            const std::size_t found = std::min(text_.find(TimerLineEnd, begin), text_.size());
            const std::size_t next = std::min(found + TimerLineEnd.size(), text_.size());
            ReadLine(TrimTabs(text_, {begin, found}), begin, next);
            begin = next;
        }
        return std::move(blocks_);
    }

private:
    void ReadLine(TextRange range, std::size_t begin, std::size_t next) {
        const std::string_view line = range.Of(text_);
        if (!isOpen_) {
            // The empty line behind a block belongs to it.
            if (line.empty() && !blocks_.empty() && blocks_.back().whole.end == begin)
                blocks_.back().whole.end = next;
            if (BeginsWith(line, "define timer "))
                Open(range, begin);
            return;
        }
        TimerBlock& block = blocks_.back();
        if (BeginsWith(line, "end define")) {
            block.end = begin;
            block.whole.end = next;
            isOpen_ = false;
        } else if (BeginsWith(line, "interval ") && !block.hasSeconds) {
            block.hasSeconds = FindBrackets(text_, range, block.seconds);
            block.timer.isKnown = block.timer.isKnown && block.hasSeconds;
            block.timer.seconds = block.seconds.Of(text_);
        } else if (BeginsWith(line, "action ") && !block.hasAction) {
            block.action = TrimTabs(text_, {range.begin + std::string_view("action ").size(), range.end});
            block.hasAction = true;
            block.timer.action = block.action.Of(text_);
        } else if (!line.empty()) {
            block.timer.isKnown = false;
        }
    }

    void Open(TextRange range, std::size_t begin) {
        TimerBlock block;
        block.timer.isKnown = FindBrackets(text_, range, block.name);
        block.timer.name = Trim(block.name.Of(text_));
        block.timer.block = static_cast<int>(blocks_.size());
        block.whole = {begin, begin};
        blocks_.push_back(block);
        isOpen_ = true;
    }

    std::string_view text_;
    std::vector<TimerBlock> blocks_;
    bool isOpen_ = false;
};

/// The block with other values in it.
std::string Changed(std::string_view text, const TimerBlock& block, const GameTimer& timer) {
    std::string changed;
    std::size_t done = block.whole.begin;
    const auto replace = [&](TextRange range, const std::string& before, const std::string& now) {
        if (before == now)
            return;
        changed.append(text.substr(done, range.begin - done)).append(now);
        done = range.end;
    };
    struct Part {
        TextRange range;
        const std::string* before;
        std::string now;
    };
    std::vector<Part> parts = {{block.name, &block.timer.name, timer.name}};
    const std::string noValue;
    const TextRange missing{block.end, block.end};
    if (block.hasSeconds)
        parts.push_back({block.seconds, &block.timer.seconds, timer.seconds});
    else
        parts.push_back(
            {missing, &noValue, timer.seconds.empty() ? "" : "  interval <" + timer.seconds + ">\r\n"});
    if (block.hasAction)
        parts.push_back({block.action, &block.timer.action, timer.action});
    else
        parts.push_back({missing, &noValue, timer.action.empty() ? "" : "  action " + timer.action + "\r\n"});
    std::stable_sort(parts.begin(), parts.end(),
                     [](const Part& a, const Part& b) { return a.range.begin < b.range.begin; });
    for (const Part& part : parts)
        replace(part.range, *part.before, part.now);
    return changed.append(text.substr(done, block.whole.end - done));
}

} // namespace

std::vector<GameTimer> ReadTimers(std::string_view blocks) {
    std::vector<GameTimer> timers;
    for (const TimerBlock& block : TimerReader(blocks).Read())
        timers.push_back(block.timer);
    return timers;
}

std::string WriteTimers(std::string_view blocks, const std::vector<GameTimer>& timers) {
    std::string written;
    std::size_t done = 0;
    for (const TimerBlock& block : TimerReader(blocks).Read()) {
        const auto timer = std::find_if(timers.begin(), timers.end(), [&](const GameTimer& candidate) {
            return candidate.block == block.timer.block;
        });
        written.append(blocks.substr(done, block.whole.begin - done));
        if (timer != timers.end())
            written += timer->isKnown ? Changed(blocks, block, *timer) : std::string(block.whole.Of(blocks));
        done = block.whole.end;
    }
    written.append(blocks.substr(done));
    for (const GameTimer& timer : timers) {
        if (timer.block >= 0)
            continue;
        if (!written.empty() && !written.ends_with(TimerLineEnd))
            written += TimerLineEnd;
        written.append("define timer <" + timer.name + ">\r\n  interval <" + timer.seconds + ">\r\n");
        written.append(timer.action.empty() ? "" : "  action " + timer.action + "\r\n");
        written.append("end define\r\n\r\n");
    }
    return written;
}

bool IsTimerInterval(std::string_view seconds) {
    const std::string_view text = Trim(seconds);
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() && number >= 1 &&
           number <= std::numeric_limits<std::int16_t>::max();
}

} // namespace zem
