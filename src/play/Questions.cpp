#include "base/LineText.h"
#include "play/Interpreter.h"
#include "play/Limits.h"

#include <algorithm>

/// What the player is asked in the middle of a turn.
namespace zem::play {

std::optional<std::string> Interpreter::NextAnswer(Need need) {
    if (stop_ != Stop::None)
        return std::nullopt;
    if (nextAnswer_ == input_.answers.size()) {
        result_.outcome.need = need;
        StopAt(Stop::NeedsAnswer);
        return std::nullopt;
    }
    const std::string& answer = input_.answers[nextAnswer_++];
    answerWords_ += static_cast<std::size_t>(std::count(answer.begin(), answer.end(), ' ')) + 1;
    if (answerWords_ > Limits::AnswerWords) {
        StopAt(Stop::Limit);
        return std::nullopt;
    }
    return answer;
}

std::optional<bool> Interpreter::AskYesNo(std::string_view question, const Source& source, bool isMessage) {
    while (true) {
        // A question of the player program ends in a blank, behind which the answer may stand.
        const std::string asked = std::string(question) + (isMessage ? " " : "");
        if (!PrintLine(asked, source))
            return std::nullopt;
        const std::optional<std::string> answer = NextAnswer(Need::YesNo);
        if (!answer)
            return std::nullopt;
        const std::string word = Fold(*answer);
        if (word == "y" || word == "yes")
            return true;
        if (word == "n" || word == "no")
            return false;
        if (!PrintLine(AnswerYesOrNo, {}))
            return std::nullopt;
    }
}

std::optional<std::size_t> Interpreter::ChoiceMeant(const std::vector<std::string>& choices,
                                                    std::string_view answer) {
    bool isNumber = false;
    const std::int64_t number = LeadingInteger(answer, &isNumber);
    if (isNumber && number >= 1 && number <= static_cast<std::int64_t>(choices.size()))
        return static_cast<std::size_t>(number - 1);
    const std::string wanted = Fold(answer);
    std::optional<std::size_t> begins;
    int count = 0;
    for (std::size_t k = 0; k < choices.size(); ++k) {
        const std::string choice = Fold(choices[k]);
        if (choice == wanted)
            return k;
        if (!wanted.empty() && choice.starts_with(wanted)) {
            begins = k;
            ++count;
        }
    }
    return count == 1 ? begins : std::nullopt;
}

bool Interpreter::Choose(const WorldMenu& menu, const Source& source) {
    while (true) {
        const Source info{&menu.book, ScriptField::MenuInfo, 0, 1};
        if (!menu.record->Info.empty() && !PrintLine(menu.record->Info, info))
            return false;
        if (menu.choices.empty())
            return true;
        std::vector<std::string> choices;
        for (const ScriptPair& choice : menu.record->Choices) {
            const auto index = static_cast<std::int16_t>(choices.size() + 1);
            printer_.Begin({&menu.book, ScriptField::Choice, index, 0});
            printer_.Raw(std::to_string(index) + ". ");
            if (!PrintPart(choice.Key))
                return false;
            printer_.NewLine();
            choices.push_back(PlainText(PutIn(choice.Key)));
        }
        if (!PrintLine(world_.TextOf(Message::MenuPrompt) + " ", {}))
            return false;
        result_.outcome.choices = choices;
        const std::optional<std::string> answer = NextAnswer(Need::Choice);
        if (!answer)
            return false;
        result_.outcome.choices.clear();
        if (const std::optional<std::size_t> chosen = ChoiceMeant(choices, *answer)) {
            Trace(source, TraceEntry::Ran, -1, "chose \"" + choices[*chosen] + "\"");
            return Run({&menu.book, menu.choices[*chosen]});
        }
        if (!PrintMessage(Message::BadChoice))
            return false;
    }
}

} // namespace zem::play
