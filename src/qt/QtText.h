#pragma once

#include <QString>

#include <optional>
#include <string>
#include <string_view>

/// The one place where the core's bytes and Qt's strings meet.
namespace zem {

/// Windows-1252 text of the core as Qt's; every byte has a character of its own.
QString ToQt(std::string_view text);

/// Qt's text as the core's Windows-1252. Throws KelError, which names the character, for text that the core
/// cannot hold.
std::string FromQt(const QString& text);

/// The first character of the text that a game file cannot hold, as a plain sentence for the author; nothing
/// when it can hold them all.
std::optional<QString> UnstorableCharacter(const QString& text);

/// The text on one line: line ends, tabs and other control characters, which a paste can bring along, become
/// blanks.
QString OnOneLine(QString text);

/// Paths, which are as the file system has them.
QString PathToQt(const std::string& path);
std::string PathFromQt(const QString& path);

} // namespace zem
