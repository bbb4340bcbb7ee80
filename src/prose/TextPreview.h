#pragma once

#include "player/StoryPane.h"

#include <string>
#include <string_view>

namespace zem {

/// A text as players see it: its format codes followed, its variables by name. Where the game would wait, it
/// goes on.
class TextPreview : public StoryPane {
    Q_OBJECT

public:
    explicit TextPreview(QWidget* parent = nullptr);

    void ShowText(std::string_view text);

private:
    std::string shown_;
};

} // namespace zem
