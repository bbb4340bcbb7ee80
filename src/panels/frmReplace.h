#pragma once

#include "game/Replace.h"
#include "panels/ChangeList.h"
#include "qt/LatestWork.h"

#include <QDialog>

#include <functional>
#include <memory>
#include <string>
#include <vector>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace zem {

class Dialogs;
class FindOptions;
class GameSession;
class SearchIndex;

/// Puts other words in the place of some all over the game: each hit is shown as it is and as it would be,
/// with a tick, and all are changed as one step. What was done stays in sight, with a button that takes it
/// back. Names are left to Rename, which keeps together what belongs together.
class frmReplace : public QDialog {
    Q_OBJECT

public:
    /// Asks for another name of something; the window given is its parent.
    using RenameCommand = std::function<void(const NamedThing& named, QWidget* parent)>;

    /// All arguments but `index` outlive the window.
    /// @param query  what is looked for at first
    frmReplace(GameSession& session, std::shared_ptr<SearchIndex> index, Dialogs& dialogs,
               const FindQuery& query, RenameCommand rename, QWidget* parent = nullptr);

    /// Whether something is still to be shown or done.
    bool IsBusy() const { return work_.IsRunning(); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// A plan with what stands in its list.
    struct Shown {
        ReplacePlan plan;
        std::vector<ChangeRow> rows;
    };
    struct Done {
        GameModel game;
        ReplaceOutcome outcome;
        QString problem; // why nothing was done; empty when it was
    };

    static Shown PlanOf(const GameIndex& index, const FindQuery& query, const std::string& words);

    void MakeControls();
    void LayOutControls();
    void MakePlan();
    void ShowPlan(Shown shown);
    void TellPlan();
    void EnableButtons();
    void Replace();
    void ShowDone(const Done& done);
    void TakeBack();
    void Rename();
    QString StepName() const;

    GameSession& session_;
    std::shared_ptr<SearchIndex> index_;
    Dialogs& dialogs_;
    RenameCommand rename_;
    GameModel game_; // that the plan is of
    QLineEdit* txtFind_;
    QLineEdit* txtReplace_;
    FindOptions* options_;
    QLabel* lblAnswer_;
    ChangeList* lstChanges_;
    QCheckBox* chkAll_;
    QPushButton* butRename_;
    QPushButton* butUndo_;
    QPushButton* butOK_;
    QPushButton* butCancel_;
    ReplacePlan plan_;
    std::vector<ChangeRow> rows_;
    std::size_t doneStep_ = 0; // of the history, that can be taken back here; 0 while none is shown
    bool isChanging_ = false;
    LatestWork work_;
};

} // namespace zem
