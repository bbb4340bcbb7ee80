#pragma once

#include "base/Host.h"
#include "forms/EditorShell.h"
#include "session/Settings.h"

namespace zem {

/// What the property editors get from this program.
class AppEditorShell : public EditorShell {
public:
    /// All outlive the shell.
    AppEditorShell(Settings& settings, Host& host, GameSpelling& spelling)
        : settings_(settings),
          host_(host),
          spelling_(spelling) {}

    void ShowMessage(const QString& text, const QString& title) override;
    void ShowHelp(const QString& section, QWidget* parent) override;
    QSize TagEditorSize() const override { return settings_.TagEditorSize(); }
    void StoreTagEditorSize(const QSize& twips) override { settings_.StoreTagEditorSize(twips); }
    GameSpelling* Spelling() override { return &spelling_; }

private:
    Settings& settings_;
    Host& host_;
    GameSpelling& spelling_;
};

} // namespace zem
