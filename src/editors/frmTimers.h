#pragma once

#include "forms/EditorContext.h"
#include "game/Timers.h"
#include "kel/ScriptTree.h"
#include "script/ScriptDraft.h"

#include <QDialog>

#include <memory>
#include <vector>

namespace Ui {
class frmTimers;
}

namespace zem {

/// Edits the timers of the game, which stand in its file as blocks that the format does not know. A timer
/// whose block holds more than a name, seconds and an action is shown and stays as it is.
class frmTimers : public QDialog {
    Q_OBJECT

public:
    explicit frmTimers(const EditorContext& context, QWidget* parent = nullptr);
    ~frmTimers() override;

private:
    void Fill();
    void ConnectControls();
    GameTimer* Selected();
    void ShowTimer();
    void ShowAction();
    void butAdd_Click();
    void butRemove_Click();
    void butAction_Click();
    void EditPart(const ScriptPath& path);
    bool Refuse(int row, const QString& problem, QWidget& control);
    bool IsComplete();
    void Write(GameModel& game) const;
    void butOK_Click();

    std::unique_ptr<Ui::frmTimers> ui_;
    EditorContext context_;
    ScriptDraft draft_;
    std::vector<GameTimer> timers_; // by row
    bool showing_ = false;          // the controls are being filled, so their signals say nothing
    std::unique_ptr<GameEdit> edit_;
};

} // namespace zem
