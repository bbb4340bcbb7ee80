#pragma once

#include "base/TextEncoding.h"
#include "play/Libraries.h"
#include "play/Session.h"
#include "play/World.h"
#include "reader/LoadGame.h"
#include "support/OutcomeText.h"

#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

namespace zem::test {

/// What is typed, and what is told then, without its last line end. "< yes" answers a question, "@ 9" lets
/// seconds pass.
struct PlayedLine {
    const char* line;
    const char* told;
};

/// A game that begins in the room Hall, in parts: lines of its own block, lines of the room, further blocks.
struct PlayedGame {
    const char* what;
    const char* game;
    const char* hall;
    const char* more;
    std::vector<PlayedLine> lines;
};

/// The world of a game in UTF-8.
inline std::shared_ptr<const play::World> WorldOf(const std::string& text) {
    play::GameFiles files;
    play::NameMessages(files.game);
    ReadGame(files.game, FromUtf8(text));
    return play::World::Compile(std::move(files));
}

inline std::string TextOfGame(const PlayedGame& one) {
    return std::string("define game <G>\nstart <Hall>\n") + one.game +
           "end define\ndefine room <Hall>\nlook <Here.>\n" + one.hall + "end define\n" + one.more;
}

inline play::Outcome PlayLine(play::Session& session, std::string_view line) {
    if (line.starts_with("<"))
        return session.Answer(FromUtf8(line.substr(std::min<std::size_t>(2, line.size()))));
    if (line.starts_with("@ "))
        return session.Pass(std::stoll(std::string(line.substr(2))));
    return session.Type(FromUtf8(line));
}

/// What a turn tells, in UTF-8, without its last line end.
inline std::string ToldBy(const play::Outcome& outcome) {
    std::string told = TextOf(outcome);
    if (told.ends_with('\n'))
        told.pop_back();
    return told;
}

/// Plays each game and compares what it tells line by line.
inline void ExpectPlayed(const std::vector<PlayedGame>& games) {
    for (const PlayedGame& one : games) {
        play::Session session(WorldOf(TextOfGame(one)), 1);
        session.Begin();
        for (const PlayedLine& line : one.lines)
            EXPECT_EQ(ToldBy(PlayLine(session, line.line)), line.told) << one.what << ": > " << line.line;
    }
}

} // namespace zem::test
