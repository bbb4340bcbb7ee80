#include "painting/BookPages.h"

#include "export/Export.h"
#include "map/MapGames.h"
#include "routing/Router.h"

#include <gtest/gtest.h>
#include <regex>

namespace zem::test {
namespace {

std::size_t CountOf(const std::string& text, const std::string& what) {
    std::size_t count = 0;
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + what.size()))
        ++count;
    return count;
}

TEST(BookPages, LoseNothingToTheNumbersOfTheirContents) {
    const CommandCatalogue none;
    const std::string html =
        exports::AsHtml(LoadBytes(ReadBytes(ZEM_SAMPLES "/lighthouse.kel")), CommandLookup(none));
    const std::string withoutLinks = std::regex_replace(html, std::regex("<a href="), "<a title=");
    const std::size_t pages = CountOf(BookPages(withoutLinks, {}), "/Type /Page\n");
    EXPECT_GT(pages, 20U);
    EXPECT_EQ(CountOf(BookPages(html, {}), "/Type /Page\n"), pages);
}

TEST(BookPages, BeginWithTheMapAndGoOnAsLongAsTheText) {
    const routing::RoutedMap map =
        routing::RouteMap(GraphOf(RoomBlock("A", "east <B>") + RoomBlock("B", "")), {{0, 0}, {1, 0}});
    const auto pages = [&](int paragraphs) {
        std::string html = "<h1>Game</h1><ul><li><a href=\"#end\">End</a></li></ul>";
        for (int k = 0; k < paragraphs; ++k)
            html += "<p>A paragraph of some words.</p>";
        const std::string pdf = BookPages(html + "<h2 id=\"end\">End</h2>", map);
        EXPECT_TRUE(pdf.starts_with("%PDF"));
        return CountOf(pdf, "/Type /Page\n");
    };
    EXPECT_EQ(pages(1), 2U) << "the map and the text";
    EXPECT_GT(pages(150), 4U);
    EXPECT_LT(pages(150), 10U);
    EXPECT_EQ(BookPages("<h1>Game</h1>", map), BookPages("<h1>Game</h1>", map)) << "whenever it is made";
    EXPECT_FALSE(BookPages("", {}).empty()) << "a game without rooms";
}

} // namespace
} // namespace zem::test
