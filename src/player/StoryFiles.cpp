#include "player/StoryFiles.h"

#include "play/FileNames.h"
#include "qt/QtText.h"

#include <QDir>
#include <QFileInfo>
#include <QImageReader>

namespace zem {

namespace {

constexpr int LargestSide = 8000; // pixels

} // namespace

QString StoryFilePath(const QString& folder, const std::string& name) {
    if (folder.isEmpty() || !play::IsPlainFileName(name))
        return {};
    const QFileInfo file(QDir(folder), ToQt(name));
    const QString whole = file.canonicalFilePath();
    const QString home = QFileInfo(folder).canonicalFilePath();
    if (whole.isEmpty() || !file.isFile() || QFileInfo(whole).path() != home)
        return {};
    return whole;
}

QImage ReadStoryPicture(const QString& folder, const std::string& name) {
    const QString path = StoryFilePath(folder, name);
    if (path.isEmpty() || !play::IsPictureName(name))
        return {};
    QImageReader reader(path);
    reader.setAutoTransform(true);
    const QSize size = reader.size();
    if (!size.isValid() || size.width() > LargestSide || size.height() > LargestSide)
        return {};
    return reader.read();
}

std::string FromQtForPlayer(const QString& line) {
    std::string text;
    for (qsizetype at = 0; at < line.size();) {
        const bool isPair = line[at].isHighSurrogate() && at + 1 < line.size();
        const QString letter = line.mid(at, isPair ? 2 : 1);
        text += UnstorableCharacter(letter) ? std::string("?") : FromQt(letter);
        at += letter.size();
    }
    return text;
}

} // namespace zem
