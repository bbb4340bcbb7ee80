#pragma once

#include <CLI/CLI.hpp>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <string>

/// The numbers that options take, and what is told of anything else.
namespace zem {

/// Digits alone, for a number of 64 bits: a larger one would be taken for the largest.
inline CLI::Validator WholeNumber() {
    const auto check = [](const std::string& text) {
        std::uint64_t number = 0;
        const char* const end = text.data() + text.size();
        const auto [stop, error] = std::from_chars(text.data(), end, number);
        return error == std::errc() && stop == end
                   ? std::string()
                   : '"' + text + "\" is no whole number from 0 to 18446744073709551615";
    };
    return {check, ""};
}

/// A time, which may have a fraction.
inline CLI::Validator SecondsAboveZero() {
    const auto check = [](const std::string& text) {
        char* stop = nullptr;
        const double seconds = std::strtod(text.c_str(), &stop);
        return *stop == '\0' && std::isfinite(seconds) && seconds > 0
                   ? std::string()
                   : '"' + text + "\" is no number of seconds above 0";
    };
    return {check, ""};
}

} // namespace zem
