#include "game/NewName.h"

#include "base/LineText.h"
#include "game/WhereUsed.h"
#include "game/WholeWords.h"

#include <algorithm>

namespace zem {

namespace {

std::string WithArticle(NameKind kind) {
    const std::string word = Describe(kind);
    return (word[0] == 'o' || word[0] == 'i' ? "an " : "a ") + word;
}

std::string Places(std::size_t count) {
    return count == 1 ? "1 place" : std::to_string(count) + " places";
}

bool IsTaken(NameKind kind, std::string_view name) {
    if (BeginsWith(name, InternalProcedure))
        return true;
    if (kind == NameKind::Room && EqualIgnoringCase(name, ActionExit))
        return true;
    return kind == NameKind::TextSection && IsStandardText(name);
}

/// Judges one new name, in the order in which an author should be told.
class Judge {
public:
    Judge(const GameIndex& index, NameKind kind, const std::string& oldName, const std::vector<Place>& only)
        : index_(index),
          kind_(kind),
          oldName_(oldName),
          only_(only) {}

    NewNameAnswer Run(std::string_view typed) {
        answer_.name = Trim(typed);
        if (JudgeOldName() || JudgeItself() || JudgeTaken())
            return std::move(answer_);
        AddNotes();
        return std::move(answer_);
    }

private:
    bool Answer(NameVerdict verdict, std::string message) {
        answer_.verdict = verdict;
        answer_.message = std::move(message);
        return true;
    }
    bool Refuse(std::string message) { return Answer(NameVerdict::Refused, std::move(message)); }

    bool JudgeOldName() {
        if (kind_ == NameKind::None || kind_ == NameKind::Thing || kind_ == NameKind::File)
            return Refuse("This cannot be renamed.");
        if (oldName_.starts_with(InternalProcedure))
            return Refuse("Zem has made this procedure of a script, and gives it its name.");
        if (kind_ == NameKind::TextSection && IsStandardText(oldName_))
            return Refuse("The texts intro, win and lose cannot be renamed: every game has them.");
        if (kind_ == NameKind::Variable && oldName_ == "thing" && RunsForEvery())
            return Refuse(
                "The variable thing cannot be renamed: \"every object\" and \"every character\" put "
                "the name into it.");
        bool isThere = false;
        for (const Reference& reference : index_.References().Of(kind_, oldName_))
            isThere = isThere || (IsMadeByUse(kind_) ? reference.role != ReferenceRole::MayMean
                                                     : reference.role == ReferenceRole::Definition);
        return !isThere && Refuse(NotThere());
    }

    /// Why there is nothing to rename, with the name that may have been meant.
    std::string NotThere() const {
        const std::string word = Describe(kind_);
        if (Trim(oldName_).empty())
            return "Say which " + word + " is to be renamed: its name is empty here.";
        const std::string none = "There is no " + word + " " + oldName_;
        const std::vector<Reference> alike = index_.References().InOtherCapitals(kind_, oldName_);
        if (!alike.empty())
            return none + ", but one is called " + std::string(alike.front().name) +
                   ": capitals count in names.";
        for (const NameKind other :
             {NameKind::Room, NameKind::Object, NameKind::Character, NameKind::Item, NameKind::Procedure,
              NameKind::TextSection, NameKind::Menu, NameKind::Collectable})
            for (const Reference& reference : index_.References().Of(other, oldName_))
                if (reference.role == ReferenceRole::Definition)
                    return none + ", but " + WithArticle(other) + " of that name.";
        return none + ".";
    }

    bool RunsForEvery() const {
        bool runs = false;
        index_.References().ForEach([&](const Reference& reference) {
            runs = runs || (reference.command != nullptr && reference.command->keyword.starts_with("every "));
        });
        return runs;
    }

    bool JudgeItself() {
        if (answer_.name.empty())
            return Answer(NameVerdict::Unchanged, "Type the new name.");
        if (answer_.name == oldName_)
            return Answer(NameVerdict::Unchanged, "This is its name already.");
        const std::string problem = NameProblem(kind_, answer_.name);
        return !problem.empty() && Refuse(problem);
    }

    bool JudgeTaken() {
        if (IsMadeByUse(kind_))
            return JudgeMerge();
        for (const Reference& other : OthersOfThatName(kind_)) {
            const bool isThing = kind_ == NameKind::Object || kind_ == NameKind::Character;
            if (isThing && !StandsWithRenamed(other.place)) {
                answer_.notes.push_back("There is " + WithArticle(kind_) + " " + std::string(other.name) +
                                        " in another room, too: scripts then mean both.");
                continue;
            }
            answer_.taken = other.place;
            return Refuse("There is already " + WithArticle(kind_) + " " + std::string(other.name) + ".");
        }
        return false;
    }

    /// What has the new name already, whatever its capitals, and does not have the old one.
    std::vector<Reference> OthersOfThatName(NameKind kind) const {
        std::vector<Reference> others = index_.References().Of(kind, answer_.name);
        const std::vector<Reference> alike = index_.References().InOtherCapitals(kind, answer_.name);
        others.insert(others.end(), alike.begin(), alike.end());
        std::erase_if(others, [&](const Reference& other) {
            return other.role != ReferenceRole::Definition || (kind == kind_ && other.name == oldName_);
        });
        return others;
    }

