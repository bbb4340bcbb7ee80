#pragma once

#include "model/Place.h"
#include "play/RecordedRuns.h"
#include "qt/LatestWork.h"
#include "walk/Walker.h"

#include <QTimer>
#include <QWidget>

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class QLabel;
class QProgressBar;
class QPushButton;
class QSpinBox;

namespace zem {

class Dialogs;
class ResultList;
class RunWatch;

/// A walker that plays the game by itself on another thread, and what it has found: each finding can be
/// played, and kept as a run.
class WalkView : public QWidget {
    Q_OBJECT

public:
    /// @param play  plays the first lines of a run
    /// @param open  opens the editor of a place
    WalkView(RunWatch& watch, Dialogs& dialogs,
             std::function<void(const play::RecordedRun&, std::size_t steps)> play,
             std::function<void(const Place&)> open, QWidget* parent = nullptr);
    ~WalkView() override;

    bool IsBusy() const { return work_.IsRunning(); }

signals:
    /// A finding was kept as a run of this name.
    void Kept(const QString& name);

private:
    struct Walked;

    /// Written by the walker's thread, read by the window's.
    struct Progress {
        std::atomic<bool> isStopped = false;
        std::atomic<std::uint64_t> turns = 0;
    };

    static std::shared_ptr<const Walked> Walk(const std::shared_ptr<const play::World>& world,
                                              std::uint64_t turns, const std::function<bool()>& goesOn,
                                              const std::shared_ptr<Progress>& progress);
    void StartOrStop();
    void ShowProgress();
    void ShowWalked();
    void EnableButtons();
    void Choose(int row);
    void PlaySelected();
    void KeepSelected();
    std::optional<play::RecordedRun> SelectedAsRun() const;

    RunWatch& watch_;
    Dialogs& dialogs_;
    std::function<void(const play::RecordedRun&, std::size_t)> play_;
    std::function<void(const Place&)> open_;
    QPushButton* butWalk_;
    QSpinBox* spnTurns_;
    QProgressBar* prgWalk_;
    QLabel* lblWalk_;
    ResultList* lstFindings_;
    QPushButton* butPlay_;
    QPushButton* butKeep_;
    QTimer refresh_; // of the progress
    std::shared_ptr<Progress> progress_;
    std::shared_ptr<const Walked> walked_; // null before the first walk
    LatestWork work_;
};

} // namespace zem
