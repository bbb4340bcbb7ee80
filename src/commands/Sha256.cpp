#include "commands/Sha256.h"

#include <array>
#include <bit>
#include <cstdint>

namespace zem {

namespace {

using HashWords = std::array<std::uint32_t, 8>;
constexpr std::size_t BlockSize = 64;

// The first bits behind the point of the square roots of the first 8 primes, and of the cube roots of the
// first 64.
constexpr HashWords FirstHash = {0x6A09E667, 0xBB67AE85, 0x3C6EF372, 0xA54FF53A,
                                 0x510E527F, 0x9B05688C, 0x1F83D9AB, 0x5BE0CD19};
constexpr std::array<std::uint32_t, 64> RoundKeys = {
    0x428A2F98, 0x71374491, 0xB5C0FBCF, 0xE9B5DBA5, 0x3956C25B, 0x59F111F1, 0x923F82A4, 0xAB1C5ED5,
    0xD807AA98, 0x12835B01, 0x243185BE, 0x550C7DC3, 0x72BE5D74, 0x80DEB1FE, 0x9BDC06A7, 0xC19BF174,
    0xE49B69C1, 0xEFBE4786, 0x0FC19DC6, 0x240CA1CC, 0x2DE92C6F, 0x4A7484AA, 0x5CB0A9DC, 0x76F988DA,
    0x983E5152, 0xA831C66D, 0xB00327C8, 0xBF597FC7, 0xC6E00BF3, 0xD5A79147, 0x06CA6351, 0x14292967,
    0x27B70A85, 0x2E1B2138, 0x4D2C6DFC, 0x53380D13, 0x650A7354, 0x766A0ABB, 0x81C2C92E, 0x92722C85,
    0xA2BFE8A1, 0xA81A664B, 0xC24B8B70, 0xC76C51A3, 0xD192E819, 0xD6990624, 0xF40E3585, 0x106AA070,
    0x19A4C116, 0x1E376C08, 0x2748774C, 0x34B0BCB5, 0x391C0CB3, 0x4ED8AA4A, 0x5B9CCA4F, 0x682E6FF3,
    0x748F82EE, 0x78A5636F, 0x84C87814, 0x8CC70208, 0x90BEFFFA, 0xA4506CEB, 0xBEF9A3F7, 0xC67178F2};

std::uint32_t WordAt(std::string_view block, std::size_t index) {
    std::uint32_t word = 0;
    for (std::size_t k = 0; k < 4; ++k)
        word = word << 8U | static_cast<unsigned char>(block[4 * index + k]);
    return word;
}

void AddBlock(HashWords& hash, std::string_view block) {
    using std::rotr;
    std::array<std::uint32_t, 64> schedule{};
    for (std::size_t k = 0; k < 16; ++k)
        schedule[k] = WordAt(block, k);
    for (std::size_t k = 16; k < 64; ++k) {
        const std::uint32_t before = schedule[k - 15];
        const std::uint32_t last = schedule[k - 2];
        schedule[k] = schedule[k - 16] + (rotr(before, 7) ^ rotr(before, 18) ^ before >> 3U) +
                      schedule[k - 7] + (rotr(last, 17) ^ rotr(last, 19) ^ last >> 10U);
    }
    auto [a, b, c, d, e, f, g, h] = hash;
    for (std::size_t k = 0; k < 64; ++k) {
        const std::uint32_t one =
            h + (rotr(e, 6) ^ rotr(e, 11) ^ rotr(e, 25)) + ((e & f) ^ (~e & g)) + RoundKeys[k] + schedule[k];
        const std::uint32_t two = (rotr(a, 2) ^ rotr(a, 13) ^ rotr(a, 22)) + ((a & b) ^ (a & c) ^ (b & c));
        h = g;
        g = f;
        f = e;
        e = d + one;
        d = c;
        c = b;
        b = a;
        a = one + two;
    }
    const HashWords added = {a, b, c, d, e, f, g, h};
    for (std::size_t k = 0; k < hash.size(); ++k)
        hash[k] += added[k];
}

} // namespace

std::string Sha256(std::string_view bytes) {
    const std::uint64_t bits = std::uint64_t{bytes.size()} * 8;
    HashWords hash = FirstHash;
    for (; bytes.size() >= BlockSize; bytes.remove_prefix(BlockSize))
        AddBlock(hash, bytes.substr(0, BlockSize));
    std::string rest(bytes);
    rest += '\x80';
    while (rest.size() % BlockSize != BlockSize - 8)
        rest += '\0';
    for (unsigned shift = 64; shift != 0; shift -= 8)
        rest += static_cast<char>(bits >> (shift - 8));
    for (std::string_view left = rest; !left.empty(); left.remove_prefix(BlockSize))
        AddBlock(hash, left.substr(0, BlockSize));
    std::string sum;
    for (const std::uint32_t word : hash)
        for (unsigned shift = 32; shift != 0; shift -= 8)
            sum += static_cast<char>(word >> (shift - 8));
    return sum;
}

} // namespace zem
