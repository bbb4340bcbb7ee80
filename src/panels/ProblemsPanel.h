#pragma once

#include "problems/Problem.h"
#include "qt/LatestWork.h"

#include <QDockWidget>
#include <QIcon>

#include <functional>
#include <optional>
#include <vector>

class QCheckBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace zem {

class Dialogs;
class GameSession;
class ProblemWatch;
class ResultList;
struct Place;

/// The shape of a level, so that it is not told by colour alone: a cross in a disc, an exclamation mark in a
/// triangle, an "i" in a ring.
QIcon IconOf(problems::Level level, const QPalette& palette);

/// What is wrong with the game, as a list that follows every change: where, what a player would meet, and for
/// the selected problem the ways to put it right, each one step of the history.
class ProblemsPanel : public QDockWidget {
    Q_OBJECT

public:
    /// All arguments outlive the panel.
    /// @param open  opens the editor of a place and goes to its control
    ProblemsPanel(GameSession& session, ProblemWatch& watch, Dialogs& dialogs,
                  std::function<void(const Place&)> open, QWidget* parent = nullptr);

    /// Selects the next problem, or the one before, after the last the first.
    void GoToNext(bool backwards);

    /// Where the selected problem is.
    std::optional<Place> SelectedPlace() const;

    /// Does the first of the ways to put the selected problem right, if there is one.
    void FixSelected();

    /// Whether something is still to be shown.
    bool IsBusy() const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    QWidget* MakeControls();
    void ShowFound();
    void ShowSelected();
    void ShowOffers(std::vector<problems::Fix> offers);
    void Fix(const problems::Fix& fix);
    void FixAll();
    void Silence();
    void OpenSelected();
    const problems::Problem* Selected() const;

    GameSession& session_;
    ProblemWatch& watch_;
    Dialogs& dialogs_;
    std::function<void(const Place&)> open_;
    QLabel* lblCounts_;
    QCheckBox* chkHints_;
    QLineEdit* txtFilter_;
    QPushButton* butFixAll_;
    ResultList* lstProblems_;
    QLabel* lblProblem_;
    QWidget* offers_;
    QHBoxLayout* offersLayout_;
    QPushButton* butSilence_;
    std::vector<std::size_t> shown_;    // the problem of each row
    std::vector<problems::Fix> fixes_;  // of the selected problem, that make no new error
    std::vector<QPushButton*> buttons_; // of these
    LatestWork offering_;
    LatestWork fixingAll_;
};

} // namespace zem
