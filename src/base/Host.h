#pragma once

#include <string>

namespace zem {

/// The buttons of a message, with the codes of the platform's message boxes.
enum class MessageButtons { Ok = 0, OkCancel = 1, YesNo = 4 };

/// What the author answered, with the codes of the platform's message boxes.
enum class MessageResult { Ok = 1, Cancel = 2, Yes = 6, No = 7 };

/// What the core asks of whoever runs it, because it cannot do it itself: the program's window does it with
/// message boxes and a progress window, the command line with standard error. Texts are Windows-1252 with
/// CR LF.
class Host {
public:
    virtual ~Host() = default;

    /// Shows a message in the editor's own message window, if the author has not chosen the platform's.
    virtual MessageResult ShowMessage(const std::string& text, const std::string& title,
                                      MessageButtons buttons) = 0;

    /// Shows a message with an OK button in the platform's message box.
    virtual void ShowNotice(const std::string& text, const std::string& title) = 0;

    /// Shows the text of a stage in the progress window, opening it when it is closed.
    virtual void ShowStage(const std::string& text) = 0;

    /// Shows how far the work is, 0 to 100.
    virtual void ShowProgress(int percent) = 0;

    /// Closes the progress window; does nothing when it is closed.
    virtual void CloseProgress() = 0;
};

/// Asks nobody and shows nothing.
class SilentHost : public Host {
public:
    MessageResult ShowMessage(const std::string& /*text*/, const std::string& /*title*/,
                              MessageButtons /*buttons*/) override {
        return MessageResult::Ok;
    }
    void ShowNotice(const std::string& /*text*/, const std::string& /*title*/) override {}
    void ShowStage(const std::string& /*text*/) override {}
    void ShowProgress(int /*percent*/) override {}
    void CloseProgress() override {}
};

} // namespace zem
