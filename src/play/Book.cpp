#include "play/Book.h"

#include "base/LineText.h"
#include "kel/ScriptLine.h"
#include "play/Fold.h"

#include <unordered_map>

namespace zem::play {

namespace {

/// What the parts of a parameter are, letter by letter: r room, o object, c character, t thing, i item,
/// p procedure, x text section, m menu, v variable, a collectable, f flag (F beside another name), y timer, d
/// direction, R a second room, s a text that takes all that is left, n a number or text before a ";", + more
/// procedures. Empty for no parameter.
struct CommandRow {
    std::string_view keyword;
    Op op;
    std::string_view parts;
};

constexpr CommandRow CommandRows[] = {
    {"msg", Op::Msg, "s"},
    {"say", Op::Say, "s"},
    {"text", Op::Text, "x"},
    {"line", Op::Line, ""},
    {"clear", Op::Clear, ""},
    {"pause", Op::Pause, "s"},
    {"key", Op::Key, "s"},
    {"colour", Op::Colour, "s"},
    {"fontname", Op::FontName, "s"},
    {"fontsize", Op::FontSize, "s"},
    {"picture", Op::Picture, "s"},
    {"sound", Op::Sound, "s"},
    {"music", Op::Music, "s"},
    {"silence", Op::Silence, ""},
    {"goto", Op::Goto, "r"},
    {"back", Op::Back, ""},
    {"look", Op::Look, ""},
    {"give", Op::Give, "i"},
    {"lose all", Op::LoseAll, ""},
    {"lose", Op::Lose, "i"},
    {"show", Op::Show, "o"},
    {"hide", Op::Hide, "o"},
    {"reveal", Op::Reveal, "c"},
    {"conceal", Op::Conceal, "c"},
    {"bring", Op::Bring, "t"},
    {"move object", Op::MoveObject, "or"},
    {"move character", Op::MoveCharacter, "cr"},
    {"object on", Op::ObjectOn, "o"},
    {"object off", Op::ObjectOff, "o"},
    {"character on", Op::CharacterOn, "c"},
    {"character off", Op::CharacterOff, "c"},
    {"room on", Op::RoomOn, "r"},
    {"room off", Op::RoomOff, "r"},
    {"exit on", Op::ExitOn, "rd"},
    {"exit off", Op::ExitOff, "rd"},
    {"exit to", Op::ExitTo, "rdR"},
    {"set amount", Op::SetAmount, "as"},
    {"set", Op::Set, "vs"},
    {"append", Op::Append, "vs"},
    {"ask", Op::Ask, "vs"},
    {"add", Op::Add, "vs"},
    {"subtract", Op::Subtract, "vs"},
    {"multiply", Op::Multiply, "vs"},
    {"roll", Op::Roll, "vs"},
    {"gain", Op::Gain, "as"},
    {"spend", Op::Spend, "as"},
    {"flag on", Op::FlagOn, "f"},
    {"flag off", Op::FlagOff, "f"},
    {"flag flip", Op::FlagFlip, "f"},
    {"do", Op::Do, "p"},
    {"pick", Op::Pick, "+"},
    {"repeat", Op::Repeat, "np"},
    {"every object", Op::EveryObject, "p"},
    {"every character", Op::EveryCharacter, "p"},
    {"while", Op::While, "Fp"},
    {"choose", Op::Choose, "m"},
    {"type", Op::Type, "s"},
    {"after", Op::After, "np"},
    {"timer on", Op::TimerOn, "y"},
    {"timer off", Op::TimerOff, "y"},
    {"win", Op::Win, ""},
    {"die", Op::Die, ""},
    {"restart", Op::Restart, ""},
};

struct TestRow {
    std::string_view keyword;
    Test test;
    std::string_view parts; // as of a command
};

constexpr TestRow TestRows[] = {
    {"has", Test::Has, "i"},
    {"here", Test::Here, "t"},
    {"in", Test::In, "r"},
    {"been", Test::Been, "r"},
    {"object in", Test::ObjectIn, "or"},
    {"character in", Test::CharacterIn, "cr"},
    {"exists", Test::Exists, "t"},
    {"visible", Test::Visible, "t"},
    {"room on", Test::RoomOn, "r"},
    {"exit", Test::Exit, "rd"},
    {"empty handed", Test::EmptyHanded, ""},
    {"first visit", Test::FirstVisit, ""},
    {"flag", Test::Flag, "f"},
    {"timer", Test::Timer, "y"},
    {"equal", Test::Equal, "vs"},
    {"differ", Test::Differ, "vs"},
    {"contains", Test::Contains, "vs"},
    {"empty", Test::Empty, "v"},
    {"least", Test::Least, "vs"},
    {"more", Test::More, "vs"},
    {"less", Test::Less, "vs"},
    {"amount", Test::Amount, "as"},
    {"turns", Test::Turns, "s"},
    {"chance", Test::Chance, "s"},
    {"ask", Test::Ask, "s"},
};

template <class Row, std::size_t Count>
const Row* FindRow(const Row (&rows)[Count], std::string_view keyword) {
    static const auto* byKeyword = [&] {
        auto* map = new std::unordered_map<std::string_view, const Row*>; // lives as long as the program
        for (const Row& row : rows)
            map->emplace(row.keyword, &row);
        return map;
    }();
    std::string small;
    for (std::string_view rest = keyword; !rest.empty(); rest = TrimLeft(rest)) {
        const std::string_view word = rest.substr(0, rest.find(' '));
        small.append(small.empty() ? "" : " ").append(Lower(word));
        rest.remove_prefix(word.size());
    }
    const auto found = byKeyword->find(small);
    return found == byKeyword->end() ? nullptr : found->second;
}

/// Names and lines are taken apart by the language's own rules; what they mean stands in the rows above.
const CommandLookup& NoCatalogue() {
    static const CommandLookup none{CommandCatalogue()};
    return none;
}

std::uint8_t FindDirection(std::string_view word) {
    std::uint8_t direction = 0;
    while (direction < DirectionCount && !EqualIgnoringCase(word, DirectionNames[direction]))
        ++direction;
    return direction;
}

/// Puts one script into a book.
class Compiler {
public:
    Compiler(Book& book, Names& names, ScriptField field, int index)
        : book_(book),
          names_(names),
          field_(field),
          index_(static_cast<std::int16_t>(index)) {}

