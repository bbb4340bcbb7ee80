#pragma once

#include "base/Host.h"

#include <string>
#include <vector>

namespace zem::test {

/// Writes down what the core asks of its host: messages as "title: text", stages with their progress.
class RecordingHost : public Host {
public:
    std::vector<std::string> messages;
    std::vector<std::string> notices;
    std::vector<std::string> stages;

    MessageResult ShowMessage(const std::string& text, const std::string& title, MessageButtons) override {
        messages.push_back(title + ": " + text);
        return MessageResult::Ok;
    }
    void ShowNotice(const std::string& text, const std::string& title) override {
        notices.push_back(title + ": " + text);
    }
    void ShowStage(const std::string& text) override { stages.push_back(text); }
    void ShowProgress(int percent) override { stages.back() += " " + std::to_string(percent); }
    void CloseProgress() override { stages.emplace_back("closed"); }
};

} // namespace zem::test
