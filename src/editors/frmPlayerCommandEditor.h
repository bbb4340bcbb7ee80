#pragma once

#include "forms/ScriptPairList.h"
#include "model/GameModel.h"

#include <QDialog>

#include <memory>
#include <vector>

namespace Ui {
class frmPlayerCommandEditor;
}

namespace zem {

class ScriptEditing;

/// Edits the player commands of a room or of the game in a working list.
class frmPlayerCommandEditor : public QDialog {
    Q_OBJECT

public:
    /// @param commands  patterns and actions
    frmPlayerCommandEditor(ScriptEditing& scripts, const std::vector<ScriptPair>& commands,
                           QWidget* parent = nullptr);
    ~frmPlayerCommandEditor() override;

    /// The edited list; for the caller when the window was closed with OK.
    const std::vector<ScriptPair>& Commands() const { return commands_->Pairs(); }

private:
    void butAdd_Click();
    void butEdit_Click();

    std::unique_ptr<Ui::frmPlayerCommandEditor> ui_;
    ScriptEditing& scripts_;
    std::unique_ptr<ScriptPairList> commands_;
};

} // namespace zem