    std::int32_t AddAll(std::string_view script) {
        std::int32_t first = -1;
        std::int32_t last = -1;
        ForEachLine(script, [&](TextRange range, int number) {
            line_ = number;
            const std::int32_t node = AddLine(range.Of(script));
            if (node < 0)
                return;
            (last < 0 ? first : book_.nodes[static_cast<std::size_t>(last)].next) = node;
            last = node;
        });
        return first;
    }

private:
    std::int32_t AddLine(std::string_view text) {
        text_ = text;
        const ScriptLine line = TakeApart(text, NoCatalogue());
        if (line.problem != LineProblem::None)
            return AddNothing(Explain(line.problem));
        return line.actions.empty() ? -1 : AddAction(line, 0);
    }

    std::int32_t AddNode(Op op) {
        Node& node = book_.nodes.emplace_back();
        node.op = op;
        node.field = field_;
        node.index = index_;
        node.line = line_;
        return static_cast<std::int32_t>(book_.nodes.size() - 1);
    }

    Node& At(std::int32_t node) { return book_.nodes[static_cast<std::size_t>(node)]; }

    std::int32_t AddNothing(std::string_view why) {
        const std::int32_t node = AddNode(Op::Nothing);
        At(node).arguments.text = why;
        return node;
    }

    std::int32_t AddAction(const ScriptLine& line, std::size_t action) {
        const ScriptAction& parts = line.actions[action];
        if (!parts.IsIf())
            return AddCommand(parts.call);
        const std::int32_t node = AddNode(Op::If);
        At(node).first = static_cast<std::uint32_t>(book_.conditions.size());
        At(node).count = static_cast<std::uint32_t>(parts.conditionCount);
        for (std::size_t k = 0; k < parts.conditionCount; ++k)
            AddCondition(line.conditions[parts.firstCondition + k]);
        const std::int32_t thenNode = AddAction(line, parts.thenAction);
        const std::int32_t elseNode = parts.elseAction == 0 ? -1 : AddAction(line, parts.elseAction);
        At(node).thenNode = thenNode;
        At(node).elseNode = elseNode;
        return node;
    }

