#pragma once

#include "game/Find.h"
#include "qt/LatestWork.h"

#include <QDockWidget>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class QLabel;
class QLineEdit;
class QPushButton;

namespace zem {

class Dialogs;
class FindOptions;
class GameSession;
class ResultList;
class SearchIndex;

/// Finds words anywhere in the game while they are typed, and goes on finding them while the game changes.
class FindPanel : public QDockWidget {
    Q_OBJECT

public:
    /// All arguments but `index` outlive the panel.
    /// @param open     opens the editor of a place and goes to its control
    /// @param replace  asks what to put in the place of what is found
    FindPanel(GameSession& session, std::shared_ptr<SearchIndex> index, Dialogs& dialogs,
              std::function<void(const Place&)> open, std::function<void()> replace,
              QWidget* parent = nullptr);

    /// Lets the author type what to find.
    void Begin();

    /// Selects the next hit, or the one before, after the last the first.
    void GoToNext(bool backwards);

    /// The selected hit.
    std::optional<Place> SelectedPlace() const;

    /// What is looked for now.
    FindQuery Query() const;

    /// Whether something is still to be shown.
    bool IsBusy() const { return work_.IsRunning(); }

private:
    QWidget* MakeControls();
    void Find();
    void ShowHits();
    void OpenHit(int row);

    GameSession& session_;
    std::shared_ptr<SearchIndex> index_;
    Dialogs& dialogs_;
    std::function<void(const Place&)> open_;
    QLineEdit* txtFind_;
    FindOptions* options_;
    QPushButton* butReplace_;
    QLabel* lblCount_;
    ResultList* lstHits_;
    std::vector<Place> places_; // of each row
    LatestWork work_;
};

} // namespace zem
