#pragma once

#include "forms/EditorContext.h"
#include "model/Place.h"
#include "play/RecordedRuns.h"
#include "play/Session.h"
#include "play/StoryPlaces.h"

#include <QDockWidget>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class QLabel;
class QSplitter;
class QTabWidget;
class QToolBar;

namespace zem {

class CompiledGame;
class InputLine;
class PlayControl;
class StoryPane;
class TraceView;
class TurnsView;
class WatchView;

/// Plays the open game as it is now. A change of the game is taken over into the running game; beside the
/// story stand the turns, the state, and what ran in the last turn.
class PlayPanel : public QDockWidget {
    Q_OBJECT

public:
    /// All arguments outlive the panel.
    PlayPanel(CompiledGame& game, const EditorContext& context, QWidget* parent = nullptr);
    ~PlayPanel() override;

    /// Begins the game unless it is running, and goes to the line that is typed into.
    void Play();

    /// Begins in a room.
    void PlayFrom(const play::StartingPoint& point);

    /// Asks for a room, and for what there is to be when play begins there.
    /// @param room  what is offered first
    void AskWhereToPlay(const QString& room);

    /// Plays the first lines of a recorded run, and goes on from there.
    void PlayRun(const play::RecordedRun& run, std::size_t steps);

    /// What was played, as a run that tells what the game tells now. Throws CommandError when nothing was
    /// played, or more than lines led to where the game is.
    play::RunResult AsRun();

    /// The name of the room in which the player is; empty for none.
    std::string RoomOfPlayer() const;

signals:
    /// A line was chosen that is to be edited.
    void PlaceChosen(const Place& place);

    /// A turn was played or taken back, or the game has changed or ended.
    void Moved();

    /// What was played is to be kept as a recorded run.
    void KeepAsked();

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void MakeStory();
    QWidget* MakeButtons();
    void AddButton(QToolBar& buttons, const char* name, const QString& caption, const QKeySequence& key,
                   void (PlayPanel::*handler)());
    void Begin(const std::optional<play::StartingPoint>& point, std::uint64_t seed);
    void Keep() { emit KeepAsked(); }
    void Restart();
    void Undo();
    void LookAgain();
    void AskForRoom();

    void NotePlayed(const play::Outcome& outcome);
    void Refresh();
    void RefreshTab();
    void ShowWarning(const play::Warning& warning);
    void Refuse(play::Request request);
    void TakeOverChange();
    void Stop();
    void GoToTurn(std::size_t turn);
    void PlayAgain(std::size_t turn);
    void SetByHand(play::Kind kind, const std::string& name, const std::string& value);
    void ShowSource(const play::Source& source);
    void OpenSource(const play::Source& source);
    std::size_t LastTurnIn(const std::string& room) const;

    CompiledGame& game_;
    EditorContext context_;
    StoryPane* story_;
    InputLine* input_;
    PlayControl* control_;
    QSplitter* splitter_;
    QTabWidget* tabs_;
    WatchView* watch_;
    TraceView* trace_;
    TurnsView* turns_;
    QLabel* status_;
    QWidget* where_; // tells where something was printed
    QLabel* whereText_;
    play::Source shownSource_;
    std::shared_ptr<const play::World> world_; // of the running game; keeps its texts alive
    std::shared_ptr<play::StoryPlaces> places_;
    std::vector<play::TraceEntry> traced_;
    std::uint64_t seed_ = 1;
    bool isFromBeginning_ = true;
    std::vector<std::string> rooms_; // that the player was in after each turn
};

} // namespace zem
