#pragma once

#include "forms/Dialogs.h"
#include "model/NameKind.h"

#include <QPushButton>

#include <string>

namespace zem {

class ScriptEditing;

/// Offers to make what a script names and the game does not have yet: a procedure, an item, a text block, a
/// menu or a room. Not shown where everything is there.
class CreateButton : public QPushButton {
    Q_OBJECT

public:
    explicit CreateButton(QWidget* parent = nullptr);

    /// Must be called once. All outlive the button.
    void Use(ScriptEditing& scripts, Dialogs& dialogs);

    /// The script, or a line of one, that is shown now.
    void SetScript(const std::string& script);

signals:
    /// What was missing is there.
    void Created();

private:
    void Create();

    ScriptEditing* scripts_ = nullptr;
    Dialogs* dialogs_ = nullptr;
    std::string script_;
    std::string name_; // that is missing
    NameKind kind_ = NameKind::None;
};

} // namespace zem
