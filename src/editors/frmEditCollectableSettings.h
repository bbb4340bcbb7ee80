#pragma once

#include "editors/EditorShell.h"
#include "forms/Dialogs.h"
#include "model/CollectableDefinition.h"

#include <QDialog>

#include <memory>
#include <string>

namespace Ui {
class frmEditCollectableSettings;
}

namespace zem {

/// Edits one collectable through named fields.
class frmEditCollectableSettings : public QDialog {
    Q_OBJECT

public:
    frmEditCollectableSettings(EditorShell& shell, Dialogs& dialogs, const std::string& definition,
                               QWidget* parent = nullptr);
    ~frmEditCollectableSettings() override;

    /// The new definition line; for the caller when the window was closed with OK.
    std::string Definition() const;

private:
    void Fill(const CollectableDefinition& definition);
    void UpdateControls();
    CollectableDefinition Fields() const;
    void butOK_Click();

    std::unique_ptr<Ui::frmEditCollectableSettings> ui_;
    EditorShell& shell_;
    Dialogs& dialogs_;
};

} // namespace zem
