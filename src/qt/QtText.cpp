#include "qt/QtText.h"

#include "base/KelError.h"
#include "base/TextEncoding.h"

#include <QFile>

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace zem {

namespace {

std::optional<char> ToByte(char16_t unit) {
    if (unit < 0x80) // This holds for most characters.
        return static_cast<char>(unit);
    const auto* found = std::find(UpperControls.begin(), UpperControls.end(), unit);
    if (found != UpperControls.end())
        return static_cast<char>(0x80 + std::distance(UpperControls.begin(), found));
    if (unit >= 0xA0 && unit <= 0xFF)
        return static_cast<char>(unit);
    return std::nullopt;
}

} // namespace

QString ToQt(std::string_view text) {
    QString result(static_cast<qsizetype>(text.size()), Qt::Uninitialized);
    std::transform(text.begin(), text.end(), result.begin(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return QChar(byte >= 0x80 && byte < 0xA0 ? static_cast<char16_t>(UpperControls[byte - 0x80U])
                                                 : char16_t{byte});
    });
    return result;
}

std::string FromQt(const QString& text) {
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(text.size()));
    for (const QChar character : text) {
        const std::optional<char> byte = ToByte(character.unicode());
        if (!byte)
            throw KelError("the character with the number " + std::to_string(character.unicode()) +
                           " cannot be kept in a game file");
        bytes.push_back(*byte);
    }
    return bytes;
}

std::optional<QString> UnstorableCharacter(const QString& text) {
    const auto* found =
        std::find_if(text.begin(), text.end(), [](QChar character) { return !ToByte(character.unicode()); });
    if (found == text.end())
        return std::nullopt;
    const bool isPair = found->isHighSurrogate() && std::next(found) != text.end();
    const QString character(found, isPair ? 2 : 1);
    const char32_t code = isPair ? QChar::surrogateToUcs4(*found, *std::next(found)) : found->unicode();
    return QStringLiteral(
               "The character \"%1\" (U+%2) cannot be kept in a game file, which holds only Western "
               "European letters and signs.")
        .arg(character, QString::number(static_cast<uint>(code), 16).toUpper().rightJustified(4, u'0'));
}

QString OnOneLine(QString text) {
    std::replace_if(
        text.begin(), text.end(), [](QChar character) { return character.unicode() < 0x20; }, u' ');
    return text;
}

QString PathToQt(const std::string& path) {
    return QFile::decodeName(QByteArray::fromStdString(path));
}

std::string PathFromQt(const QString& path) {
    return QFile::encodeName(path).toStdString();
}

} // namespace zem
