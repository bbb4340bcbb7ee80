#pragma once

class QFile;
class QString;

/// Folders and files that only their owner can read, from the first moment on: copies of games hold what
/// their authors may not want to show.
namespace zem {

/// Makes the folder and those above it that are missing; the folder itself is private afterwards, even when
/// it was there before. False when that cannot be done.
bool MakePrivateFolder(const QString& path);

/// Creates the file and opens it for writing; what is there of the name is removed. False when that cannot be
/// done.
bool CreatePrivately(QFile& file);

/// Copies a file into a private one, by way of another name so that the copy is whole when it is there. False
/// when that cannot be done.
bool CopyPrivately(const QString& from, const QString& to);

} // namespace zem
