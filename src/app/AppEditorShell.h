#pragma once

#include "base/Host.h"
#include "editors/EditorShell.h"
#include "session/Settings.h"

namespace zem {

class ScriptEditing;

/// What the property editors get from this program.
class AppEditorShell : public EditorShell {
public:
    /// All arguments outlive the shell.
    AppEditorShell(Settings& settings, Host& host, ScriptEditing& scripts)
        : settings_(settings),
          host_(host),
          scripts_(scripts) {}

    void ShowMessage(const QString& text, const QString& title) override;
    void ShowHelp(const QString& section, QWidget* parent) override;
    void EditPlayerCommands(QWidget* parent, std::vector<ScriptPair>& commands) override;
    QSize TagEditorSize() const override { return settings_.TagEditorSize(); }
    void StoreTagEditorSize(const QSize& twips) override { settings_.StoreTagEditorSize(twips); }

private:
    Settings& settings_;
    Host& host_;
    ScriptEditing& scripts_;
};

} // namespace zem
