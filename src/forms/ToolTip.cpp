#include "forms/ToolTip.h"

namespace zem {

namespace {

constexpr qsizetype MostCharacters = 4096; // A path on Linux may have as many.
constexpr QChar ZeroWidthSpace(0x200B);

} // namespace

QString ToolTipOf(const QString& text) {
    if (text.isEmpty())
        return {};
    QString shown = text.left(MostCharacters);
    if (shown.size() < text.size())
        shown += QChar(u'…');
    shown = shown.toHtmlEscaped();
    shown.replace(u'/', QString(u'/') + ZeroWidthSpace);
    // Only a tag makes Qt take a text for rich text, in which entities are not shown as they stand.
    return QStringLiteral("<p style=\"white-space:pre-wrap\">%1</p>").arg(shown);
}

} // namespace zem
