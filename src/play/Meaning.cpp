#include "play/Meaning.h"

#include "play/NameSearch.h"
#include "play/VerbParser.h"

namespace zem::play {

bool IsOpenRoom(const World& world, const State& state, Number room) {
    return room != None && world.FindRoom(room) != nullptr &&
           state[world.GetNames().CellOf(Kind::Room, room) + RoomOff] == 0;
}

Number ExitLeadsTo(const World& world, const State& state, const WorldRoom& room, std::uint8_t direction) {
    const std::int64_t cell = state[world.GetNames().CellOf(Kind::Room, room.number) + FirstExit + direction];
    if ((cell & ExitClosed) != 0)
        return None;
    const WorldExit& exit = room.exits[direction];
    const Number leadsTo = cell >> 1 != 0 ? static_cast<Number>((cell >> 1) - 1)
                           : exit.exists  ? exit.room
                                          : None;
    return IsOpenRoom(world, state, leadsTo) ? leadsTo : None;
}

Meaning Recogniser::Recognise(const std::string& line, const std::optional<Choice>& choice) const {
    const Sentence typed(line);
    if (auto command = FindCommand(typed))
        return *std::move(command);
    const Sentence sentence = ReplaceSynonyms(typed, world_.Synonyms());
    work_ += world_.Synonyms().size() + line.size();
    if (sentence.folded.text != typed.folded.text)
        if (auto command = FindCommand(sentence))
            return *std::move(command);
    if (auto meaning = VerbParser(world_, state_, choice, work_).Parse(sentence.folded.text))
        return *std::move(meaning);
    return NotUnderstood(typed);
}

std::optional<Meaning> Recogniser::FindCommand(const Sentence& sentence) const {
    const auto findIn = [&](const std::vector<WorldCommand>& commands,
                            const Book& book) -> std::optional<Meaning> {
        for (const WorldCommand& command : commands)
            for (const Pattern& pattern : command.patterns) {
                work_ += 2;
                if (auto captures = MatchPattern(pattern, sentence)) {
                    Meaning meaning;
                    meaning.verb = Verb::Scripted;
                    meaning.script = {&book, command.script};
                    meaning.captures = *std::move(captures);
                    return meaning;
                }
            }
        return std::nullopt;
    };
    if (state_[PlayerRoom] != 0)
        if (const WorldRoom* room = world_.FindRoom(static_cast<Number>(state_[PlayerRoom] - 1)))
            if (auto meaning = findIn(room->commands, room->book))
                return meaning;
    for (const auto& game : world_.GameBlocks())
        if (auto meaning = findIn(game->commands, game->book))
            return meaning;
    return std::nullopt;
}

std::optional<TextRange> Recogniser::FirstUnknownWord(const Sentence& sentence) const {
    std::size_t at = 0;
    for (const std::string_view word : WordsOf(sentence.folded.text)) {
        if (!world_.IsKnownWord(word))
            return TextRange{sentence.folded.origin[at],
                             sentence.folded.origin[at + word.size() - 1] + std::size_t{1}};
        at += word.size() + 1;
    }
    return std::nullopt;
}

Meaning Recogniser::NotUnderstood(const Sentence& sentence) const {
    Meaning meaning;
    // A game with words of its own for everything that it does not understand means unknown words, too.
    if (world_.IsReplaced(Message::BadCommand) && !world_.IsReplaced(Message::UnknownWord))
        return meaning;
    if (const std::optional<TextRange> word = FirstUnknownWord(sentence)) {
        meaning.message = Message::UnknownWord;
        meaning.detail = "\x93" + std::string(word->Of(sentence.typed)) + "\x94";
    }
    return meaning;
}

std::optional<Reference> Recogniser::AnswerAmong(std::string_view answer,
                                                 const std::vector<Reference>& choices) const {
    const std::string folded = Fold(answer);
    const std::string_view phrase = WithoutArticles(folded);
    std::optional<Reference> best;
    Fit bestFit = Fit::No;
    bool several = false;
    for (const Reference& choice : choices) {
        Fit fit = Fit::No;
        if (choice.kind == Reference::Room) {
            if (const WorldRoom* room = world_.FindRoom(choice.number))
                fit = std::max(FitOf(phrase, room->forms), FitOf(phrase, {room->foldedAlias, {}, {}}));
        } else if (choice.kind == Reference::Thing) {
            if (const WorldThing* thing = world_.FindThing(choice.number))
                fit = FitOf(phrase, thing->forms);
        } else if (const WorldItem* item = world_.FindItem(choice.number))
            fit = FitOf(phrase, {item->folded, {}, {}});
        if (fit == Fit::No || fit < bestFit)
            continue;
        several = fit == bestFit;
        bestFit = fit;
        best = choice;
    }
    return several ? std::nullopt : best;
}

} // namespace zem::play
