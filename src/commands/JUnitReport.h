#pragma once

#include <string>
#include <vector>

namespace zem {

/// One test of a report.
struct ReportedTest {
    enum Result { Passed, Failed, Skipped };
    std::string name; // UTF-8; what XML cannot hold is replaced
    Result result = Passed;
    std::string message; // why it failed or was not run, in a line
    std::string details;
    double seconds = 0;
};

/// A report as build servers read it: JUnit's XML.
/// @param suite  what was tested
std::string JUnitReport(const std::string& suite, const std::vector<ReportedTest>& tests);

} // namespace zem
