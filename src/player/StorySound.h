#pragma once

#include <QString>

#include <memory>

namespace zem {

/// Plays the sounds and the music of a game, where the system can.
class StorySound {
public:
    StorySound();
    ~StorySound();

    /// False when it cannot be played here.
    /// @param isMusic  goes on until Silence, in place of the music before
    bool Play(const QString& path, bool isMusic);

    void Silence();

private:
    struct Players;
    std::unique_ptr<Players> players_;
};

} // namespace zem
