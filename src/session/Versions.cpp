#include "session/Versions.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>

namespace zem {

namespace {

constexpr const char* TimeFormat = "yyyyMMdd-HHmmss-zzz";
constexpr const char* PinnedSuffix = ".pinned.kel";

} // namespace

QString Versions::FolderOf(const QString& game) const {
    const QFileInfo file(game);
    const QString whole =
        file.canonicalFilePath().isEmpty() ? file.absoluteFilePath() : file.canonicalFilePath();
    const QByteArray hash =
        QCryptographicHash::hash(whole.toUtf8(), QCryptographicHash::Sha1).toHex().left(12);
    return folder_ + u'/' + file.completeBaseName() + u'-' + QString::fromLatin1(hash);
}

bool Versions::Keep(const QString& game, const QString& file, bool pinned) const {
    const QDir folder(FolderOf(game));
    const QString time = QDateTime::currentDateTimeUtc().toString(QLatin1String(TimeFormat));
    const QString path = folder.filePath(time + QLatin1String(pinned ? PinnedSuffix : ".kel"));
    const QString unfinished = path + QLatin1String(".new");
    const bool kept = folder.mkpath(QStringLiteral(".")) && QFile::copy(file, unfinished) &&
                      QFile::rename(unfinished, path);
    if (!kept)
        QFile::remove(unfinished);
    DropOldest(game);
    return kept;
}

std::vector<FileVersion> Versions::List(const QString& game) const {
    std::vector<FileVersion> versions;
    const QDir folder(FolderOf(game));
    for (const QFileInfo& file :
         folder.entryInfoList({QStringLiteral("*.kel")}, QDir::Files, QDir::Name | QDir::Reversed)) {
        QDateTime time = QDateTime::fromString(file.fileName().left(19), QLatin1String(TimeFormat));
        time.setTimeSpec(Qt::UTC);
        if (time.isValid())
            versions.push_back({file.filePath(), time.toLocalTime(), file.size(),
                                file.fileName().endsWith(QLatin1String(PinnedSuffix))});
    }
    return versions;
}

QString Versions::SetAside(const QString& path) {
    QString aside = path + QLatin1String(".damaged");
    QFile::rename(path, aside);
    return aside;
}

void Versions::DropOldest(const QString& game) const {
    int count = 0;
    qint64 bytes = 0;
    for (const FileVersion& version : List(game)) {
        if (version.isPinned)
            continue;
        ++count;
        bytes += version.size;
        if (count > 1 && (count > MostVersions || bytes > MostBytes))
            QFile::remove(version.path);
    }
}

} // namespace zem
