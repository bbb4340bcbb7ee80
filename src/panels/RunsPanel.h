#pragma once

#include "play/JudgeRuns.h"

#include <QDockWidget>

#include <functional>

class QAction;
class QKeySequence;
class QLabel;
class QListWidget;
class QSplitter;
class QTabWidget;
class QTextBrowser;
class QToolBar;

namespace zem {

class Dialogs;
class RunTreeView;
class RunWatch;
class WalkView;
struct Place;

/// The recorded runs of the game with their state, what is told otherwise in each, and a walker that looks
/// for more.
class RunsPanel : public QDockWidget {
    Q_OBJECT

public:
    /// All arguments but `parent` outlive the panel.
    /// @param play  plays the first lines of a run
    /// @param open  opens the editor of a place
    RunsPanel(RunWatch& watch, Dialogs& dialogs,
              std::function<void(const play::RecordedRun&, std::size_t steps)> play,
              std::function<void(const Place&)> open, QWidget* parent = nullptr);

    /// Selects the run of this name.
    void Select(const std::string& name);

    /// Whether something is still to be shown.
    bool IsBusy() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    QWidget* MakeRuns();
    QAction* AddButton(QToolBar& buttons, const char* name, const QString& caption, const QKeySequence& key,
                       void (RunsPanel::*handler)());
    void ShowRuns();
    void ShowSummary();
    void ShowLines();
    void ShowStory();
    void EnableButtons();
    void Continue();
    void PlayToLine();
    void Approve();
    void ApproveAll();
    void Cut();
    void Rename();
    void Remove();
    void TakeBack();

    RunWatch& watch_;
    Dialogs& dialogs_;
    std::function<void(const play::RecordedRun&, std::size_t)> play_;
    QLabel* lblRuns_;
    RunTreeView* lstRuns_;
    QListWidget* lstRunLines_;
    QTextBrowser* txtRunStory_;
    QSplitter* parts_;
    QTabWidget* tabs_;
    WalkView* walk_;
    QAction* continue_ = nullptr;
    QAction* playToLine_ = nullptr;
    QAction* approve_ = nullptr;
    QAction* approveAll_ = nullptr;
    QAction* cut_ = nullptr;
    QAction* rename_ = nullptr;
    QAction* remove_ = nullptr;
    QAction* takeBack_ = nullptr;
};

} // namespace zem
