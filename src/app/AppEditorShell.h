#pragma once

#include "app/Settings.h"
#include "editors/EditorShell.h"

namespace zem {

class ScriptEditing;

/// What the property editors get from this program.
class AppEditorShell : public EditorShell {
public:
    /// Both arguments outlive the shell.
    AppEditorShell(Settings& settings, ScriptEditing& scripts) : settings_(settings), scripts_(scripts) {}

    void ShowHelp(const QString& section, QWidget* parent) override;
    void EditPlayerCommands(QWidget* parent, std::vector<ScriptPair>& commands) override;
    QSize TagEditorSize() const override { return settings_.TagEditorSize(); }
    void StoreTagEditorSize(const QSize& twips) override { settings_.StoreTagEditorSize(twips); }

private:
    Settings& settings_;
    ScriptEditing& scripts_;
};

} // namespace zem
