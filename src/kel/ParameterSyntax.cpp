#include "kel/ParameterSyntax.h"

#include "base/LineText.h"

#include <utility>

namespace zem {

namespace {

constexpr std::pair<std::string_view, NameKind> Kinds[] = {
    {"room", NameKind::Room},
    {"object", NameKind::Object},
    {"character", NameKind::Character},
    {"thing", NameKind::Thing},
    {"item", NameKind::Item},
    {"procedure", NameKind::Procedure},
    {"text section", NameKind::TextSection},
    {"menu", NameKind::Menu},
    {"variable", NameKind::Variable},
    {"collectable", NameKind::Collectable},
    {"flag", NameKind::Flag},
    {"timer", NameKind::Timer},
    {"file", NameKind::File},
};

NameKind KindOfPart(std::string_view part) {
    for (const auto& [word, kind] : Kinds)
        if (EqualIgnoringCase(part, word))
            return kind;
    return NameKind::None;
}

} // namespace

ParameterSyntax ReadSyntax(std::string_view rawSyntax) {
    ParameterSyntax syntax;
    if (Trim(rawSyntax) == "!")
        return syntax;
    std::string_view previous;
    for (const std::string_view piece : SplitAt(rawSyntax, ";")) {
        const std::string_view part = Trim(piece);
        syntax.parts.push_back(KindOfPart(part));
        syntax.lastRepeats = syntax.parts.size() > 1 && EqualIgnoringCase(part, previous);
        previous = part;
    }
    return syntax;
}

} // namespace zem
