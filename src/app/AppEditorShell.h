#pragma once

#include "base/Host.h"
#include "forms/EditorShell.h"
#include "session/Settings.h"

#include <functional>
#include <utility>

namespace zem {

/// What the property editors get from this program.
class AppEditorShell : public EditorShell {
public:
    /// All outlive the shell.
    /// @param showManual  shows a place of the manual beside a window
    AppEditorShell(Settings& settings, Host& host, GameSpelling& spelling,
                   std::function<void(const QString& place, QWidget& beside)> showManual)
        : settings_(settings),
          host_(host),
          spelling_(spelling),
          showManual_(std::move(showManual)) {}

    void ShowMessage(const QString& text, const QString& title) override;
    void ShowHelp(const QString& section, QWidget* parent) override;
    void ShowManual(const QString& place, QWidget& beside) override { showManual_(place, beside); }
    QSize TagEditorSize() const override { return settings_.TagEditorSize(); }
    void StoreTagEditorSize(const QSize& twips) override { settings_.StoreTagEditorSize(twips); }
    GameSpelling* Spelling() override { return &spelling_; }

private:
    Settings& settings_;
    Host& host_;
    GameSpelling& spelling_;
    std::function<void(const QString& place, QWidget& beside)> showManual_;
};

} // namespace zem
