#pragma once

#include "play/Session.h"
#include "play/Transcript.h"

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QTimer>

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace zem {

class InputLine;
class StoryPane;
class StorySound;

/// Joins a session with the page that shows it and the line that is typed into: it has the clock, waits where
/// the game waits, and shows pictures and plays sounds from the folder of the game.
class PlayControl : public QObject {
    Q_OBJECT

public:
    /// Both controls outlive this object.
    PlayControl(StoryPane& story, InputLine& input, QObject* parent = nullptr);
    ~PlayControl() override;

    /// Plays this session from its beginning.
    /// @param folder  of pictures and sounds; empty for none
    void Start(std::unique_ptr<play::Session> session, const QString& folder,
               const std::function<play::Outcome(play::Session&)>& begin = &PlayControl::BeginGame);

    /// Null before Start.
    play::Session* Session() const { return session_.get(); }

    /// Ends play: there is no session any more, and the page is empty.
    void Stop();

    /// Types a line at the prompt, as if the player had.
    void Type(const QString& line);
    void Undo();
    /// Plays the turn again that was taken back last. What it waits for by itself is not waited for.
    void Redo();
    /// Gives an open question up, and the turn that asked it.
    void CloseQuestion();
    void Restart();

    /// Shows what a call of the session has given.
    void Show(play::Outcome outcome);

    /// Plays a line of a recorded run, without its pauses. False, and nothing is played, where it is not
    /// asked for.
    bool Play(const play::InputLine& line);

    /// The lines, answers and seconds that led to where the game is; those that were taken back are not among
    /// them. Nothing when it was led there by something else as well, such as a value that was set by hand.
    std::optional<std::vector<play::InputLine>> Entered();

    /// Whether the author's warnings stand beside the story.
    void SetShowsWarnings(bool shows) { showsWarnings_ = shows; }
    /// Everything that was shown so far, as plain text.
    const QString& Transcript() const { return transcript_; }

signals:
    /// A turn has passed, or something else that changes what can be seen of the state.
    void Changed();
    /// The game asks for something that it cannot do itself.
    void Requested(play::Request request);
    /// Something for the author only.
    void Warned(const play::Warning& warning);
    /// What a call has given, before it is shown.
    void Played(const play::Outcome& outcome);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// Something that went into the game.
    struct EnteredLine {
        play::InputLine line;
        std::size_t steps = 0; // that can be taken back when it and its answers are played
    };

    static play::Outcome BeginGame(play::Session& session) { return session.Begin(); }

    void Enter(const QString& line);
    void OfferWords();
    void ShowQueue();
    void ShowPiece(const play::Piece& piece);
    void ShowFile(const play::Piece& piece);
    void AskForInput();
    void Tick();
    bool IsWaiting() const { return pause_.isActive(); }
    void Note(const play::InputLine& line, const play::Outcome& outcome, std::size_t stepsBefore);
    void ForgetTakenBack();

    StoryPane& story_;
    InputLine& input_;
    std::unique_ptr<play::Session> session_;
    std::unique_ptr<StorySound> sound_;
    QString folder_;
    QString transcript_;
    std::deque<play::Piece> queue_;       // to be shown; a pause stops it
    std::vector<play::Warning> warnings_; // to be told behind what is to be shown
    play::Request request_ = play::Request::None;
    std::vector<EnteredLine> entered_;
    std::vector<EnteredLine> takenBack_; // the next one to be played again last
    std::size_t turnBegin_ = 0;          // of the turn that was entered last, in entered_
    std::optional<std::string> saved_;   // by a line of a recorded run
    QTimer pause_;
    QTimer clock_;
    bool showsWarnings_ = false;
};

} // namespace zem
