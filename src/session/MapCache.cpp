#include "session/MapCache.h"

#include "session/PrivateFiles.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace zem {

namespace {

constexpr const char* Head = "zem-map-places 1";

/// Of what stands in the file; empty when it cannot be read.
QByteArray DigestOf(const QString& path) {
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    return file.open(QIODevice::ReadOnly) && hash.addData(&file) ? hash.result().toHex() : QByteArray();
}

} // namespace

QString MapCache::PathFor(const QString& gameFile) const {
    const QByteArray name =
        QCryptographicHash::hash(QFileInfo(gameFile).absoluteFilePath().toUtf8(), QCryptographicHash::Sha256);
    return folder_ + u'/' + QString::fromLatin1(name.toHex().left(32)) + QLatin1String(".map");
}

std::optional<map::PlacedMap> MapCache::Find(const QString& gameFile, const map::MapGraph& graph) const {
    QFile file(PathFor(gameFile));
    if (gameFile.isEmpty() || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    if (file.readLine().trimmed() != Head || file.readLine().trimmed() != DigestOf(gameFile))
        return std::nullopt;
    map::PlacedMap kept;
    kept.graph = graph;
    for (int room = 0; room < graph.RoomCount(); ++room) {
        const QList<QByteArray> parts = file.readLine().trimmed().split(' ');
        bool isX = false;
        bool isY = false;
        if (parts.size() != 2)
            return std::nullopt;
        const map::Cell cell{parts[0].toInt(&isX), parts[1].toInt(&isY)};
        if (!isX || !isY || map::Length(cell) > 100'000)
            return std::nullopt;
        kept.cells.push_back(cell);
    }
    return kept;
}

void MapCache::Keep(const QString& gameFile, const map::PlacedMap& map) const {
    const QByteArray digest = DigestOf(gameFile);
    if (digest.isEmpty() || !MakePrivateFolder(folder_))
        return;
    const QString path = PathFor(gameFile);
    QFile file(path + QLatin1String(".new"));
    if (!CreatePrivately(file))
        return;
    QByteArray text = QByteArray(Head) + '\n' + digest + '\n';
    for (const map::Cell cell : map.cells)
        text += QByteArray::number(cell.x) + ' ' + QByteArray::number(cell.y) + '\n';
    const bool isWhole = file.write(text) == text.size();
    file.close();
    if (!isWhole) {
        file.remove();
        return;
    }
    QFile::remove(path);
    file.rename(path);
}

} // namespace zem
