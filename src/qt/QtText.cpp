#include "qt/QtText.h"

#include "base/KelError.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

namespace zem {

namespace {

// The characters of the bytes 0x80 to 0x9F. Five of them are not in Windows-1252; they stand for the control
// characters of the same number, so that every byte survives.
constexpr std::array<char16_t, 32> UpperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

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
        return QChar(byte >= 0x80 && byte < 0xA0 ? UpperControls[byte - 0x80U] : char16_t{byte});
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
