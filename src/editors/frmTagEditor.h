#pragma once

#include "editors/EditorShell.h"
#include "forms/Dialogs.h"

#include <QDialog>

#include <functional>
#include <memory>
#include <string>

namespace Ui {
class frmTagEditor;
}

namespace zem {

/// Edits Kel lines that no form knows, as raw text. Nothing in them is checked.
class frmTagEditor : public QDialog {
    Q_OBJECT

public:
    /// @param store  gets the text on OK
    frmTagEditor(EditorShell& shell, Dialogs& dialogs, const std::string& tags,
                 std::function<void(const std::string&)> store, QWidget* parent = nullptr);
    ~frmTagEditor() override;

private:
    void butOK_Click();

    std::unique_ptr<Ui::frmTagEditor> ui_;
    EditorShell& shell_;
    std::function<void(const std::string&)> store_;
};

/// Edits the tags that another form holds.
void EditTags(EditorShell& shell, Dialogs& dialogs, std::string& tags, QWidget* parent);

} // namespace zem
