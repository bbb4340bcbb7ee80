#include "play/RunsAfterRename.h"

#include "base/LineText.h"
#include "base/TextEncoding.h"
#include "game/Mentions.h"
#include "game/WholeWords.h"

#include <algorithm>
#include <utility>

namespace zem::play {

namespace {

/// Puts words in the place of others, whatever their capitals.
/// @param wordsFor  gives the words for those that stand there
template <class WordsFor>
std::string WithOtherWords(const std::string& text, const std::string& words, WordsFor wordsFor) {
    const std::string lower = Lower(text);
    const std::string wanted = Lower(words);
    std::string result;
    std::size_t done = 0;
    for (std::size_t at = lower.find(wanted); at != std::string::npos; at = lower.find(wanted, at)) {
        const TextRange range{at, at + wanted.size()};
        if (!IsWholeWord(text, range)) {
            ++at;
            continue;
        }
        result.append(text, done, at - done).append(wordsFor(range.Of(text)));
        done = at = range.end;
    }
    return result.append(text, done);
}

/// Whether a player may meet names of the kind.
bool IsMet(NameKind kind) {
    return kind == NameKind::Room || kind == NameKind::Object || kind == NameKind::Character ||
           kind == NameKind::Item || kind == NameKind::Collectable;
}

class RunFollower {
public:
    RunFollower(const std::vector<NameChange>& names, const std::function<bool()>& goesOn)
        : names_(names),
          goesOn_(goesOn) {}

    /// The run as it is now; nothing when the time was over.
    std::optional<RecordedRun> Follow(const RecordedRun& run, const std::shared_ptr<const World>& world) {
        const RecordedRun typed = TypeNewNames(run);
        const RunResult played = PlayRun(world, typed, goesOn_);
        const bool isSameInput = InputOf(typed) == InputOf(run);
        const RunResult other = isSameInput ? RunResult() : PlayRun(world, run, goesOn_);
        if (played.isCutOff || other.isCutOff)
            return std::nullopt;
        const bool isOther = !isSameInput && CountAlike(run, other.played) > CountAlike(run, played.played);
        return Approve(run, isOther ? run : typed, isOther ? other.played : played.played);
    }

    /// Whether all is told as approved, with whichever of the names.
    bool wasAlike = false;

private:
    RecordedRun TypeNewNames(RecordedRun run) const {
        for (RunStep& step : run.steps) {
            if (step.input.kind != InputLine::Typed)
                continue;
            std::string text = step.input.text;
            for (const NameChange& name : names_)
                text = WithOtherWords(text, name.from, [&](std::string_view typed) {
                    return InCapitalsOf(typed, name.from, name.to);
                });
            if (text == step.input.text)
                continue;
            step.input.text = text;
            step.input.written = "> " + ToUtf8(text);
        }
        return run;
    }

    static std::vector<std::string> InputOf(const RecordedRun& run) {
        std::vector<std::string> lines;
        for (const RunStep& step : run.steps)
            lines.push_back(step.input.written);
        return lines;
    }

    /// The story with one sign wherever a name stands that changed, the old or the new one.
    std::string WithoutNames(const std::string& story) const {
        std::string text = FromUtf8(story);
        for (std::size_t k = names_.size(); k-- > 0;)
            text = WithOtherWords(WithOtherWords(text, names_[k].to, [](std::string_view) { return "\x01"; }),
                                  names_[k].from, [](std::string_view) { return "\x01"; });
        return text;
    }

    bool AreAlike(const std::string& approved, const std::string& told) const {
        return approved == told || WithoutNames(approved) == WithoutNames(told);
    }

    std::size_t CountAlike(const RecordedRun& approved, const RecordedRun& played) const {
        std::size_t count = 0;
        for (std::size_t k = 0; k < played.steps.size(); ++k)
            count += AreAlike(approved.steps[k].story, played.steps[k].story) ? 1 : 0;
        return count;
    }

    RecordedRun Approve(const RecordedRun& approved, RecordedRun now, const RecordedRun& played) {
        wasAlike = played.steps.size() == approved.steps.size();
        const auto approve = [&](const std::string& before, const std::string& told, std::string& story) {
            if (AreAlike(before, told))
                story = told;
            else
                wasAlike = false;
        };
        approve(approved.beginning, played.beginning, now.beginning);
        for (std::size_t k = 0; k < played.steps.size(); ++k)
            approve(approved.steps[k].story, played.steps[k].story, now.steps[k].story);
        return now;
    }

    const std::vector<NameChange>& names_;
    const std::function<bool()>& goesOn_;
};

} // namespace

RunsAfterRename RenameInRuns(const std::vector<RecordedRun>& runs, const std::shared_ptr<const World>& world,
                             const std::vector<NameChange>& names, const std::function<bool()>& goesOn) {
    std::vector<NameChange> met;
    std::copy_if(names.begin(), names.end(), std::back_inserter(met),
                 [](const NameChange& name) { return IsMet(name.kind); });
    RunsAfterRename result;
    result.runs = runs;
    for (std::size_t k = 0; !met.empty() && k < runs.size(); ++k) {
        RunFollower follower(met, goesOn);
        std::optional<RecordedRun> now = follower.Follow(runs[k], world);
        if (now)
            result.runs[k] = *std::move(now);
        if (!now || !follower.wasAlike)
            result.astray.push_back(runs[k].name);
    }
    result.isChanged = WriteRuns(result.runs) != WriteRuns(runs);
    return result;
}

} // namespace zem::play
