#pragma once

#include "forms/EditorContext.h"
#include "forms/ScriptPairList.h"
#include "model/GameModel.h"
#include "pieces/CopyPiece.h"

#include <QDialog>

#include <memory>
#include <string_view>
#include <vector>

namespace Ui {
class frmPlayerCommandEditor;
}

namespace zem {

/// Edits the player commands of a room or of the game in a working list.
class frmPlayerCommandEditor : public QDialog {
    Q_OBJECT

public:
    /// @param commands  patterns and actions
    frmPlayerCommandEditor(const EditorContext& context, const std::vector<ScriptPair>& commands,
                           QWidget* parent = nullptr);
    ~frmPlayerCommandEditor() override;

    /// The edited list; for the caller when the window was closed with OK.
    const std::vector<ScriptPair>& Commands() const { return commands_->Pairs(); }

private:
    void butAdd_Click();
    void butEdit_Click();
    PieceText Copy() const;
    void Paste(std::string_view text);

    std::unique_ptr<Ui::frmPlayerCommandEditor> ui_;
    EditorContext context_;
    std::unique_ptr<ScriptPairList> commands_;
};

/// Edits patterns and actions that another form holds.
void EditPlayerCommands(const EditorContext& context, std::vector<ScriptPair>& commands, QWidget* parent);

} // namespace zem
