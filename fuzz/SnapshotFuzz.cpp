// Any bytes as the editor's own copy of a game: it is refused, or read whole and written as the same bytes.
#include "model/Snapshot.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

namespace {

constexpr std::size_t ChecksumSize = 8;

void Read(const std::string& bytes) {
    zem::GameModel game;
    try {
        game = zem::ReadSnapshot(bytes);
    } catch (const zem::KelError&) {
        return; // A refusal is a right answer to random bytes.
    }
    if (zem::WriteSnapshot(game) != bytes)
        std::abort();
}

/// The bytes with a checksum that fits them, so that they get past it to where they are taken apart.
std::string WithChecksum(std::string bytes) {
    std::uint64_t sum = 0xCBF29CE484222325U;
    for (const char c : bytes)
        sum = (sum ^ static_cast<unsigned char>(c)) * 0x100000001B3U;
    for (std::size_t i = 0; i < ChecksumSize; ++i)
        bytes += static_cast<char>(sum >> (8 * i) & 0xFF);
    return bytes;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    Read(bytes);
    Read(WithChecksum(bytes.substr(0, bytes.size() - std::min(bytes.size(), ChecksumSize))));
    return 0;
}