    std::int32_t AddCommand(const ScriptCall& call) {
        const std::string_view keyword = call.keyword.Of(text_);
        const CommandRow* row = FindRow(CommandRows, keyword);
        if (row == nullptr)
            return AddNothing("\"" + std::string(keyword) + "\" is no command");
        if (!row->parts.empty() && !call.hasParameter)
            return AddNothing("\"" + std::string(keyword) + "\" needs a parameter in angle brackets");
        const std::int32_t node = AddNode(row->op);
        if (row->op == Op::Pick) {
            At(node).first = static_cast<std::uint32_t>(book_.picks.size());
            for (const std::string_view name : SplitParts(call.parameter.Of(text_), SIZE_MAX))
                if (!name.empty())
                    book_.picks.push_back(names_.Add(Kind::Procedure, name));
            At(node).count = static_cast<std::uint32_t>(book_.picks.size()) - At(node).first;
        } else if (!row->parts.empty())
            Read(row->parts, call.parameter.Of(text_), At(node).arguments);
        if (row->op == Op::EveryObject || row->op == Op::EveryCharacter)
            book_.variables.push_back(names_.Add(Kind::Variable, "thing"));
        return node;
    }

    void AddCondition(const ScriptCondition& parts) {
        BookCondition condition;
        condition.isNegated = parts.isNegated;
        condition.isOr = parts.joiner == Joiner::Or;
        const TestRow* row = FindRow(TestRows, parts.call.keyword.Of(text_));
        if (row == nullptr || (!row->parts.empty() && !parts.call.hasParameter))
            condition.arguments.text = parts.call.keyword.Of(text_);
        else {
            condition.test = row->test;
            if (!row->parts.empty())
                Read(row->parts, parts.call.parameter.Of(text_), condition.arguments);
        }
        book_.conditions.push_back(std::move(condition));
    }

    void Read(std::string_view letters, std::string_view parameter, Arguments& to) {
        if (letters == "s") { // a text alone is printed as it stands, blanks at its ends included
            to.text = parameter;
            return;
        }
        const std::vector<std::string_view> parts = SplitParts(parameter, letters.size());
        for (std::size_t k = 0; k < letters.size(); ++k)
            ReadPart(letters[k], k < parts.size() ? parts[k] : std::string_view(), to);
    }

    void ReadPart(char letter, std::string_view part, Arguments& to) {
        switch (letter) {
        case 's':
        case 'n':
            to.text = part;
            break;
        case 'r':
            to.room = names_.Add(Kind::Room, part);
            break;
        case 'R':
            to.otherRoom = names_.Add(Kind::Room, part);
            break;
        case 'F':
            to.flag = names_.Add(Kind::Flag, part);
            break;
        case 'd':
            to.direction = FindDirection(part);
            break;
        case 't':
        case 'c':
        case 'o':
            if (letter != 'o')
                to.character = names_.Add(Kind::Thing, Names::ThingKey(true, part));
            if (letter != 'c')
                to.object = names_.Add(Kind::Thing, Names::ThingKey(false, part));
            break;
        default:
            to.name = names_.Add(KindOf(letter), part);
            if (letter == 'v')
                book_.variables.push_back(to.name);
        }
    }

    static Kind KindOf(char letter) {
        switch (letter) {
        case 'i':
            return Kind::Item;
        case 'p':
            return Kind::Procedure;
        case 'x':
            return Kind::Text;
        case 'm':
            return Kind::Menu;
        case 'v':
            return Kind::Variable;
        case 'a':
            return Kind::Collectable;
        case 'f':
            return Kind::Flag;
        default:
            return Kind::Timer;
        }
    }

    Book& book_;
    Names& names_;
    ScriptField field_;
    std::int16_t index_;
    std::int32_t line_ = 1;
    std::string_view text_; // the line
};

} // namespace

std::int32_t AddScript(Book& book, Names& names, std::string_view script, ScriptField field, int index) {
    return script.empty() ? -1 : Compiler(book, names, field, index).AddAll(script);
}

void AddWords(Book& book, Names& names, std::string_view text) {
    const std::string folded = Fold(text);
    for (std::string_view rest = folded; !rest.empty();)
        book.words.push_back(names.Add(Kind::Word, TakeWord(rest)));
}

std::vector<std::string_view> SplitParts(std::string_view parameter, std::size_t most) {
    std::vector<std::string_view> parts;
    while (true) {
        const std::size_t end = parts.size() + 1 < most ? parameter.find(';') : std::string_view::npos;
        parts.push_back(Trim(parameter.substr(0, end)));
        if (end == std::string_view::npos)
            return parts;
        parameter.remove_prefix(end + 1);
    }
}

} // namespace zem::play
