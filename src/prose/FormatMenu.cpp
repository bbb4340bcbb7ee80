#include "prose/FormatMenu.h"

#include "kel/ProseParts.h"
#include "qt/QtText.h"

#include <QMenu>

namespace zem {

const std::vector<TextLook>& PlainLooks() {
    static const std::vector<TextLook> Looks = {{"&Bold", "|b", "|xb", "Ctrl+B"},
                                                {"&Italic", "|i", "|xi", "Ctrl+I"},
                                                {"&Underlined", "|u", "|xu", "Ctrl+U"}};
    return Looks;
}

const std::vector<TextLook>& ColourLooks() {
    static const std::vector<TextLook> Looks = {
        {"&Red", "|cr", "|cb"}, {"&Green", "|cg", "|cb"}, {"B&lue", "|cl", "|cb"}, {"&Yellow", "|cy", "|cb"}};
    return Looks;
}

/// The reader's own size is the one that has no number.
const std::vector<TextLook>& SizeLooks() {
    static const std::vector<TextLook> Looks = {{"&Small (9)", "|s09", "|s00"},
                                                {"&Large (16)", "|s16", "|s00"},
                                                {"&Title (20)", "|s20", "|s00"},
                                                {"&Huge (28)", "|s28", "|s00"}};
    return Looks;
}

/// The selection, wider where it begins or ends inside a code or a variable, which would be torn by other
/// codes; a caret goes behind it.
static ProseBox::Selection WithWholeCodes(const QString& text, ProseBox::Selection selected) {
    const bool isCaret = selected.begin == selected.end;
    ForEachProsePart(FromQt(text), [&](const ProsePart& part) { // a byte for each character
        const int begin = static_cast<int>(part.range.begin);
        const int end = static_cast<int>(part.range.end);
        if (part.kind == ProseKind::Word)
            return;
        if (begin < selected.begin && selected.begin < end)
            selected.begin = isCaret ? end : begin;
        if (begin < selected.end && selected.end < end)
            selected.end = end;
    });
    return selected;
}

void ApplyLook(const ProseBox& box, const TextLook& look) {
    if (!box.CanBeChanged())
        return;
    const QString begin = QLatin1String(look.begin);
    const QString end = QLatin1String(look.end);
    const QString text = box.Text();
    const ProseBox::Selection selected = WithWholeCodes(text, box.Selected());
    const QString inner = text.mid(selected.begin, selected.end - selected.begin);
    const int before = static_cast<int>(begin.size());
    const int behind = static_cast<int>(end.size());
    if (inner.size() >= before + behind && inner.startsWith(begin) && inner.endsWith(end)) {
        const QString bare = inner.mid(before, inner.size() - before - behind);
        box.Replace(selected.begin, selected.end, bare);
        box.Select(selected.begin, selected.begin + static_cast<int>(bare.size()));
        return;
    }
    const bool isAround = text.left(selected.begin).endsWith(begin) && text.mid(selected.end).startsWith(end);
    if (isAround) {
        box.Replace(selected.begin - before, selected.end + behind, inner);
        box.Select(selected.begin - before, selected.end - before);
        return;
    }
    box.Replace(selected.begin, selected.end, begin + inner + end);
    box.Select(selected.begin + before, selected.end + before);
}

void AddLooks(QMenu& menu, const ProseBox& box) {
    const auto add = [&box](QMenu& to, const std::vector<TextLook>& looks) {
        for (const TextLook& look : looks) {
            QAction* action = to.addAction(QLatin1String(look.caption));
            action->setObjectName(QStringLiteral("look_") + QLatin1String(look.begin + 1));
            if (*look.key != '\0')
                action->setShortcut(QKeySequence(QLatin1String(look.key)));
            // The box has the key itself, so that it works while no menu is open.
            action->setShortcutContext(Qt::WidgetShortcut);
            QObject::connect(action, &QAction::triggered, &box.Widget(),
                             [box, look] { ApplyLook(box, look); });
        }
    };
    add(menu, PlainLooks());
    add(*menu.addMenu(QStringLiteral("&Colour")), ColourLooks());
    add(*menu.addMenu(QStringLiteral("&Size")), SizeLooks());
}

} // namespace zem
