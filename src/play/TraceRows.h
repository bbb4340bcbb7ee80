#pragma once

#include "kel/CommandLookup.h"
#include "play/Outcome.h"
#include "play/StoryPlaces.h"

#include <string>
#include <vector>

namespace zem::play {

/// One line of a trace in plain English.
struct TraceRow {
    enum What : std::uint8_t {
        Script, // names the script whose lines follow
        Ran,
        True, // a condition
        False,
        NotRun, // a condition that was not asked, or the other way of an "if"
        Faulty
    };
    int level = 0; // how far it is indented
    std::string text;
    What what = Ran;
    std::string note; // why it is faulty
    Source source;
};

/// What ran in a turn, in the order in which it ran, for the author. Calls of internal procedures are left
/// out: authors know their lines as those of the script that calls them. At most 5,000 rows.
std::vector<TraceRow> DescribeTrace(const std::vector<TraceEntry>& trace, const StoryPlaces& places,
                                    const CommandLookup& commands);

} // namespace zem::play
