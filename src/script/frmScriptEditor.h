#pragma once

#include "forms/EditorContext.h"

#include <QDialog>

#include <memory>
#include <string>

class QComboBox;
class QTreeWidgetItem;

namespace Ui {
class frmScriptEditor;
}

namespace zem {

class NamePicker;
struct CommandDefinition;

/// Builds or changes one script line: a command of the catalogue and its parameter.
class frmScriptEditor : public QDialog {
    Q_OBJECT

public:
    /// @param line  empty for a new line
    frmScriptEditor(const EditorContext& context, const std::string& line, QWidget* parent = nullptr);
    ~frmScriptEditor() override;

    /// The line that OK has built.
    const std::string& Line() const { return line_; }

    /// The line as it stands in the boxes, also one that OK would refuse.
    std::string TypedLine() const;

private:
    void FillChoosers(const std::string& command);
    void OpenLine(const std::string& line);
    void ChooseCommand(int index);
    void ShowCommand(const CommandDefinition& entry);

    /// Typing a command in full chooses it; any other text has no syntax to show.
    bool ChooseTyped(const QComboBox& chooser, Qt::MatchFlags match);
    void cmbCommands_Change();
    void cmbFriendly_Change();
    void chkNoParameter_Click();
    void butClear_Click();
    void butOK_Click();
    QComboBox* VisibleChooser() const;
    void ShowOther(bool isOther);
    void FillGroups();
    void SelectInGroups(int index);
    void treGroups_Change(const QTreeWidgetItem* item);
    void OfferToCreate();

    std::unique_ptr<Ui::frmScriptEditor> ui_;
    EditorContext context_;
    NamePicker* names_;
    std::string line_;
};

} // namespace zem
