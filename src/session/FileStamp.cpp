#include "session/FileStamp.h"

#include <QCryptographicHash>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>

namespace zem {

FileStamp FileStamp::Of(const QString& path) {
    QFile file(path);
    QCryptographicHash hash(QCryptographicHash::Sha1);
    const QFileInfo info(path);
    if (!info.isFile() || !file.open(QIODevice::ReadOnly) || !hash.addData(&file))
        return {};
    return {info.size(), info.lastModified().toMSecsSinceEpoch(), hash.result()};
}

bool FileStamp::IsOutdated(const QString& path) const {
    const QFileInfo info(path);
    if (!info.exists() || !Exists())
        return info.exists() != Exists();
    const bool looksSame = info.size() == size && info.lastModified().toMSecsSinceEpoch() == modified;
    return !looksSame && Of(path).hash != hash;
}

} // namespace zem
