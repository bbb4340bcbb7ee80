#pragma once

#include "kel/CommandLookup.h"
#include "model/GameModel.h"
#include "play/RecordedRuns.h"

#include <string>

/// A game as text for people and programs, in UTF-8. The same game gives the same bytes, whatever its file is
/// called.
namespace zem::exports {

/// One page to read, without scripts and files of its own: contents, rooms as one comes to them, exits as
/// links, people, things, who uses what, texts, an index.
std::string AsHtml(const GameModel& game, const CommandLookup& commands);

/// The same as Markdown.
std::string AsMarkdown(const GameModel& game, const CommandLookup& commands);

/// The rooms as comma-separated values with a head line, as RFC 4180 has them.
std::string AsCsv(const GameModel& game);

/// All fields of the game. The form is described in docs/json.md.
std::string AsJson(const GameModel& game);

/// The map for Graphviz: rooms and the ways between them.
std::string AsDot(const GameModel& game);

/// A recorded run as something to read: what to type and what happens then.
std::string AsWalkthrough(const GameModel& game, const play::RecordedRun& run);

} // namespace zem::exports
