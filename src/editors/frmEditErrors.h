#pragma once

#include "forms/EditorContext.h"
#include "model/GameModel.h"

#include <QDialog>

#include <memory>

namespace Ui {
class frmEditErrors;
}

namespace zem {

/// Edits the game's own error messages in a working copy of the error table.
class frmEditErrors : public QDialog {
    Q_OBJECT

public:
    /// @param friendly  list the errors by their description, not by their name
    frmEditErrors(const EditorContext& context, const Table<ErrorMessage>& errors, bool friendly,
                  QWidget* parent = nullptr);
    ~frmEditErrors() override;

    /// The table as edited until now.
    Table<ErrorMessage> Errors() const;

private:
    void lstErrors_Click();

    std::unique_ptr<Ui::frmEditErrors> ui_;
    Table<ErrorMessage> errors_;
    int remembered_ = -1; // the row whose text is in the text box
};

} // namespace zem
