#pragma once

#include "base/TextRange.h"
#include "spelling/Speller.h"

#include <QString>
#include <QTextCharFormat>

#include <functional>
#include <string_view>
#include <vector>

class QPalette;

namespace zem {

class CommandLookup;
class GameSpelling;
struct CommandDefinition;

/// Which parts of the text of a box players read.
using ProseParts = std::function<std::vector<TextRange>(std::string_view text)>;

/// Of a box into which a line of a script is typed.
/// @param commands  outlives the result
ProseParts PartsOfLine(const CommandLookup& commands);

/// Of a box into which the parameter of a command is typed.
/// @param commands  outlives the result
/// @param command   gives the command of the moment; null for none that is known
ProseParts PartsOfParameter(const CommandLookup& commands, std::function<const CommandDefinition*()> command);

/// A stretch of a prose box that does not look like the others. In characters, which are bytes of the game.
struct ProseMark {
    enum Kind { Code, Unknown };
    Kind kind = Code;
    int begin = 0;
    int end = 0;

    bool operator==(const ProseMark&) const = default;
};

/// The format codes and variables of a text, and the words that nobody knows, in no particular order.
/// @param parts  empty for a text that players read as a whole
std::vector<ProseMark> FindProseMarks(const QString& text, const ProseParts& parts,
                                      const spelling::Speller& speller);

/// What tells the unknown words; without a spelling every word is known.
const spelling::Speller& SpellerOf(const GameSpelling* spelling);

/// How a mark looks: codes are dim, unknown words have a wavy line below them.
QTextCharFormat LookOf(ProseMark::Kind kind, const QPalette& palette);

/// The stretch of a text around some of its characters that begins and ends with its words. A very long word
/// is cut.
TextRange WholeWordsAround(const QString& text, qsizetype begin, qsizetype end);

} // namespace zem
