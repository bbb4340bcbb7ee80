#pragma once

#include "forms/EditorContext.h"
#include "prose/ProseBox.h"
#include "prose/ProseMarks.h"

/// What every box has in which prose is written.
namespace zem {

class ProseRow;

/// From now on codes are dim in the box and unknown words marked, its context menu helps with both, and
/// Ctrl+B, Ctrl+I, Ctrl+U give the selected words another look, F7 goes to the next unknown word,
/// Ctrl+Shift+L opens a large window.
/// @param parts  which parts of the text players read; empty for all of it
void HelpWriting(PlainTextBox& box, const EditorContext& context);
void HelpWriting(QLineEdit& box, const EditorContext& context, ProseParts parts = {});

/// The same with the tools shown in a row.
void HelpWriting(PlainTextBox& box, ProseRow& row, const EditorContext& context);
void HelpWriting(QLineEdit& box, ProseRow& row, const EditorContext& context, ProseParts parts = {});

/// For ProseRow: Ctrl+F and Ctrl+Shift+V in the box work its tools.
void ConnectTools(const ProseBox& box, ProseRow& row);

} // namespace zem
