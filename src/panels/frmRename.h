#pragma once

#include "game/Find.h"
#include "game/Rename.h"
#include "qt/LatestWork.h"

#include <QDialog>

#include <functional>
#include <memory>
#include <optional>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace zem {

class ChangeList;
class Dialogs;
class SearchIndex;

/// Asks for another name, and shows all that would change with it before anything does. What may be a name
/// and what follows from it is told while it is typed.
class frmRename : public QDialog {
    Q_OBJECT

public:
    /// All arguments but `index` outlive the window.
    /// @param own  the one that was selected, of which there may be others of the same name
    frmRename(const GameModel& game, std::shared_ptr<SearchIndex> index, NamedThing named,
              const std::optional<Place>& own, Dialogs& dialogs, QWidget* parent = nullptr);

    /// What the author wants; for the caller when the window was closed with OK.
    RenamePlan Plan() const;

    /// Whether nothing keeps the old name.
    bool RenamesAll() const;

    /// Whether the plan of what is typed is still to come.
    bool IsBusy() const { return work_.IsRunning(); }

private:
    void MakeControls();
    void MakePlan();
    void ShowPlan(RenamePlan plan, int namesakes);
    void EnableRename();

    GameModel game_;
    std::shared_ptr<SearchIndex> index_;
    NamedThing named_;
    std::optional<Place> own_;
    Dialogs& dialogs_;
    QLineEdit* txtNew_;
    QLabel* lblAnswer_;
    QCheckBox* chkOnly_;
    QCheckBox* chkTwin_;
    QCheckBox* chkMerge_;
    ChangeList* lstChanges_;
    QLabel* lblCount_;
    QPushButton* butOK_;
    QPushButton* butCancel_;
    RenamePlan plan_;
    int namesakes_ = 0; // that have the name besides the one that was selected
    LatestWork work_;
};

} // namespace zem
