#include "session/PrivateFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace zem {

namespace {

constexpr qint64 BlockSize = 65536;

bool MakeFolder(const QString& path) {
#ifdef Q_OS_UNIX
    return mkdir(QFile::encodeName(path).constData(), 0700) == 0;
#else
    return QDir().mkdir(path); // in the user's own part of the disk, which is private there
#endif
}

bool CopyBlocks(QFile& from, QFile& to) {
    while (!from.atEnd()) {
        const QByteArray block = from.read(BlockSize);
        if (block.isEmpty() || to.write(block) != block.size())
            return false;
    }
    return to.flush();
}

} // namespace

bool MakePrivateFolder(const QString& path) {
    const QFileInfo folder(path);
    if (folder.isDir())
        return QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const QString parent = folder.absolutePath();
    const bool hasParent = QFileInfo(parent).isDir() || MakePrivateFolder(parent);
    return hasParent && (MakeFolder(path) || QFileInfo(path).isDir()); // another program may have been first
}

bool CreatePrivately(QFile& file) {
    QFile::remove(file.fileName());
#ifdef Q_OS_UNIX
    const int handle =
        open(QFile::encodeName(file.fileName()).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0600);
    return handle >= 0 && close(handle) == 0 && file.open(QIODevice::WriteOnly);
#else
    return file.open(QIODevice::WriteOnly | QIODevice::NewOnly);
#endif
}

bool CopyPrivately(const QString& from, const QString& to) {
    QFile in(from);
    QFile out(to + QLatin1String(".new"));
    if (!in.open(QIODevice::ReadOnly) || !CreatePrivately(out))
        return false;
    const bool isCopied = CopyBlocks(in, out);
    out.close();
    if (isCopied && out.error() == QFileDevice::NoError && QFile::rename(out.fileName(), to))
        return true;
    out.remove();
    return false;
}

} // namespace zem
