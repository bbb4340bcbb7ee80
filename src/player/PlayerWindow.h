#pragma once

#include "play/Session.h"

#include <QMainWindow>
#include <QString>

#include <functional>
#include <memory>

class QListWidget;
class QListWidgetItem;
class QSettings;

namespace zem {

class Dialogs;
class InputLine;
class PlayControl;
class StoryPane;

/// The window of the game-running program: the story, the line to type into, and beside them what the player
/// carries and where he can go.
class PlayerWindow : public QMainWindow {
    Q_OBJECT

public:
    /// Reads a game file. Throws KelError with the reason for one that does not load.
    using Reader = std::function<std::shared_ptr<const play::World>(const QString& path)>;

    /// Store and dialogs outlive the window.
    PlayerWindow(QSettings& store, Dialogs& dialogs, Reader read);
    ~PlayerWindow() override;

    /// Opens a game and begins it. False when it does not load, which the player has been told.
    bool Open(const QString& path);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void MakeMenus();
    void MakeGameMenu();
    void MakeViewMenu();
    void MakeHelpMenu();
    QListWidget* MakeSidePane(const QString& name, const QString& title);
    void Refresh();
    void Handle(play::Request request);
    void AskForGame();
    void Save();
    void Restore();
    void Restart();
    void SaveTranscript();
    void SetTextSize(int points);
    void SetColours(int look);
    void ShowAbout();
    bool MayLoseGame();
    QString SaveFilter() const;

    QSettings& store_;
    Dialogs& dialogs_;
    Reader read_;
    QString path_;
    StoryPane* story_;
    InputLine* input_;
    PlayControl* control_;
    QListWidget* carried_;
    QListWidget* exits_;
};

} // namespace zem
