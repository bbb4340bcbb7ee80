#pragma once

#include "forms/EditorContext.h"

#include <QDialog>

#include <memory>
#include <string>

namespace Ui {
class frmEditCommand;
}

namespace zem {

class ScriptField;

/// Edits one player command: its pattern, in which a word between two "#" names a string variable, and its
/// action.
class frmEditCommand : public QDialog {
    Q_OBJECT

public:
    frmEditCommand(const EditorContext& context, const std::string& pattern, const std::string& action,
                   QWidget* parent = nullptr);
    ~frmEditCommand() override;

    /// The edited pattern and action; for the caller when the window was closed with OK.
    std::string Pattern() const;
    const std::string& Action() const;

private:
    void butInsertVariable_Click();

    std::unique_ptr<Ui::frmEditCommand> ui_;
    EditorContext context_;
    ScriptField* action_;
};

} // namespace zem
