#pragma once

#include <QDateTime>
#include <QString>

#include <vector>

namespace zem {

/// Why a version was kept. All but the saved ones are kept whatever the limits.
enum class VersionKind {
    Saved,
    BeforeLoss, // before a save that does not come back whole
    Foreign     // of another program, before this one changed it
};

/// Why it was kept, in a few words; empty for a saved one.
QString NoteOf(VersionKind kind);

/// One earlier version of a game's file.
struct FileVersion {
    QString path; // of the copy
    QDateTime time;
    qint64 size = 0;
    VersionKind kind = VersionKind::Saved;
};

/// The earlier versions of the games' files, as copies in a folder for each game.
class Versions {
public:
    // Of one game; the latest version stays in any case.
    static constexpr int MostVersions = 50;
    static constexpr qint64 MostBytes = 100'000'000;

    /// @param folder  of all games; it is made when it is needed
    explicit Versions(const QString& folder) : folder_(folder) {}

    /// Keeps a copy of the file as a version of the game, and drops the oldest ones beyond the limits. False
    /// when it cannot be written.
    /// @param game  the path of the game's file
    /// @param file  the file to copy; the game's own, or the one it has replaced
    bool Keep(const QString& game, const QString& file, VersionKind kind = VersionKind::Saved) const;

    /// Whether one of the versions of the game has the same bytes as the file.
    bool Hold(const QString& game, const QString& file) const;

    /// The versions of a game, the latest first.
    std::vector<FileVersion> List(const QString& game) const;

    /// Renames a version that cannot be read, so that it is listed no longer; returns its new path.
    static QString SetAside(const QString& path);

private:
    QString FolderOf(const QString& game) const;
    void DropOldest(const QString& game) const;

    QString folder_;
};

} // namespace zem
