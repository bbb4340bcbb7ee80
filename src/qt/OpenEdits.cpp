#include "qt/OpenEdits.h"

#include "qt/ChangeDoor.h"

#include <algorithm>
#include <exception>

namespace zem {

GameModel OpenEdits::Base() const {
    return base_ ? base_() : door_.Game();
}

GameModel OpenEdits::Preview() const {
    GameModel game = Base();
    std::vector<OpenEdit*> confirmed;
    for (auto edit = edits_.rbegin(); edit != edits_.rend(); ++edit) {
        if (!(*edit)->HasChanges())
            continue;
        confirmed.push_back(*edit);
        GameModel before = game;
        try {
            (*edit)->Confirm(game);
        } catch (const std::exception&) {
            game = std::move(before);
        }
    }
    std::for_each(confirmed.rbegin(), confirmed.rend(), [](OpenEdit* edit) { edit->TakeBack(); });
    return game;
}

OpenEdit::OpenEdit(OpenEdits& edits) : edits_(edits) {
    edits_.edits_.push_back(this);
    emit edits_.Opened();
}

OpenEdit::~OpenEdit() {
    std::vector<OpenEdit*>& edits = edits_.edits_;
    edits.erase(std::remove(edits.begin(), edits.end(), this), edits.end());
}

GameEdit::GameEdit(OpenEdits& edits, std::function<void(GameModel&)> write)
    : OpenEdit(edits),
      write_(std::move(write)),
      untouched_(Game()) {
    write_(untouched_);
}

bool GameEdit::HasChanges() const {
    GameModel game = Game();
    try {
        write_(game);
    } catch (const std::exception&) {
        return true;
    }
    return !SameGame(game, untouched_);
}

} // namespace zem
