#include "forms/StorablePaste.h"

#include "qt/QtText.h"

#include <algorithm>
#include <iterator>

namespace zem {

namespace {

constexpr qsizetype MostNamed = 5; // characters in one message

bool IsStorable(QChar character) {
    return !UnstorableCharacter(QString(character));
}

/// The character and its number: "\"\u0394\" (U+0394)".
QString Describe(const QString& character) {
    const char32_t code =
        character.size() == 2 ? QChar::surrogateToUcs4(character[0], character[1]) : character[0].unicode();
    return QStringLiteral("\"%1\" (U+%2)")
        .arg(character, QString::number(static_cast<uint>(code), 16).toUpper().rightJustified(4, u'0'));
}

/// The characters that a game file cannot hold, each once, and one more than a message names of very many.
QStringList Unstorable(const QString& text) {
    QStringList named;
    for (qsizetype at = 0; at < text.size() && named.size() <= MostNamed; ++at) {
        if (IsStorable(text[at]))
            continue;
        const bool isPair =
            text[at].isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate();
        const QString character = Describe(text.mid(at, isPair ? 2 : 1));
        at += isPair ? 1 : 0;
        if (!named.contains(character))
            named.append(character);
    }
    return named;
}

QString Problem(QStringList named) {
    if (named.size() > MostNamed)
        named.last() = QStringLiteral("others");
    return QStringLiteral(
               "The characters %1 cannot be kept in a game file, which holds only Western European "
               "letters and signs.")
        .arg(named.join(QLatin1String(", ")));
}

QString StorablePart(const QString& text) {
    QString rest;
    rest.reserve(text.size());
    std::copy_if(text.begin(), text.end(), std::back_inserter(rest), IsStorable);
    return rest;
}

} // namespace

std::optional<QString> AskStorablePaste(const QString& text, Dialogs& dialogs, QWidget* parent) {
    const QStringList unstorable = Unstorable(text);
    if (unstorable.isEmpty())
        return text;
    const QString problem = unstorable.size() == 1 ? *UnstorableCharacter(text) : Problem(unstorable);
    const QString title = QLatin1String(DefaultTitle);
    const QString rest = StorablePart(text);
    if (rest.isEmpty()) {
        dialogs.ShowMessageBox(parent, problem, title, QMessageBox::Ok, QMessageBox::Warning);
        return std::nullopt;
    }
    const int answer = dialogs.AskChoice(parent, problem, title, {QStringLiteral("Paste the rest")});
    return answer == 0 ? std::optional(rest) : std::nullopt;
}

} // namespace zem
