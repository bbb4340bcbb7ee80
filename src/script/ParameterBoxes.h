#pragma once

#include "forms/EditorContext.h"
#include "forms/NameListModel.h"
#include "kel/ParameterSyntax.h"

#include <QWidget>

#include <memory>
#include <optional>
#include <string>
#include <vector>

class QComboBox;
class QLineEdit;

namespace zem {

class Dialogs;
class ScriptEditing;
struct CommandDefinition;

/// A box for each part of a parameter of several parts, with the names that fit. They say the same as the box
/// of the whole parameter: what is typed into the one appears in the other. Not shown for a parameter of one
/// part.
class ParameterBoxes : public QWidget {
    Q_OBJECT

public:
    explicit ParameterBoxes(QWidget* parent = nullptr);

    /// Must be called once. All outlive this widget.
    /// @param whole  the box of the whole parameter
    void Use(QLineEdit& whole, const ScriptEditing& scripts, Dialogs& dialogs);

    /// The box of what players read helps with writing it. Must come before the first command.
    void UseForProse(const EditorContext& context) { context_.emplace(context); }

    /// The command whose parameter is typed now; null for none.
    const CommandDefinition* Command() const { return command_; }

    /// For a form in which another control than the whole parameter stands before the boxes.
    void ComeAfter(QWidget& before) { before_ = &before; }

    /// The command whose parameter is typed now; null for none that is known.
    void SetCommand(const CommandDefinition* command);

private:
    void Build();
    void AddSpareBoxes();
    void AddBox(const QString& label, NameKind kind);
    QStringList PartsOfWhole() const;
    void ShowWhole();
    void PartChanged();

    QLineEdit* whole_ = nullptr;
    QWidget* before_ = nullptr; // the control from which Tab comes to the first box
    const ScriptEditing* scripts_ = nullptr;
    Dialogs* dialogs_ = nullptr;
    const CommandDefinition* command_ = nullptr;
    ParameterSyntax syntax_;
    std::vector<QComboBox*> boxes_;
    std::vector<std::unique_ptr<NameListModel>> names_; // of the boxes
    std::optional<EditorContext> context_;              // of the box for prose
    bool showing_ = false;                              // the boxes are being filled
};

} // namespace zem
