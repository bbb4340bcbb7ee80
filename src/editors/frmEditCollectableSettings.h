#pragma once

#include "forms/EditorContext.h"
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
    frmEditCollectableSettings(const EditorContext& context, const std::string& definition,
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
    EditorContext context_;
};

} // namespace zem
