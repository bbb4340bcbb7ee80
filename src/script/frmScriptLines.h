#pragma once

#include "forms/EditorContext.h"
#include "kel/ScriptTree.h"

#include <QDialog>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

class QListWidget;

namespace Ui {
class frmScriptLines;
}

namespace zem {

/// Edits a script as a list of lines. Two lists hold the same lines, raw and in plain English; one of them is
/// shown.
class frmScriptLines : public QDialog {
    Q_OBJECT

public:
    /// @param script  the value of a script field; a call of an internal procedure opens that procedure
    frmScriptLines(const EditorContext& context, const std::string& script, QWidget* parent = nullptr);
    ~frmScriptLines() override;

    /// The value that OK has built.
    const std::string& Value() const { return value_; }

    /// What OK makes of the lines and, where they need an internal procedure, of the game.
    std::string FoldLines(GameModel& game) const;

private:
    void OpenScript(const std::string& script);
    void ConnectButtons();
    void ConnectLists();
    QListWidget& List() const;
    int SelectedLine() const; // from 0; -1 for none
    void ShowLine(int index);
    void SelectLine(int index);
    void InsertLine(int index, const std::string& line);
    void AddLine(const std::string& line);
    void butAdd_Click();
    void butAddConditional_Click();
    void butEdit_Click();
    void butRemove_Click();
    void MoveLine(int by);
    std::vector<std::string> SelectedTexts() const;
    void Paste(std::string_view text);
    void MoveLines(const std::vector<int>& rows, int to);
    void butOK_Click();
    void ConnectWhole();
    void ShowWhole();
    void MarkReached();
    void LineTyped(const std::string& line);
    std::string ScriptText() const;
    bool SelectLineOf(const ScriptPath& path);
    void EditPart(const ScriptPath& path);
    void ChangePart(
        ScriptPath path,
        const std::function<std::string(GameModel&, const std::string& line, ScriptPath& path)>& change);

    std::unique_ptr<Ui::frmScriptLines> ui_;
    EditorContext context_;
    std::vector<std::string> lines_;
    std::string newLine_; // while its editor is open
    std::string script_;  // the value that was opened
    std::string value_;
};

} // namespace zem
