#pragma once

#include "forms/EditorContext.h"

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
    frmTagEditor(const EditorContext& context, const std::string& tags,
                 std::function<void(const std::string&)> store, QWidget* parent = nullptr);
    ~frmTagEditor() override;

    /// The text as it stands in the box.
    std::string Tags() const;

private:
    void butOK_Click();

    std::unique_ptr<Ui::frmTagEditor> ui_;
    EditorContext context_;
    std::function<void(const std::string&)> store_;
};

/// Edits the tags that another form holds.
void EditTags(const EditorContext& context, std::string& tags, QWidget* parent);

} // namespace zem
