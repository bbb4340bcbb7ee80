#include "play/InputLog.h"

#include <algorithm>
#include <iterator>

namespace zem::play {

namespace {

constexpr std::size_t BytesOfBlock = 16 * 1024;

/// Seven bits a byte; the highest bit says that more follow.
void PackNumber(std::string& log, std::size_t number) {
    for (; number >= 0x80; number >>= 7U)
        log += static_cast<char>((number & 0x7F) | 0x80);
    log += static_cast<char>(number);
}

std::size_t TakeNumber(std::string_view& log) {
    std::size_t number = 0;
    for (unsigned shift = 0; !log.empty(); shift += 7) {
        const auto byte = static_cast<unsigned char>(log.front());
        log.remove_prefix(1);
        number |= static_cast<std::size_t>(byte & 0x7FU) << shift;
        if (byte < 0x80)
            break;
    }
    return number;
}

} // namespace

std::string PackEntry(const std::vector<std::string>& fields) {
    std::string entry;
    PackNumber(entry, fields.size());
    for (const std::string& field : fields) {
        PackNumber(entry, field.size());
        entry += field;
    }
    return entry;
}

std::vector<std::string> TakeEntry(std::string_view& log) {
    std::vector<std::string> fields(TakeNumber(log));
    for (std::string& field : fields) {
        const std::size_t size = TakeNumber(log);
        field = log.substr(0, size);
        log.remove_prefix(size);
    }
    return fields;
}

void InputLog::Add(std::string_view entry) {
    if (blocks_.empty() || blocks_.back().bytes.size() + entry.size() > BytesOfBlock) {
        blocks_.push_back({size_, {}});
        blocks_.back().bytes.reserve(std::max(entry.size(), BytesOfBlock));
    }
    blocks_.back().bytes += entry;
    size_ += entry.size();
}

void InputLog::Truncate(std::size_t size) {
    while (!blocks_.empty() && blocks_.back().begin >= size)
        blocks_.pop_back();
    if (!blocks_.empty())
        blocks_.back().bytes.resize(std::min(blocks_.back().bytes.size(), size - blocks_.back().begin));
    size_ = std::min(size_, size);
}

std::deque<InputLog::Block>::const_iterator InputLog::BlockOf(std::size_t position) const {
    const auto after = std::upper_bound(blocks_.begin(), blocks_.end(), position,
                                        [](std::size_t at, const Block& block) { return at < block.begin; });
    return after == blocks_.begin() ? after : std::prev(after);
}

std::vector<std::string> InputLog::EntryAt(std::size_t position) const {
    const auto block = BlockOf(position);
    std::string_view bytes = std::string_view(block->bytes).substr(position - block->begin);
    return TakeEntry(bytes);
}

std::string InputLog::From(std::size_t position) const {
    std::string entries;
    for (auto block = BlockOf(position); block != blocks_.end(); ++block)
        entries +=
            std::string_view(block->bytes).substr(position > block->begin ? position - block->begin : 0);
    return entries;
}

} // namespace zem::play
