#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace zem::play {

/// What is printed without any script. A game may replace each by words of its own.
enum class Message : std::uint8_t {
    BadCommand,
    BadGo,
    BadPlace,
    BadThing,
    BadTake,
    AlreadyTaken,
    Taken,
    BadDrop,
    Dropped,
    NoItem,
    BadGive,
    BadGiveTo,
    Given,
    BadUse,
    BadUseOn,
    BadSpeak,
    NoReply,
    SpeakToThing,
    SpeakToSelf,
    DefaultLook,
    LookSelf,
    NothingHere,
    BadExamine,
    EmptyHanded,
    Inventory,
    YouCanSee,
    YouCanGo,
    PeopleHere,
    BadCharacter,
    TooDark, // never printed: the language has no darkness
    NeedName,
    Ambiguous,
    UnknownWord,
    BadOops,
    BadCollectable,
    MenuPrompt,
    BadChoice,
    AskSave,
    Saved,
    BadSave,
    Restored,
    BadRestore,
    WonGame,
    LostGame,
    PlayAgain
};
inline constexpr std::size_t MessageCount = static_cast<std::size_t>(Message::PlayAgain) + 1;

struct MessageRow {
    std::string_view name; // as "error" lines of games have it
    std::string_view text; // what is printed when the game has no words of its own
};

/// By the number of the message.
extern const std::array<MessageRow, MessageCount> MessageRows;

/// What is said in fixed words.
inline constexpr std::string_view TimePasses = "Time passes.";
inline constexpr std::string_view AnswerYesOrNo = "Please answer yes or no.";
inline constexpr std::string_view RoundInCircles = "Something in the game goes round in circles here.";

/// The page that HELP prints, its lines parted by CR LF.
extern const std::string_view HelpPage;

} // namespace zem::play
