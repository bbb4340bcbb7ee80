#pragma once

#include "commands/CommandLine.h"

#include <sstream>
#include <string>
#include <vector>

namespace zem::test {

/// A call of the command line, with what it said.
struct ZemCall {
    CommandLineResult result;
    std::string out;
    std::string err;

    explicit ZemCall(const std::vector<std::string>& arguments, const Painters& painters = {}) {
        std::ostringstream outStream;
        std::ostringstream errStream;
        result = RunCommandLine(arguments, ZEM_PROGRAM_FOLDER, outStream, errStream, painters);
        out = outStream.str();
        err = errStream.str();
    }
};

} // namespace zem::test
