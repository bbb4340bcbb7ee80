#pragma once

#include <QStringView>
#include <QTextOption>

namespace zem {

/// Whether the text has a word of thousands of letters. At every line of such a word Qt looks for a place to
/// break through the rest of it: a million letters would take minutes.
bool HasEndlessWord(QStringView text);

/// Breaks lines in the middle of words from now on if the text that the box is about to show has an endless
/// one, and between words otherwise.
/// @param box  a QTextEdit or a QPlainTextEdit
template <class Box>
void ChooseWrapping(Box& box, QStringView text) {
    box.setWordWrapMode(HasEndlessWord(text) ? QTextOption::WrapAnywhere
                                             : QTextOption::WrapAtWordBoundaryOrAnywhere);
}

} // namespace zem
