#pragma once

#include <QByteArray>
#include <QString>

namespace zem {

/// What a file was at a moment, to tell later whether somebody has changed it.
struct FileStamp {
    qint64 size = -1;    // -1 for a file that is not there
    qint64 modified = 0; // milliseconds since 1970
    QByteArray hash;     // of its content

    /// The stamp of a file as it is now; of one that cannot be read, as if it were not there.
    static FileStamp Of(const QString& path);

    bool Exists() const { return size >= 0; }

    /// Whether the file is another now. One that was only written anew with the same content is not.
    bool IsOutdated(const QString& path) const;

    bool operator==(const FileStamp&) const = default;
};

} // namespace zem
