#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

/// What the author has told the editor about a game, beside the game: a file is written anew by every save,
/// and a line that the language does not know would go to the player.
///
/// The file "NAME.kel.notes" is UTF-8, one entry a line, sorted, so that two versions of it merge. In memory
/// all text of the notes is UTF-8, too. The lines:
///
///     language en_GB
///     silence A01 at room "Kitchen", exit north, room "Atic" because it comes with part two
///     silence E01 at room "Cellar"
///     word Kerl\xC3\xA9van
///
/// "language" is that of the game's texts, by its short name. "word" is one that the author spells so.
/// "silence" takes a problem off the list: its check, the place by names (with "," between the steps, names
/// in quotation marks, "\" before a quotation mark or another "\", "\r" and "\n" for line ends) and, behind
/// "because", the reason if the author gave one. Lines that begin with another word are kept as they are:
/// they may be those of a later version.
namespace zem {

/// A step on the way to a place: room "Kitchen", or exit north, which has no name.
struct NotePart {
    std::string what;
    bool hasName = false;
    std::string name;

    auto operator<=>(const NotePart&) const = default;
};

/// A place by names, and last the words there that are meant, if not all of it.
using NotePlace = std::vector<NotePart>;

/// A problem that the author does not want to be told of.
struct Silence {
    std::string check; // Its short name: "A01".
    NotePlace place;   // At least one part.
    std::string reason;

    auto operator<=>(const Silence&) const = default;
};

struct GameNotes {
    std::string language; // Empty when the author has not told.
    std::set<std::string> words;
    std::set<Silence> silences;
    std::set<std::string> others; // Lines of other kinds.

    bool operator==(const GameNotes&) const = default;

    /// Whether the author has silenced the check there, whatever the reason.
    bool IsSilenced(const std::string& check, const NotePlace& place) const;

    /// Silences the check there; an earlier reason gives way.
    void SilenceAt(const std::string& check, const NotePlace& place, const std::string& reason);

    /// Takes the silence back.
    void Unsilence(const std::string& check, const NotePlace& place);
};

/// Reads the bytes of a file of notes. Throws KelError, tied to its line, for one that is damaged: no UTF-8,
/// marks of a merge, a silence that does not say what it is about.
GameNotes ReadNotes(std::string_view bytes);

/// The bytes of the file, LF line ends; none when nothing is noted.
std::string WriteNotes(const GameNotes& notes);

/// The file of the notes of a game.
std::string NotesPath(const std::string& gamePath);

/// The notes beside a game; none when there is no such file. Throws KelError when it cannot be read or is
/// damaged.
GameNotes LoadNotes(const std::string& gamePath);

/// Reads the notes beside a game as they are now, changes them, and replaces the file safely where that made
/// a difference. Throws KelError and leaves the file as it was when it is damaged or cannot be written.
void ChangeNotes(const std::string& gamePath, const std::function<void(GameNotes&)>& change);

} // namespace zem
