#pragma once

#include "forms/Dialogs.h"

#include <QLineEdit>

#include <string>

class QComboBox;

/// A text that stands between "<" and ">" in a game file ends at its first ">", whoever typed it. The author
/// is told where it is typed, and the text stays as it is.
namespace zem {

class PlainTextBox;

/// Whether something would be lost of the text.
bool EndsEarly(const QString& text);

/// From now on a remark stands beside the box while it has the focus and its text would end early.
void RemarkEarlyEnd(QLineEdit& box);
void RemarkEarlyEnd(QComboBox& box);
void RemarkEarlyEnd(PlainTextBox& box);

/// EditStorableText for a text that stands between "<" and ">" in a game file.
void EditParameter(QLineEdit& box, const std::string& text, Dialogs& dialogs);

} // namespace zem
