#pragma once

#include <string>

namespace zem::routing {
struct RoutedMap;
}

namespace zem {

/// A book of a game as a PDF: the map on a page of its own, then the text on numbered pages, with the number
/// of the page at each entry of its lists of links. Needs an application; may run on any thread. Throws
/// KelError when it cannot be made.
/// @param html  the book, whose links lead to its own headings
std::string BookPages(const std::string& html, const routing::RoutedMap& map);

} // namespace zem
