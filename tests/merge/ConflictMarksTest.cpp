#include "merge/ConflictMarks.h"

#include "support/Cases.h"

#include <gtest/gtest.h>

namespace zem::test {
namespace {

/// "base|ours|theirs" with "/" for the ends of lines; "none" for a text that cannot be taken apart.
std::string TakenApart(std::string text) {
    for (char& c : text)
        c = c == '/' ? '\n' : c;
    const auto versions = merge::TakeMarksApart(text);
    if (!versions)
        return "none";
    std::string told = versions->base + "|" + versions->ours + "|" + versions->theirs;
    for (char& c : told)
        c = c == '\n' ? '/' : c;
    return told;
}

TEST(ConflictMarks, AreTakenApartOnlyWhenTheyAreWhole) {
    for (const auto& [text, expected] : Cases<const char*, const char*>{
             {"a/<<<<<<< ours/b/=======/c/>>>>>>> theirs/d/", "|a/b/d/|a/c/d/"},
             {"a/<<<<<<< ours/b/||||||| base/e/=======/c/>>>>>>> theirs/d", "a/e/d|a/b/d|a/c/d"},
             {"<<<<<<</=======/c/>>>>>>>/d/<<<<<<< x/e/=======/>>>>>>> y", "|d/e/|c/d/"},
             // One conflict of two tells what both began as, which is not enough.
             {"<<<<<<<//||||||| /=======/c/>>>>>>>/<<<<<<< x/e/=======/>>>>>>> y", "|/e/|c/"},
             {"<<<<<<< ours\r/b\r/=======\r/c\r/>>>>>>> theirs\r/d\r/", "|b\r/d\r/|c\r/d\r/"},
             {"=======/a line under a title/<<<<<<<< eight/<<<<<<<six/", "none"},
             {"=======/<<<<<<< x/a/=======/b/>>>>>>> y/=======", "|=======/a/=======|=======/b/======="},
             {"", "none"},
             {"no marks/at all", "none"},
             {"<<<<<<< ours/b/=======/c/", "none"},
             {"<<<<<<< ours/b/>>>>>>> theirs/", "none"},
             {"b/=======/c/>>>>>>> theirs/", "none"},
             {"<<<<<<< ours/<<<<<<< ours/b/=======/c/>>>>>>> theirs/>>>>>>> theirs/", "none"},
             {"<<<<<<< ours/b/=======/c/||||||| base/>>>>>>> theirs/", "none"},
         })
        EXPECT_EQ(TakenApart(text), expected) << text;
}

} // namespace
} // namespace zem::test
