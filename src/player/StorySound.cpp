#include "player/StorySound.h"

#ifdef ZEM_MULTIMEDIA
#include <QAudioOutput>
#include <QMediaPlayer>
#include <QUrl>
#endif

namespace zem {

#ifdef ZEM_MULTIMEDIA

struct StorySound::Players {
    /// Made when it is needed: starting it takes a while.
    struct Player {
        QAudioOutput output;
        QMediaPlayer player;

        Player() { player.setAudioOutput(&output); }
    };
    std::unique_ptr<Player> music;
    std::unique_ptr<Player> sound;
};

StorySound::StorySound() : players_(std::make_unique<Players>()) {}

bool StorySound::Play(const QString& path, bool isMusic) {
    std::unique_ptr<Players::Player>& one = isMusic ? players_->music : players_->sound;
    if (!one)
        one = std::make_unique<Players::Player>();
    one->player.setLoops(isMusic ? QMediaPlayer::Infinite : 1);
    one->player.setSource(QUrl::fromLocalFile(path));
    one->player.play();
    return true;
}

void StorySound::Silence() {
    for (const auto& one : {players_->music.get(), players_->sound.get()})
        if (one != nullptr)
            one->player.stop();
}

#else

struct StorySound::Players {};

StorySound::StorySound() = default;

bool StorySound::Play(const QString& /*path*/, bool /*isMusic*/) {
    return false;
}

void StorySound::Silence() {}

#endif

StorySound::~StorySound() = default;

} // namespace zem
