#pragma once

#include "play/Outcome.h"
#include "play/Transcript.h"

#include <string>

namespace zem::test {

/// All that a turn prints, as a transcript shows it.
inline std::string TextOf(const play::Outcome& outcome) {
    play::StoryText story;
    story.Add(outcome.pieces);
    return story.Take();
}

} // namespace zem::test
