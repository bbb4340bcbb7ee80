#include "play/InputLog.h"

#include <cstdint>

namespace zem::play {

namespace {

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

void PackEntry(std::string& log, const std::vector<std::string>& fields) {
    PackNumber(log, fields.size());
    for (const std::string& field : fields) {
        PackNumber(log, field.size());
        log += field;
    }
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

} // namespace zem::play
