#pragma once

#include <QString>

#include <stdexcept>

namespace zem {

/// The title of messages that have none of their own.
inline constexpr const char* DefaultTitle = "ZEM";

/// Why a command of the author ended early, ready to be shown.
class CommandError : public std::runtime_error {
public:
    CommandError(const QString& text, const QString& title)
        : std::runtime_error(text.toStdString()),
          text_(text),
          title_(title) {}

    const QString& Text() const { return text_; }
    const QString& Title() const { return title_; }

private:
    QString text_;
    QString title_;
};

} // namespace zem
