#include "session/Versions.h"

#include "files/FileBytes.h"
#include "qt/QtText.h"
#include "session/PrivateFiles.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace zem {

namespace {

constexpr const char* TimeFormat = "yyyyMMdd-HHmmss-zzz";

/// The ends of the names of versions, in the order of VersionKind.
constexpr const char* Suffixes[] = {".kel", ".pinned.kel", ".foreign.kel"};

VersionKind KindOf(const QString& name) {
    for (const VersionKind kind : {VersionKind::BeforeLoss, VersionKind::Foreign})
        if (name.endsWith(QLatin1String(Suffixes[static_cast<int>(kind)])))
            return kind;
    return VersionKind::Saved;
}

} // namespace

QString NoteOf(VersionKind kind) {
    switch (kind) {
    case VersionKind::Saved:
        break;
    case VersionKind::BeforeLoss:
        return QStringLiteral("before a save that does not come back whole");
    case VersionKind::Foreign:
        return QStringLiteral("before Zem changed it");
    }
    return {};
}

QString Versions::FolderOf(const QString& game) const {
    const QFileInfo file(game);
    const QString whole =
        file.canonicalFilePath().isEmpty() ? file.absoluteFilePath() : file.canonicalFilePath();
    const QByteArray hash =
        QCryptographicHash::hash(whole.toUtf8(), QCryptographicHash::Sha1).toHex().left(12);
    return folder_ + u'/' + file.completeBaseName() + u'-' + QString::fromLatin1(hash);
}

bool Versions::Keep(const QString& game, const QString& file, VersionKind kind) const {
    const QString folder = FolderOf(game);
    const QString time = QDateTime::currentDateTimeUtc().toString(QLatin1String(TimeFormat));
    const QString path = folder + u'/' + time + QLatin1String(Suffixes[static_cast<int>(kind)]);
    const bool isKept = MakePrivateFolder(folder_) && MakePrivateFolder(folder) && CopyPrivately(file, path);
    DropOldest(game);
    return isKept;
}

bool Versions::Hold(const QString& game, const QString& file) const {
    const std::vector<FileVersion> versions = List(game);
    return std::any_of(versions.begin(), versions.end(), [&](const FileVersion& version) {
        return version.size == QFileInfo(file).size() &&
               HaveSameBytes(PathFromQt(version.path), PathFromQt(file));
    });
}

std::vector<FileVersion> Versions::List(const QString& game) const {
    std::vector<FileVersion> versions;
    const QDir folder(FolderOf(game));
    for (const QFileInfo& file :
         folder.entryInfoList({QStringLiteral("*.kel")}, QDir::Files, QDir::Name | QDir::Reversed)) {
        QDateTime time = QDateTime::fromString(file.fileName().left(19), QLatin1String(TimeFormat));
        time.setTimeSpec(Qt::UTC);
        if (time.isValid())
            versions.push_back({file.filePath(), time.toLocalTime(), file.size(), KindOf(file.fileName())});
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
        if (version.kind != VersionKind::Saved)
            continue;
        ++count;
        bytes += version.size;
        if (count > 1 && (count > MostVersions || bytes > MostBytes))
            QFile::remove(version.path);
    }
}

} // namespace zem
