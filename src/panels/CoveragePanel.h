#pragma once

#include "model/Place.h"
#include "play/JudgeRuns.h"
#include "play/ReachedParts.h"
#include "qt/LatestWork.h"

#include <QDockWidget>

#include <functional>
#include <memory>
#include <vector>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace zem {

class Dialogs;
class ResultList;
class RunWatch;

/// What of the game the recorded runs and the walker have reached, and what never.
class CoveragePanel : public QDockWidget {
    Q_OBJECT

public:
    using PlayWhatReaches =
        std::function<void(const std::shared_ptr<const play::JudgedRuns>&, const play::Hit&)>;

    /// All arguments but `parent` outlive the panel.
    /// @param open  opens the editor of a place
    /// @param play  plays the run that gets to a part of the game with the fewest lines, up to there; the hit
    /// is of the world of these runs
    CoveragePanel(RunWatch& watch, Dialogs& dialogs, std::function<void(const Place&)> open,
                  PlayWhatReaches play, QWidget* parent = nullptr);

    /// Whether something is still to be shown.
    bool IsBusy() const;

private:
    struct Listed;

    QWidget* MakeControls();
    void List();
    void ShowListed();
    void ShowRows();
    void EnableButtons();
    const play::ReachedPart* Selected() const;

    RunWatch& watch_;
    Dialogs& dialogs_;
    std::function<void(const Place&)> open_;
    PlayWhatReaches play_;
    QLabel* lblCoverage_;
    QCheckBox* chkReached_;
    QLineEdit* txtFilter_;
    ResultList* lstCoverage_;
    QPushButton* butWhichRun_;
    std::shared_ptr<const Listed> listed_; // null until something was listed
    std::vector<std::size_t> shown_;       // the part of each row
    LatestWork work_;
};

} // namespace zem
