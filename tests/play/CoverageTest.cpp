// What turns reach is counted once, whatever they ask on their way, and nothing else is.
#include "play/Coverage.h"

#include "play/Libraries.h"
#include "play/Session.h"
#include "play/SourcePlaces.h"
#include "reader/LoadGame.h"
#include "support/Cases.h"

#include <gtest/gtest.h>

namespace zem::play {
namespace {

using zem::test::Cases;

constexpr const char* Text = R"(define game <G>
  start <Hall>
  command <try> if flag <f> then msg <on> else flag on <f>
  command <quiz> do <quiz>
  command <end> win
end define
define room <Hall>
  look <A hall.>
  script msg <Enter.>
  north <Cellar>
  define object <lamp>
    take msg <Taken.>
    use <key> { msg <One.>; msg <Two.> }
  end define
  define object <ghost>
    hidden
  end define
end define
define room <Cellar>
  look <A cellar.>
end define
define procedure <quiz>
  msg <Now.>
  if ask <Sure?> then msg <Yes.>
  if ask <Really?> then msg <Good.>
end define
define text <win>
Bravo.
end define
)";

std::shared_ptr<const World> Compile() {
    GameFiles files;
    NameMessages(files.game);
    ReadGame(files.game, Text);
    return World::Compile(std::move(files));
}

std::string Told(const SourcePlaces& places, const CoveragePart& part) {
    std::string told = places.Describe(part.source);
    if (part.kind == CoveragePart::Branch)
        told += part.answer ? " true" : " false";
    if (part.kind == CoveragePart::Ending)
        told += " ending";
    return told + " " + std::to_string(part.hits);
}

/// The parts that were hit, a line each, after some lines of the player; a line with "<" is an answer.
std::vector<std::string> Reached(const std::vector<std::string>& lines) {
    const auto world = Compile();
    const SourcePlaces places(world);
    Coverage coverage(world);
    Session session(world, 1);
    session.SetCoverage(&coverage);
    session.Begin();
    for (const std::string& line : lines)
        line.front() == '<' ? session.Answer(line.substr(1)) : session.Type(line);
    std::vector<std::string> told;
    for (const CoveragePart& part : coverage.Parts())
        if (part.hits > 0)
            told.push_back(Told(places, part));
    return told;
}

TEST(Coverage, CountsEachPartAsOftenAsItWasReached) {
    // What the beginning reaches stands before and behind what the lines reach.
    for (const auto& [lines, reached] : Cases<std::vector<std::string>, std::vector<std::string>>{
             {{}, {"room Hall 1", "room Hall, enter action 1", "object lamp in Hall 1"}},
             {{"try", "try"},
              {"player command try, action true 1", "player command try, action false 1",
               "player command try, action 1", "player command try, action 1", "room Hall 1",
               "room Hall, enter action 1", "object lamp in Hall 1"}},
             {{"quiz", "<perhaps", "<yes", "<no"},
              {"player command quiz, action 1", "room Hall 1", "room Hall, enter action 1",
               "object lamp in Hall 1", "procedure quiz, script, line 1 1",
               "procedure quiz, script, line 2 true 1", "procedure quiz, script, line 2 1",
               "procedure quiz, script, line 3 false 1"}},
             {{"quiz"},
              {"player command quiz, action 1", "room Hall 1", "room Hall, enter action 1",
               "object lamp in Hall 1", "procedure quiz, script, line 1 1"}},
             {{"end", "<maybe"},
              {"player command end, action 1", "player command end, action ending 1", "room Hall 1",
               "room Hall, enter action 1", "object lamp in Hall 1", "text block win 1"}},
             {{"take lamp", "n"},
              {"room Hall 1", "room Hall, enter action 1", "object lamp in Hall 2",
               "object lamp in Hall, take 1", "room Cellar 1"}},
         })
        EXPECT_EQ(Reached(lines), reached) << (lines.empty() ? "" : lines.front());
}

TEST(Coverage, AddsUpWhatOthersCounted) {
    const auto world = Compile();
    Coverage all(world);
    for (const char* line : {"n", "try"}) {
        Coverage one(world);
        Session session(world, 1);
        session.SetCoverage(&one);
        session.Begin();
        session.Type(line);
        all.Add(one);
    }
    EXPECT_EQ(all.Count(CoveragePart::Room).reached, 2U);
    EXPECT_EQ(all.Count(CoveragePart::Thing).all, 2U);
    EXPECT_EQ(all.Count(CoveragePart::Thing).reached, 1U);
    EXPECT_EQ(all.Count(CoveragePart::Branch).reached, 1U);
    EXPECT_EQ(all.Count(CoveragePart::Ending).all, 1U);
}

} // namespace
} // namespace zem::play
