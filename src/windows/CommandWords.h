#pragma once

#include <QString>

namespace zem {

/// What an author may call a command who does not know its name.
struct CommandWords {
    QString words;  // phrases with ";" between them
    QString whyNot; // why it cannot be used while it is disabled
};

/// The words for the command with this object name; no words for one that is not known.
CommandWords WordsForCommand(const QString& name);

/// The words for an option, by the object name of its control in the options.
QString WordsForOption(const QString& control);

/// The words for a page of the manual, by its place.
QString WordsForPage(const QString& place);

} // namespace zem
