#include "windows/BeginWith.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace zem {

namespace {

constexpr qint64 HeadOfFile = 4096; // bytes, in which the title and the description stand

QString LatinText(const QByteArray& bytes) {
    return QString::fromLatin1(bytes).trimmed();
}

/// What stands behind a word at the beginning of a comment: "'title A house".
QString HeadLine(const QByteArray& head, const char* word) {
    for (const QByteArray& line : head.split('\n'))
        if (line.startsWith(word))
            return LatinText(line.mid(static_cast<qsizetype>(qstrlen(word))));
    return {};
}

/// The name in the first block of a game.
QString NameInGame(const QByteArray& head) {
    const QString line = HeadLine(head, "define game <");
    return line.left(line.indexOf(u'>'));
}

void AddFolder(const QString& folder, bool isTemplate, std::vector<GameToBegin>& games) {
    for (const QFileInfo& file :
         QDir(folder).entryInfoList({QStringLiteral("*.kel")}, QDir::Files, QDir::Size | QDir::Reversed)) {
        QFile game(file.filePath());
        if (!game.open(QIODevice::ReadOnly))
            continue;
        const QByteArray head = game.read(HeadOfFile);
        const QString title = isTemplate ? HeadLine(head, "'title ") : NameInGame(head);
        const QString about = isTemplate ? HeadLine(head, "'about ")
                                         : QStringLiteral("A finished game to look at and to change.");
        games.push_back(
            {title.isEmpty() ? file.completeBaseName() : title, about, file.filePath(), isTemplate});
    }
}

} // namespace

std::vector<GameToBegin> GamesToBegin(const QString& programFolder) {
    std::vector<GameToBegin> games;
    AddFolder(programFolder + QLatin1String("/templates"), true, games);
    for (const char* folder : {"/samples", "/../../share/zem/samples"})
        if (QDir(programFolder + QLatin1String(folder)).exists()) {
            AddFolder(programFolder + QLatin1String(folder), false, games);
            break;
        }
    return games;
}

} // namespace zem
