#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zem {

/// A file that stands in a page.
struct PageFile {
    std::string name; // as the game names it, Windows-1252
    std::string bytes;
};

/// What a page is made of.
struct WebPageParts {
    std::string frame; // the page with "@NAME@" where its parts go
    std::string style;
    std::string script;
    std::string player; // WebAssembly, packed by gzip
    std::string title;  // of the game, UTF-8
    std::string author; // UTF-8, may be empty
    PageFile cover;     // without a name when there is none
    std::string game;   // the bytes of its file
    std::vector<PageFile> libraries;
    std::vector<PageFile> media; // pictures and sounds
};

/// One page that plays a game, with all that it needs in it, and nothing of the game in it that a browser
/// would take for more than text.
std::string MakeWebPage(const WebPageParts& parts);

/// What browsers call the kind of a picture or sound, by the ending of its name; empty for one that they do
/// not show.
std::string_view MediaType(std::string_view name);

} // namespace zem
