#pragma once

#include "merge/LineMerge.h"
#include "model/Place.h"

#include <QDockWidget>

#include <array>
#include <functional>

class QLabel;
class QPushButton;
class QTextBrowser;

namespace zem {

class Dialogs;
class GameMerge;
class ResultList;

/// The conflicts of a merge: each with what both versions began as, mine and theirs, and which of them is
/// taken.
class MergePanel : public QDockWidget {
    Q_OBJECT

public:
    /// All arguments but `parent` outlive the panel.
    /// @param open  opens the editor of a place
    MergePanel(GameMerge& merge, Dialogs& dialogs, std::function<void(const Place&)> open,
               QWidget* parent = nullptr);

private:
    QWidget* MakeControls();
    QWidget* MakeSides(QWidget* parent);
    void Refresh();
    void ShowSelected(int row);
    void Decide(merge::Take take);
    void Finish();

    GameMerge& merge_;
    Dialogs& dialogs_;
    QLabel* lblConflicts_;
    ResultList* lstConflicts_;
    std::array<QTextBrowser*, 3> sides_{}; // by merge::Version
    std::array<QPushButton*, 3> takes_{};  // by merge::Take
    QPushButton* butFinish_;
};

} // namespace zem
