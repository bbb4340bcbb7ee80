#pragma once

#include "reader/SourceText.h"

namespace zem {

/// Appends each line of the block that begins "else" to the nearest line above it that begins "if", and
/// empties it. An "else" with no "if" above it in the block stays as it is.
void JoinElseLines(SourceText& source, const BlockSpan& block);

/// Joins each line of the block that ends "__" with the line below it, which becomes empty; chains become one
/// line. The last line of the block has nothing to be joined with.
void JoinContinuedLines(SourceText& source, const BlockSpan& block);

} // namespace zem
