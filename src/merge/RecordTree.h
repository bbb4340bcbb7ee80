#pragma once

#include "merge/InlineScripts.h"
#include "model/Place.h"

#include <deque>
#include <string>
#include <string_view>
#include <vector>

/// A game as a tree of records that all look alike, because versions are compared and merged in the same way
/// whatever a record is.
namespace zem::merge {

/// A field that is not empty, a mark that is set, or a number that is not 0.
struct TreeField {
    int number = 0;                 // counts the fields of a kind of record, those of its exits included
    FieldId exit = FieldId::None;   // the record of its own in which it stands
    FieldId id = FieldId::None;     // None for a list of texts
    const char* name = nullptr;     // in plain words
    const char* exitName = nullptr; // null where it stands in no exit
    FieldKind kind = FieldKind::Value;
    std::string_view text;
};

struct TreeRecord {
    FieldId list = FieldId::None; // that it stands in; None for the game
    const char* listName = "";    // in plain words
    int entry = 0;                // in that list, from 1
    int parent = -1;
    std::string_view key; // what it is called by, and known by in another version
    int keyNumber = -1;   // of the field that holds it
    std::vector<TreeField> fields;
    std::vector<int> children; // list by list in the order of the game's fields

    /// Its text; empty where it has none.
    std::string_view Text(int number) const;
};

/// Whether no author knows of the record: an internal procedure that no script calls.
bool IsHidden(const TreeRecord& record);

/// The first record is the game itself, parents come before their children. Internal procedures stand in the
/// scripts that call them; the counter of their numbers, and the version of the language, which every load
/// sets, are left out. Each block of an unknown kind counts as a record.
class RecordTree {
public:
    RecordTree() = default;

    /// @param version  a letter that tells the numbers of internal procedures of one version from another
    RecordTree(const GameModel& game, char version);
    RecordTree(const RecordTree&) = delete; // records look into its game
    RecordTree& operator=(const RecordTree&) = delete;

    const TreeRecord& operator[](int record) const { return records_[static_cast<std::size_t>(record)]; }
    TreeRecord& Edit(int record) { return records_[static_cast<std::size_t>(record)]; }
    int Count() const { return static_cast<int>(records_.size()); }

    /// Adds a record at the end; its number.
    int Append(TreeRecord record);

    /// Keeps a text for a field to look at.
    std::string_view Keep(std::string text) { return texts_.emplace_back(std::move(text)); }

    /// The number of the record among those of its list that authors know of, from 1.
    int VisibleEntry(int record) const;

    /// The place of a record or of one of its fields in the game.
    /// @param field  null for the record as a whole
    Place PlaceOf(int record, const TreeField* field = nullptr) const;

    /// The game with its scripts as authors see them.
    const GameModel& Game() const { return inline_.game; }
    bool IsInlined(int procedure) const { return inline_.inlined[static_cast<std::size_t>(procedure)]; }

private:
    InlineGame inline_;
    std::vector<TreeRecord> records_;
    std::deque<std::string> texts_;
};

/// The game of a tree.
/// @param start  has what trees leave out
GameModel GameOf(const RecordTree& tree, const GameModel& start);

} // namespace zem::merge
