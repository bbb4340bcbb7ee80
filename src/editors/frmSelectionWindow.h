#pragma once

#include "forms/EditorContext.h"
#include "forms/ScriptPairList.h"
#include "model/GameModel.h"

#include <QDialog>

#include <memory>

namespace Ui {
class frmSelectionWindow;
}

namespace zem {

/// Edits a copy of one menu: its prompt and its choices.
class frmSelectionWindow : public QDialog {
    Q_OBJECT

public:
    frmSelectionWindow(const EditorContext& context, const SelectionMenu& menu, QWidget* parent = nullptr);
    ~frmSelectionWindow() override;

    /// The edited menu; for the caller when the window was closed with OK.
    SelectionMenu Menu() const;

private:
    void butAdd_Click();
    void butEdit_Click();
    void butRename_Click();

    std::unique_ptr<Ui::frmSelectionWindow> ui_;
    EditorContext context_;
    SelectionMenu menu_;
    std::unique_ptr<ScriptPairList> choices_;
};

} // namespace zem
