#pragma once

#include "forms/EditorContext.h"
#include "prose/ProseBox.h"

#include <QDialog>

#include <functional>
#include <memory>
#include <string>

namespace Ui {
class frmLargeText;
}

namespace zem {

/// A text of a small box in a window of its own.
class frmLargeText : public QDialog {
    Q_OBJECT

public:
    /// @param hasSeveralLines  false for a text that stands on one line
    frmLargeText(const EditorContext& context, const std::string& text, bool hasSeveralLines,
                 QWidget* parent = nullptr);
    ~frmLargeText() override;

    std::string Text() const;

    /// Calls changed() whenever the text has changed.
    void OnChange(const std::function<void()>& changed);

private:
    std::unique_ptr<Ui::frmLargeText> ui_;
};

/// Lets the author go on writing in a large window. OK puts the text into the box, as one step that Ctrl+Z
/// takes back.
void EditInLargeWindow(const ProseBox& box, const EditorContext& context);

} // namespace zem
