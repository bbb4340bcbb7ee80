#pragma once

#include "forms/Dialogs.h"

#include <QString>

#include <deque>
#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <utility>

namespace zem::test {

/// Answers the program's questions from a script. A question that differs from the script's, one that the
/// script does not have, and one that is never asked fail the test.
class ScriptedDialogs : public Dialogs {
public:
    ~ScriptedDialogs() override {
        for (const Step& step : script_)
            ADD_FAILURE() << "never asked: " << step.question.toStdString();
    }

    /// A message box, as "title: text".
    void Message(const QString& titleAndText, QMessageBox::StandardButton answer = QMessageBox::Ok) {
        script_.push_back({titleAndText, answer, {}, 0});
    }
    /// An input box, as "title: prompt [text]"; no answer stands for Cancel.
    void Text(const QString& question, const std::optional<QString>& answer) {
        script_.push_back({question, {}, answer, 0});
    }
    /// A choice of buttons, as "title: text [button|button]".
    void Choice(const QString& question, int answer) { script_.push_back({question, {}, {}, answer}); }
    /// A file dialog; an empty answer stands for Cancel.
    void OpenFile(const QString& answer) { script_.push_back({"open", {}, answer, 0}); }
    void SaveFile(const QString& answer) { script_.push_back({"save", {}, answer, 0}); }
    /// A document that is to be opened.
    void Document(const QString& path, int result) {
        script_.push_back({QStringLiteral("document ") + path, {}, {}, result});
    }
    /// A program that is to be started, for real when it exists.
    void Program(const QString& program) {
        script_.push_back({QStringLiteral("program ") + program, {}, {}, 0});
    }
    /// From now on whatever the script does not have is answered by Cancel, and no program is started.
    void CancelTheRest() { cancelsTheRest_ = true; }
    /// What was asked and told since then, as in the script; message boxes, input boxes and choices.
    QStringList cancelled;

    /// What is asked next counts only once these are answered.
    void ExpectAllAsked() const { EXPECT_TRUE(script_.empty()); }

    QMessageBox::StandardButton ShowMessageBox(QWidget*, const QString& text, const QString& title,
                                               QMessageBox::StandardButtons buttons,
                                               QMessageBox::Icon) override {
        const bool isCancelled = IsCancelled();
        const Step step = Next(title + QLatin1String(": ") + text);
        for (const auto refusal : {QMessageBox::Cancel, QMessageBox::No})
            if (isCancelled && buttons.testFlag(refusal))
                return refusal;
        EXPECT_TRUE(buttons.testFlag(step.button)) << "no such button: " << text.toStdString();
        return step.button;
    }
    std::optional<QString> AskText(QWidget*, const QString& prompt, const QString& title,
                                   const QString& text) override {
        return Next(QStringLiteral("%1: %2 [%3]").arg(title, prompt, text)).text;
    }
    int AskChoice(QWidget*, const QString& text, const QString& title, const QStringList& choices) override {
        const int ifCancelled = IsCancelled() ? -1 : 0;
        return Next(QStringLiteral("%1: %2 [%3]").arg(title, text, choices.join(u'|'))).result + ifCancelled;
    }
    QString AskOpenFile(QWidget*, const FileQuestion& question) override {
        lastFileQuestion = question;
        return Next("open").text.value_or(QString());
    }
    QString AskSaveFile(QWidget*, const FileQuestion& question) override {
        lastFileQuestion = question;
        return Next("save").text.value_or(QString());
    }
    int OpenDocument(const QString& path) override {
        return IsCancelled() ? static_cast<int>(Opened) : Next(QStringLiteral("document ") + path).result;
    }
    bool StartProgram(const QString& program, const QStringList& arguments) override {
        if (IsCancelled())
            return true;
        Next(QStringLiteral("program ") + program);
        return QtDialogs().StartProgram(program, arguments);
    }

    FileQuestion lastFileQuestion;

private:
    struct Step {
        QString question;
        QMessageBox::StandardButton button = QMessageBox::Ok;
        std::optional<QString> text;
        int result = 0;
    };

    bool IsCancelled() const { return cancelsTheRest_ && script_.empty(); }

    Step Next(const QString& question) {
        if (IsCancelled()) {
            cancelled.append(question);
            return {};
        }
        if (script_.empty()) {
            ADD_FAILURE() << "not in the script: " << question.toStdString();
            return {};
        }
        Step step = script_.front();
        script_.pop_front();
        EXPECT_EQ(question.toStdString(), step.question.toStdString());
        return step;
    }

    std::deque<Step> script_;
    bool cancelsTheRest_ = false;
};

} // namespace zem::test
