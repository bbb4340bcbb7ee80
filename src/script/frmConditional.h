#pragma once

#include "forms/EditorContext.h"
#include "kel/ScriptTree.h"
#include "pieces/CopyPiece.h"

#include <QDialog>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

class QLineEdit;

namespace Ui {
class frmConditional;
}

namespace zem {

class NamePicker;

/// Builds or changes one "if" line: its conditions and its branches, or the raw line itself. A branch of
/// several lines is an internal procedure, which its author sees as lines only. The raw line is what OK
/// takes; the parts show what it says, and say why when it is not understood.
class frmConditional : public QDialog {
    Q_OBJECT

public:
    /// @param line  empty for a new line
    frmConditional(const EditorContext& context, const std::string& line, QWidget* parent = nullptr);
    ~frmConditional() override;

    /// The line that OK has taken.
    const std::string& Line() const { return line_; }

    /// The line as it stands in the boxes; of parts that make no line yet, as far as they go.
    std::string TypedLine() const;

private:
    void FillConditionChooser();
    void ConnectControls();
    int SelectedCondition() const; // from 0; -1 for none
    void ShowParts();
    void ShowCondition();
    void ShowProblem(const QString& problem);
    void PartsChanged();
    void txtRaw_Change();
    void EditCondition();
    void cmbCondition_Change();
    void butAddCondition_Click();
    void butRemoveCondition_Click();
    void MoveCondition(int by);
    PieceText CopyConditions() const;
    void PasteConditions(std::string_view text);
    void EditBranch(std::string& action);
    void EditBranchIf(std::string& action);
    void AddToBranch(std::string& action, const std::string& line);
    QString WhatIs(const std::string& action) const; // "then" or "otherwise"
    void ConnectBlock();
    void ChangePart(const std::function<std::string(GameModel&, const std::string& line)>& change);
    void EditPart(const ScriptPath& path);
    void ShowWhole();
    void ShowBranch(QLineEdit& box, const std::string& action) const;
    void TakeLine(const std::string& line);
    void chkElse_Click();
    void butOK_Click();
    std::optional<std::string> FromChooser() const;
    QString DescribeCondition(std::size_t index) const;
    const CommandDefinition* FindEntry(const std::string& keyword) const;

    std::unique_ptr<Ui::frmConditional> ui_;
    EditorContext context_;
    NamePicker* names_;
    IfLine parts_;
    bool showing_ = false; // the controls are being filled, so their signals say nothing
    QString problem_;      // of the parts; empty when the raw line says the same as they do
    std::string line_;
};

} // namespace zem
