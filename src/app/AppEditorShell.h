#pragma once

#include "base/Host.h"
#include "forms/EditorShell.h"
#include "session/Settings.h"

namespace zem {

/// What the property editors get from this program.
class AppEditorShell : public EditorShell {
public:
    /// Both outlive the shell.
    AppEditorShell(Settings& settings, Host& host) : settings_(settings), host_(host) {}

    void ShowMessage(const QString& text, const QString& title) override;
    void ShowHelp(const QString& section, QWidget* parent) override;
    QSize TagEditorSize() const override { return settings_.TagEditorSize(); }
    void StoreTagEditorSize(const QSize& twips) override { settings_.StoreTagEditorSize(twips); }

private:
    Settings& settings_;
    Host& host_;
};

} // namespace zem
