#pragma once

#include <string>
#include <vector>

namespace zem {

/// A game that is to become a web page.
struct PublishSource {
    std::string bytes;  // of the game
    std::string name;   // for a game without a title, UTF-8
    std::string folder; // where its libraries, pictures and sounds stand; empty for the current one
    bool hasFolder = true;
    std::string cover; // the path of a picture; empty for the one beside the game, if there is one
};

struct PublishedPage {
    std::string html;
    std::vector<std::string> remarks; // what the page does without, in plain words and UTF-8
};

/// Makes one page of a game, which plays it in any browser without a network.
///
/// Throws KelError when the game cannot be read, with the line, or cannot begin; when its pictures and sounds
/// are too large; and when there is no player for web pages in the folder of the program.
PublishedPage PublishGame(const PublishSource& source, const std::string& programFolder);

} // namespace zem
