#pragma once

#include <array>
#include <fstream>
#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace zem::test {

/// The text with \r, \n, \t, \\ and \xHH turned into their bytes.
inline std::string Unescaped(std::string_view text) {
    std::string bytes;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] != '\\') {
            bytes += text[at];
            continue;
        }
        const char kind = text.at(++at);
        const std::size_t named = std::string_view("rnt\\").find(kind);
        if (named == std::string_view::npos && kind != 'x')
            throw std::runtime_error("no such escape: " + std::string(text));
        bytes += kind == 'x' ? static_cast<char>(std::stoi(std::string(text.substr(at + 1, 2)), nullptr, 16))
                             : "\r\n\t\\"[named];
        at += kind == 'x' ? 2 : 0;
    }
    return bytes;
}

/// The cases of tests/data/cases/NAME.cases, one a line: its fields stand between " => " (at the end of the
/// line " =>" for an empty one), with escapes as in Unescaped. Empty lines and those that begin with "#" are
/// no cases. Throws when there is no case, or one with another number of fields.
template <std::size_t FieldCount>
std::vector<std::array<std::string, FieldCount>> CasesIn(const std::string& name) {
    std::ifstream file(ZEM_TEST_DATA "/cases/" + name + ".cases");
    std::vector<std::array<std::string, FieldCount>> cases;
    for (std::string line; std::getline(file, line);) {
        if (line.empty() || line[0] == '#')
            continue;
        line += line.ends_with(" =>") ? " " : "";
        std::array<std::string, FieldCount> fields;
        std::size_t count = 0;
        for (std::size_t at = 0, end = 0; end != std::string::npos; at = end + 4, ++count) {
            end = line.find(" => ", at);
            if ((end == std::string::npos) != (count + 1 == FieldCount))
                throw std::runtime_error(name + ": not " + std::to_string(FieldCount) + " fields: " + line);
            fields.at(count) = Unescaped(std::string_view(line).substr(at, end - at));
        }
        cases.push_back(fields);
    }
    if (cases.empty())
        throw std::runtime_error("no cases: " + name);
    return cases;
}

} // namespace zem::test
