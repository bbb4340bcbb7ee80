#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace zem {

/// What a page is made of.
struct WebPageParts {
    std::string frame; // the page with "@NAME@" where its parts go
    std::string style;
    std::string script;
    std::string player;                                         // WebAssembly, packed by gzip
    std::string title;                                          // of the game, UTF-8
    std::string author;                                         // UTF-8
    std::string game;                                           // the bytes of the file
    std::vector<std::pair<std::string, std::string>> libraries; // names and bytes
    std::vector<std::pair<std::string, std::string>> media;     // names in UTF-8, and bytes
};

/// One page that plays a game, with all that it needs in it.
std::string MakeWebPage(const WebPageParts& parts);

/// The bytes, packed by gzip.
std::string PackGzip(std::string_view bytes);

/// What browsers call the kind of a picture or sound, by the ending of its name; empty for one that they do
/// not show.
std::string_view MediaType(std::string_view name);

} // namespace zem
