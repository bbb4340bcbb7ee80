#include "session/Recovery.h"

#include "base/SystemError.h"
#include "base/TextFile.h"
#include "files/SyncToDisk.h"
#include "model/Snapshot.h"
#include "qt/QtText.h"
#include "session/PrivateFiles.h"

#include <QDataStream>
#include <QDir>
#include <QFileInfo>
#include <QUuid>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

namespace zem {

namespace {

constexpr int Delay = 400; // milliseconds from a change to its copy; a second is promised
constexpr const char* Unfinished = ".new";
constexpr int LongestNumber = 10; // digits of a size that can be one

QString NewPath(const QString& folder) {
    return folder + u'/' + QUuid::createUuid().toString(QUuid::WithoutBraces) + QLatin1String(".recovery");
}

QString LockOf(const QString& path) {
    return path + QLatin1String(".lock");
}

/// A lock that is good as long as its program runs.
std::unique_ptr<QLockFile> MakeLock(const QString& path) {
    auto lock = std::make_unique<QLockFile>(LockOf(path));
    lock->setStaleLockTime(0);
    return lock;
}

void WriteNames(QDataStream& stream, const std::vector<NameChange>& names) {
    stream << static_cast<quint32>(names.size());
    for (const NameChange& name : names)
        stream << static_cast<qint32>(name.kind) << QByteArray::fromStdString(name.from)
               << QByteArray::fromStdString(name.to);
}

/// None where the copy has none, as those of earlier versions.
std::vector<NameChange> ReadNames(QDataStream& stream) {
    std::vector<NameChange> names;
    quint32 count = 0;
    stream >> count;
    for (; count > 0 && stream.status() == QDataStream::Ok; --count) {
        qint32 kind = 0;
        QByteArray from;
        QByteArray to;
        stream >> kind >> from >> to;
        if (stream.status() == QDataStream::Ok)
            names.push_back({static_cast<NameKind>(kind), from.toStdString(), to.toStdString()});
    }
    return names;
}

/// Writes the stamp with the names, then the game. What is written stands beside the old copy and then takes
/// its place, so that one of the two is always whole.
/// @return what went wrong
std::optional<QString> WriteCopy(const QString& path, const GameModel& game, const FileStamp& stamp,
                                 const std::vector<NameChange>& names) {
    QByteArray head;
    QDataStream stream(&head, QIODevice::WriteOnly);
    stream << stamp.size << stamp.modified << stamp.hash;
    WriteNames(stream, names);
    const std::string snapshot = WriteSnapshot(game);
    const QString folder = QFileInfo(path).absolutePath();
    if (!MakePrivateFolder(folder))
        return QStringLiteral("the folder %1 cannot be made").arg(folder);
    QFile file(path + QLatin1String(Unfinished));
    if (!CreatePrivately(file))
        return ToQt(DescribeSystemError(errno));
    file.write(QByteArray::number(head.size()) + '\n' + head);
    file.write(snapshot.data(), static_cast<qint64>(snapshot.size()));
    file.close();
    if (file.error() != QFileDevice::NoError)
        return file.errorString();
    std::error_code error = SyncFile(PathFromQt(file.fileName()));
    if (!error)
        std::filesystem::rename(PathFromQt(file.fileName()), PathFromQt(path), error);
    return error ? std::optional(ToQt(DescribeSystemError(error.value()))) : std::nullopt;
}

/// Throws KelError for a file that is no copy.
RecoveryCopy ReadCopy(const QString& path) {
    const std::string bytes = ReadFile(PathFromQt(path));
    std::string_view rest = bytes;
    const std::string_view size = TakeLine(rest).substr(0, LongestNumber);
    const int number = QByteArray(size.data(), static_cast<qsizetype>(size.size())).toInt();
    const auto headSize = static_cast<std::size_t>(std::max(number, 0));
    if (headSize > rest.size())
        throw KelError("the copy ends too early");
    RecoveryCopy copy;
    const QByteArray head(rest.data(), static_cast<qsizetype>(headSize));
    QDataStream stream(head);
    stream >> copy.stamp.size >> copy.stamp.modified >> copy.stamp.hash;
    copy.names = ReadNames(stream);
    copy.game = ReadSnapshot(rest.substr(headSize));
    copy.path = path;
    copy.time = QFileInfo(path).lastModified();
    return copy;
}

} // namespace

Recovery::Recovery(GameSession& session, const OpenEdits& edits, const QString& folder)
    : session_(session),
      edits_(edits),
      folder_(folder),
      path_(NewPath(folder)),
      lock_(MakeLock(path_)) {
    pool_.setMaxThreadCount(1);
    timer_.setSingleShot(true);
    timer_.setInterval(Delay);
    connect(&timer_, &QTimer::timeout, this, &Recovery::CatchUp);
    connect(&edits, &OpenEdits::Opened, this, &Recovery::Schedule);
    connect(&session, &GameSession::Changed, this, &Recovery::GameChanged);
    connect(&session, &GameSession::SaveMissed, this, &Recovery::KeepForGood);
    connect(&session, &GameSession::GameLost, this, &Recovery::KeepLostGame);
    connect(&session, &GameSession::Saved, this, [this] {
        isWanted_ = false;
        EndChanges();
    });
    connect(&session, &GameSession::Replaced, this, &Recovery::EndChanges);
}

Recovery::~Recovery() {
    EndChanges();
    pool_.waitForDone();
}

/// A change while one waits already goes into the same copy: it is never later than promised.
void Recovery::Schedule() {
    if (!timer_.isActive())
        timer_.start();
}

/// Whether the game of which there is something to lose is that of a failed load: until the author goes on
/// with another.
bool Recovery::IsGameLost() const {
    return session_.LostGame() != nullptr && !session_.Game().Modified;
}

/// Makes the copy hold what there is to lose.
void Recovery::CatchUp() {
    if (isWriting_) {
        Schedule();
        return;
    }
    const GameModel game = IsGameLost() ? session_.LostGame()->game : edits_.Preview();
    if (!IsNeeded(game))
        Remove(); // everything was undone
    else if (!written_ || !SameGame(game, *written_))
        StartWriting(game);
    if (!edits_.IsEmpty())
        Schedule(); // nothing tells when the author types
}

void Recovery::StartWriting(const GameModel& game) {
    written_ = game;
    isWriting_ = true;
    MakePrivateFolder(folder_); // where it cannot be made, writing the copy says so
    if (!lock_->isLocked())
        lock_->tryLock(0);
    pool_.start([this, path = path_, game,
                 stamp = IsGameLost() ? session_.LostGame()->stamp : session_.Stamp(),
                 names = names_ && !IsGameLost() ? names_() : std::vector<NameChange>()] {
        std::optional<QString> problem;
        try {
            problem = WriteCopy(path, game, stamp, names);
        } catch (const std::exception& error) { // which nobody would catch on this thread
            problem = QLatin1String(error.what());
        }
        isWriting_ = false;
        if (problem)
            QMetaObject::invokeMethod(this, [this, problem] {
                if (!std::exchange(hasFailed_, true))
                    emit Failed(*problem);
            });
    });
}

void Recovery::WriteNow() {
    timer_.stop();
    pool_.waitForDone();
    CatchUp();
    pool_.waitForDone();
}

bool Recovery::IsNeeded(const GameModel& game) const {
    return game.Modified || isFileLacking_ || (!edits_.IsEmpty() && !SameGame(game, session_.Game()));
}

void Recovery::KeepDespiteSave() {
    isFileLacking_ = true;
    Schedule();
}

/// The author goes on: what was kept for another reason is not overwritten.
void Recovery::GameChanged() {
    isWanted_ = false;
    if (std::exchange(isOfLostGame_, false))
        SetAside();
    Schedule();
}

void Recovery::KeepForGood() {
    WriteNow();
    isWanted_ = true;
}

void Recovery::KeepLostGame() {
    WriteNow();
    isOfLostGame_ = written_.has_value();
}

void Recovery::EndChanges() {
    isFileLacking_ = false;
    isOfLostGame_ = false;
    if (std::exchange(isWanted_, false))
        SetAside();
    else
        Remove();
}

/// Leaves the copy to the next start of the program.
void Recovery::SetAside() {
    timer_.stop();
    pool_.waitForDone();
    if (!std::exchange(written_, std::nullopt))
        return;
    path_ = NewPath(folder_);
    lock_ = MakeLock(path_); // which lets go of the other
}

void Recovery::Remove() {
    timer_.stop();
    if (!std::exchange(written_, std::nullopt))
        return;
    pool_.start([path = path_] { QFile::remove(path); });
}

/// Removes what programs that were killed have left beside their copies.
void Recovery::RemoveRemains() const {
    const QDir folder(folder_);
    for (const QString& name : folder.entryList({QStringLiteral("*.recovery.lock")}, QDir::Files)) {
        const QString copy = folder.filePath(name.chopped(5));
        const std::unique_ptr<QLockFile> lock = MakeLock(copy);
        if (copy != path_ && lock->tryLock(0)) // a lock that is let go of is removed
            QFile::remove(copy + QLatin1String(Unfinished));
    }
}

std::vector<RecoveryCopy> Recovery::Abandoned(QStringList& damaged) const {
    RemoveRemains();
    std::vector<RecoveryCopy> copies;
    const QDir folder(folder_);
    for (const QString& name : folder.entryList({QStringLiteral("*.recovery")}, QDir::Files, QDir::Time)) {
        const QString path = folder.filePath(name);
        std::shared_ptr<QLockFile> lock = MakeLock(path);
        if (path == path_ || !lock->tryLock(0))
            continue; // its program runs
        try {
            copies.push_back(ReadCopy(path));
            copies.back().lock = std::move(lock);
        } catch (const std::exception&) {
            const QString aside = path + QLatin1String(".damaged");
            QFile::rename(path, aside);
            damaged.append(aside);
        }
    }
    return copies;
}

void Recovery::Discard(RecoveryCopy& copy) {
    QFile::remove(copy.path);
    copy.lock.reset();
}

} // namespace zem
