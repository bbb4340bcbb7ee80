#pragma once

#include "model/GameModel.h"
#include "model/Place.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace zem {

/// The lines of a file from which the places of a game were read. ReadGame fills it for who asks; it is good
/// as long as the entries of the game keep their numbers. It takes 12 bytes for a line, and 8 for a record.
class SourceLines {
public:
    /// The line of the file, counted from 1, at which the place begins, or in which its bytes begin where the
    /// field has several lines. A script in braces begins with its first command, and the lines of an
    /// internal procedure are those that it was made of. What has no line of its own begins with its record.
    /// 0 for what came from no line, such as a standard text.
    std::size_t LineOf(const GameModel& game, const Place& place) const;

    /// For the readers: the record, or its field, was read from the line. Of several notes of a field, each
    /// stands for one line of a field that has several, else the last counts.
    void Note(const Place& place, std::size_t line);

    /// For the readers: from this entry on, procedures were made of scripts in braces, the first of which has
    /// this number.
    void NoteFirstMade(int entry, int number) {
        firstMade_ = entry;
        firstNumber_ = number;
    }

    /// For the readers: all is noted.
    void Finish();

    void Reserve(std::size_t notes) {
        keys_.reserve(notes);
        lines_.reserve(notes);
    }

private:
    /// A stretch of notes about one record of the game.
    struct Run {
        std::uint32_t record; // The first step of the places, packed.
        std::uint32_t first;  // Index of its first note.
    };

    /// The lines noted for exactly this record or field.
    std::vector<std::size_t> Noted(const Place& place) const;
    std::size_t LineOfFieldOrRecord(Place place, std::size_t lineInText) const;
    int MadeProcedure(const GameModel& game, const std::string& script) const;

    std::vector<Run> runs_;
    // What is known of each note: the further steps and the field, packed, and the line.
    std::vector<std::uint64_t> keys_;
    std::vector<std::uint32_t> lines_;
    std::vector<std::uint32_t> sorted_; // The indices of the runs in the order of their records.
    int firstMade_ = 0;                 // 0 for none.
    int firstNumber_ = 0;
};

} // namespace zem
