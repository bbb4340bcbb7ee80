#pragma once

#include "play/JudgeRuns.h"

#include <QIcon>
#include <QPalette>
#include <QString>

#include <cstddef>

namespace zem {

/// The state of a run in a few words: "changed after > light the lamp".
QString StateWords(const play::JudgedRun& run);

/// The shape of a state; none for a run that is told as approved.
QIcon IconOfState(play::RunState state, const QPalette& palette);

/// Whether what follows a line of the run is told otherwise than it was approved.
/// @param step  from 1; 0 for the beginning
bool IsToldOtherwise(const play::JudgedRun& run, std::size_t step);

/// What the game tells after a line of the run. Where that was approved in other words, the lines that differ
/// stand first, as they were and as they are, each with its words marked.
/// @param step  from 1; 0 for the beginning
QString StoryAsHtml(const play::JudgedRun& run, std::size_t step, const QPalette& palette);

} // namespace zem