    /// Whether one of those to rename stands in the same room.
    bool StandsWithRenamed(const Place& other) const {
        for (const Reference& renamed : index_.References().Of(kind_, oldName_)) {
            const bool isMeant =
                only_.empty() || std::any_of(only_.begin(), only_.end(), [&](const Place& one) {
                    return one.steps == renamed.place.steps;
                });
            if (renamed.role == ReferenceRole::Definition && isMeant &&
                renamed.place.steps.front() == other.steps.front())
                return true;
        }
        return false;
    }

    bool JudgeMerge() {
        std::vector<Reference> uses = index_.References().Of(kind_, answer_.name);
        std::erase_if(uses, [](const Reference& use) { return use.role == ReferenceRole::MayMean; });
        if (kind_ == NameKind::Variable) {
            const std::vector<Reference> printed = index_.References().WouldBeVariable(answer_.name);
            uses.insert(uses.end(), printed.begin(), printed.end());
        }
        const bool isVariable = kind_ == NameKind::Variable && index_.References().IsVariable(answer_.name);
        if (uses.empty() && !isVariable)
            return false;
        if (!uses.empty())
            answer_.taken = uses.front().place;
        // Of these kinds, timers alone have blocks of their own.
        if (kind_ == NameKind::Timer && IsDefined(oldName_) && IsDefined(answer_.name))
            return Refuse("There is already " + WithArticle(kind_) + " " + answer_.name + ".");
        return Answer(NameVerdict::Merges,
                      "Make them one? " + answer_.name + " is used in " + Places(uses.size()) + ".");
    }

    bool IsDefined(std::string_view name) const {
        const std::vector<Reference> uses = index_.References().Of(kind_, name);
        return std::any_of(uses.begin(), uses.end(),
                           [](const Reference& use) { return use.role == ReferenceRole::Definition; });
    }

    void AddNotes() {
        const std::string& name = answer_.name;
        if (name.find_first_of("#%") != std::string::npos)
            answer_.notes.emplace_back(
                "Where the name is printed, what stands between two # or % may be taken for "
                "a variable.");
        if (name.find('|') != std::string::npos)
            answer_.notes.emplace_back("Where the name is printed, the | may be read as a format code.");
        AddNoteOfNamesake();
        AddNoteOfLostUses();
        AddNoteOfSynonyms();
    }

    void AddNoteOfNamesake() {
        if (kind_ != NameKind::Object && kind_ != NameKind::Character)
            return;
        const NameKind other = kind_ == NameKind::Object ? NameKind::Character : NameKind::Object;
        for (const Reference& namesake : OthersOfThatName(other))
            if (namesake.name == answer_.name)
                return answer_.notes.push_back("There is " + WithArticle(other) + " " + answer_.name +
                                               ", too: a script that asks for either means the character.");
    }

    void AddNoteOfLostUses() {
        if (IsMadeByUse(kind_))
            return;
        std::size_t uses = 0;
        for (const Reference& use : index_.References().Of(kind_, answer_.name)) {
            if (use.role == ReferenceRole::Definition)
                return; // they mean that
            uses += use.role == ReferenceRole::Use ? 1 : 0;
        }
        if (uses != 0)
            answer_.notes.push_back("The name is used in " + Places(uses) +
                                    " already, though nothing was called so. They then mean this.");
    }

    void AddNoteOfSynonyms() {
        if (kind_ != NameKind::Room && kind_ != NameKind::Object && kind_ != NameKind::Character &&
            kind_ != NameKind::Item)
            return;
        const std::string name = Lower(answer_.name);
        for (const SynonymEntry& synonym : index_.Game().Synonyms)
            for (const std::string_view piece : SplitAt(synonym.Words, ";")) {
                const std::string word = Lower(Trim(piece));
                const std::size_t at = word.empty() ? std::string::npos : name.find(word);
                if (at != std::string::npos && IsWholeWord(name, {at, at + word.size()}))
                    return answer_.notes.push_back("A synonym replaces \"" + word +
                                                   "\": players can type the name as it stands only.");
            }
    }

    const GameIndex& index_;
    NameKind kind_;
    const std::string& oldName_;
    const std::vector<Place>& only_;
    NewNameAnswer answer_;
};

} // namespace

std::string NameProblem(NameKind kind, std::string_view name) {
    if (name.find_first_of("<>") != std::string_view::npos)
        return "A name cannot hold < or >.";
    if (name.find(';') != std::string_view::npos)
        return "A name cannot hold ;, which separates names in lists.";
    const bool isListed = kind == NameKind::Item || kind == NameKind::Collectable;
    if (isListed && name.find(',') != std::string_view::npos)
        return "The name of " + WithArticle(kind) + " cannot hold a comma, which separates names in lists.";
    if (kind == NameKind::Collectable && name.find(' ') != std::string_view::npos)
        return "The name of a collectable cannot hold a blank.";
    if (name.find_first_of("{}") != std::string_view::npos)
        return "A name cannot hold { or }.";
    if (std::any_of(name.begin(), name.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20; }))
        return "A name cannot hold a line break, a TAB or another control character.";
    if (kind == NameKind::Variable && name.find_first_of("#%") != std::string_view::npos)
        return "The name of a variable cannot hold # or %.";
    if (IsTaken(kind, name))
        return "The name " + std::string(name) + " is taken by the program.";
    return {};
}

NewNameAnswer JudgeNewName(const GameIndex& index, NameKind kind, const std::string& oldName,
                           std::string_view newName, const std::vector<Place>& only) {
    return Judge(index, kind, oldName, only).Run(newName);
}

} // namespace zem
