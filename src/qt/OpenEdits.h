#pragma once

#include "model/GameModel.h"

#include <QObject>

#include <exception>
#include <functional>
#include <utility>
#include <vector>

namespace zem {

class ChangeDoor;
class OpenEdit;

/// The editors that are open, each with what its OK would make of the game: so a recovery copy can hold what
/// the author has typed and not confirmed yet.
class OpenEdits : public QObject {
    Q_OBJECT

public:
    /// @param door  outlives this object
    explicit OpenEdits(const ChangeDoor& door) : door_(door) {}

    /// Says where previews begin: at the game with what open editors hold back of it.
    void BeginWith(std::function<GameModel()> base) { base_ = std::move(base); }

    bool IsEmpty() const { return edits_.empty(); }

    /// The game as it would be if the author confirmed every open editor, the innermost first. An editor in
    /// which nothing was changed, or whose OK would refuse what is typed, counts as cancelled.
    GameModel Preview() const;

signals:
    /// An editor was opened.
    void Opened();

private:
    friend class OpenEdit;

    GameModel Base() const;

    const ChangeDoor& door_;
    std::function<GameModel()> base_;
    std::vector<OpenEdit*> edits_; // the outermost first
};

/// What is typed into an open editor. It is made when the editor shows what it was opened with, and lives as
/// long as the editor; editors close in the order opposite to that in which they were opened.
class OpenEdit {
public:
    /// @param edits  outlives this object
    explicit OpenEdit(OpenEdits& edits);
    virtual ~OpenEdit();
    OpenEdit(const OpenEdit&) = delete;
    OpenEdit& operator=(const OpenEdit&) = delete;

    /// Whether OK would do something else now than when the editor was opened. What OK tidies up by itself is
    /// no change; what it would refuse is one.
    virtual bool HasChanges() const = 0;

protected:
    /// The game, with what open editors hold back of it, as it is now.
    GameModel Game() const { return edits_.Base(); }

private:
    friend class OpenEdits;

    /// Does to the game what OK would do. Throws where OK would refuse; the game may be half changed then.
    virtual void Confirm(GameModel& game) = 0;

    /// Makes everything but the game what it was before Confirm, whether or not that threw.
    virtual void TakeBack() {}

    OpenEdits& edits_;
};

/// An editor whose OK changes the game.
class GameEdit : public OpenEdit {
public:
    /// @param write  does to a game what OK does
    GameEdit(OpenEdits& edits, std::function<void(GameModel&)> write);

    bool HasChanges() const override;

    /// Takes note of a change that was stored although the editor may still be cancelled: discarding does not
    /// take it back.
    void Settle(const std::function<void(GameModel&)>& change) { change(untouched_); }

private:
    void Confirm(GameModel& game) override { write_(game); }

    std::function<void(GameModel&)> write_;
    GameModel untouched_; // what OK would have made when the editor was opened
};

/// An editor that another one has opened: its OK changes a value that the other one holds.
template <class Value>
class ValueEdit : public OpenEdit {
public:
    /// @param value  of the outer editor; outlives this object
    /// @param read  what OK gives back for the value; may change the game besides
    ValueEdit(OpenEdits& edits, Value& value, std::function<Value(GameModel&)> read)
        : OpenEdit(edits),
          value_(value),
          kept_(value),
          read_(std::move(read)),
          untouchedGame_(Game()) {
        untouched_ = read_(untouchedGame_);
    }

    bool HasChanges() const override {
        GameModel game = Game();
        try {
            return !(read_(game) == untouched_ && SameGame(game, untouchedGame_));
        } catch (const std::exception&) {
            return true;
        }
    }

private:
    void Confirm(GameModel& game) override {
        kept_ = value_;
        value_ = read_(game);
    }
    void TakeBack() override { value_ = kept_; }

    Value& value_;
    Value kept_; // while the game is previewed
    std::function<Value(GameModel&)> read_;
    Value untouched_; // what OK would have given back when the editor was opened, and made of the game
    GameModel untouchedGame_;
};

} // namespace zem
