#pragma once

#include "figures/Figures.h"
#include "qt/LatestWork.h"

#include <QDockWidget>

#include <functional>
#include <memory>

class QSpinBox;
class QTreeWidget;

namespace zem {

class GameSession;
class ResultList;

/// The figures of the game, rooms, things, words and reading time, and what the selected one counts.
class FiguresPanel : public QDockWidget {
    Q_OBJECT

public:
    /// All arguments but `parent` outlive the panel.
    /// @param open  opens the editor of a place
    FiguresPanel(GameSession& session, const CommandLookup& commands, std::function<void(const Place&)> open,
                 QWidget* parent = nullptr);

    /// Whether something is still to be shown.
    bool IsBusy() const { return counting_.IsRunning() || listing_.IsRunning(); }

private:
    struct Counted;

    QWidget* MakeControls();
    void Count();
    void ShowFigures();
    void ShowEntries();
    const figures::Figure* SelectedFigure() const;

    GameSession& session_;
    const CommandLookup& commands_;
    QTreeWidget* lstFigures_;
    ResultList* lstCounted_;
    QSpinBox* spnWordsPerMinute_;
    std::shared_ptr<const Counted> counted_; // null until something was counted
    LatestWork counting_;
    LatestWork listing_;
};

} // namespace zem
