#pragma once

#include "prose/ProseBox.h"

#include <QKeySequence>

#include <vector>

class QMenu;

/// How what is selected in a prose box gets another look: by format codes around it.
namespace zem {

/// A pair of format codes: the one begins a look, the other ends it.
struct TextLook {
    const char* caption;
    const char* begin;
    const char* end;
    const char* key = ""; // that does it
};

/// Bold, italic and underlined; the colours; the sizes.
const std::vector<TextLook>& PlainLooks();
const std::vector<TextLook>& ColourLooks();
const std::vector<TextLook>& SizeLooks();

/// Puts the codes around the selection, or takes them away where they stand around it; without a selection
/// puts them at the caret, which is between them then.
void ApplyLook(const ProseBox& box, const TextLook& look);

/// Adds the looks to a menu, colours and sizes as menus of their own.
void AddLooks(QMenu& menu, const ProseBox& box);

} // namespace zem
