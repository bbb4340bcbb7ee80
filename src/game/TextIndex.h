#pragma once

#include "base/LineText.h"
#include "game/MadeOfRecords.h"
#include "model/GameModel.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zem {

/// The texts of one record, to be searched at once.
struct SearchedTexts {
    struct Text {
        std::size_t begin = 0; // in the letters
        RecordText text;
    };
    std::string letters; // all texts, in small letters, each with a NUL behind it
    std::vector<Text> texts;
};

/// All texts that a game file holds, kept in small letters: what is searched for words at every key. Going on
/// to another version of the game takes only the records that differ anew.
class TextIndex {
public:
    TextIndex();

    void GoOnTo(const GameModel& game) { records_.GoOnTo(game); }

    /// The version that is searched.
    const GameModel& Game() const { return records_.Game(); }

    /// What a visitor wants next.
    enum class GoOn { BehindTheHit, AtTheNextCharacter, NotAtAll };

    /// Calls visit(record, text, bytes) for the words wherever they stand, whatever their capitals, with the
    /// step to the record, its RecordText, and the bytes of that.
    template <class Visit>
    void ForEachHit(std::string_view words, Visit visit) const {
        const std::string wanted = Lower(words);
        // The NUL between two texts is no author's.
        if (wanted.empty() || wanted.find('\0') != std::string::npos)
            return;
        GoOn goOn = GoOn::BehindTheHit;
        records_.ForEach([&](PlaceStep record, const SearchedTexts& searched) {
            std::size_t index = 0;
            for (std::size_t at = 0; goOn != GoOn::NotAtAll;) {
                at = FindIn(searched.letters, wanted, at);
                if (at == std::string::npos)
                    return;
                while (index + 1 < searched.texts.size() && searched.texts[index + 1].begin <= at)
                    ++index;
                const SearchedTexts::Text& text = searched.texts[index];
                const std::size_t begin = at - text.begin;
                goOn = visit(record, text.text, TextRange{begin, begin + wanted.size()});
                at += goOn == GoOn::BehindTheHit ? wanted.size() : 1;
            }
        });
    }

    /// Calls visit(record, text) for every text, until it returns false.
    template <class Visit>
    void ForEachText(Visit visit) const {
        bool goesOn = true;
        records_.ForEach([&](PlaceStep record, const SearchedTexts& searched) {
            for (const SearchedTexts::Text& text : searched.texts)
                goesOn = goesOn && visit(record, text.text);
        });
    }

private:
    static std::size_t FindIn(const std::string& letters, const std::string& wanted, std::size_t from);

    MadeOfRecords<SearchedTexts> records_;
};

} // namespace zem
