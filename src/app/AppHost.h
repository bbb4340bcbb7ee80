#pragma once

#include "base/Host.h"
#include "forms/Dialogs.h"
#include "session/Settings.h"

#include <memory>

namespace zem {

class frmProgress;

/// Answers the core with windows: the message window, the platform's message boxes and the progress window.
class AppHost : public Host {
public:
    /// Both outlive this object.
    AppHost(const Settings& settings, Dialogs& dialogs);
    ~AppHost() override;

    MessageResult ShowMessage(const std::string& text, const std::string& title,
                              MessageButtons buttons) override;
    void ShowNotice(const std::string& text, const std::string& title) override;
    void ShowStage(const std::string& text) override;
    void ShowProgress(int percent) override;
    void CloseProgress() override;

private:
    void HideProgress();

    const Settings& settings_;
    Dialogs& dialogs_;
    std::unique_ptr<frmProgress> progress_;
};

} // namespace zem
