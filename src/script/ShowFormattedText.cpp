#include "script/ShowFormattedText.h"

#include "forms/Wrapping.h"
#include "kel/FormatCodes.h"
#include "qt/QtText.h"

#include <QTextCursor>
#include <QTextEdit>

namespace zem {

QColor ScreenColour(int basicColour, const QPalette& palette) {
    const bool isDark = palette.color(QPalette::Base).lightness() < 128;
    switch (basicColour) {
    case 2:
        return isDark ? QColor(0x55, 0xCC, 0x55) : QColor(0x00, 0x80, 0x00);
    case 9:
        return isDark ? QColor(0x8A, 0xA0, 0xFF) : QColor(0x20, 0x40, 0xE0);
    case 12:
        return isDark ? QColor(0xFF, 0x70, 0x70) : QColor(0xD8, 0x20, 0x20);
    case 14:
        return isDark ? QColor(0xFF, 0xE0, 0x60) : QColor(0x8A, 0x6A, 0x00);
    default: // Black, and every other number, is the control's own colour.
        return palette.color(QPalette::Text);
    }
}

void ShowFormattedText(std::string_view text, QTextEdit& control) {
    control.clear();
    ChooseWrapping(control, ToQt(text));
    QTextCursor cursor(control.document());
    ForEachFormattedRun(text, [&](std::string_view run, const TextFormat& format) {
        QTextCharFormat look;
        look.setFontWeight(format.bold ? QFont::Bold : QFont::Normal);
        look.setFontItalic(format.italic);
        look.setFontUnderline(format.underline);
        look.setForeground(ScreenColour(format.basicColour, control.palette()));
        cursor.insertText(ToQt(run).replace(QLatin1String("\r\n"), QLatin1String("\n")), look);
    });
    control.moveCursor(QTextCursor::Start);
}

} // namespace zem
