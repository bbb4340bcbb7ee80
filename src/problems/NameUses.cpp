#include "problems/NameUses.h"

#include "model/Texts.h"
#include "problems/PrintedTexts.h"

namespace zem::problems {

namespace {

bool IsListed(NameKind kind) {
    return kind != NameKind::None && kind != NameKind::Variable && kind != NameKind::Flag &&
           kind != NameKind::Timer && kind != NameKind::File;
}

/// The bytes of the name in a field that holds one.
TextRange NameIn(const std::string& text, FieldKind kind) {
    std::size_t begin = 0;
    if (kind == FieldKind::Target && text.find(';') != std::string::npos)
        begin = text.find(';') + 1;
    return TrimmedRange(text, {begin, text.size()});
}

} // namespace

std::vector<NameUse> FindNameUses(const CheckedGame& game) {
    std::vector<NameUse> uses;
    ForEachText(game.Game(), [&](const Place& place, FieldUse use, const std::string& text) {
        if (use.kind != FieldKind::Reference && use.kind != FieldKind::Exit && use.kind != FieldKind::Target)
            return;
        const TextRange name = NameIn(text, use.kind);
        if (!IsListed(use.names) || name.IsEmpty() || (use.kind == FieldKind::Exit && text == ActionExit))
            return;
        Place at = place;
        at.bytes = name;
        uses.push_back({use.names, name.Of(text), at, nullptr, 0});
    });
    for (const CheckedCall& call : game.Calls())
        for (std::size_t part = 0; part < call.parts.size(); ++part)
            if (IsListed(call.parts[part].kind) && !call.parts[part].range.IsEmpty())
                uses.push_back({call.parts[part].kind, call.Part(part), call.At(part), &call, part});
    return uses;
}

bool IsMadeOfVariables(std::string_view name) {
    bool isMade = false;
    if (HasVariableSign(name))
        ForEachVariable(name, [&](TextRange, char) { return isMade = true; });
    return isMade;
}

} // namespace zem::problems
