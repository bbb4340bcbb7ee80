#pragma once

#include <QImage>
#include <QString>

#include <string>

namespace zem {

/// The path of a file that a game names: it stands in the game's own folder and nowhere else, links out of it
/// included. Empty when there is no such file.
/// @param name  in Windows-1252, as the game has it
QString StoryFilePath(const QString& folder, const std::string& name);

/// A picture of the game; null for what is no picture of a known kind, and for one larger than 8,000 by
/// 8,000.
QImage ReadStoryPicture(const QString& folder, const std::string& name);

/// What a player typed, as games hold text: a character that they lack becomes a question mark.
std::string FromQtForPlayer(const QString& line);

} // namespace zem
