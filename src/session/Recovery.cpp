#include "session/Recovery.h"

#include "base/TextFile.h"
#include "forms/QtText.h"
#include "model/Snapshot.h"

#include <QDataStream>
#include <QDir>
#include <QFileInfo>
#include <QSaveFile>
#include <QUuid>

#include <algorithm>
#include <optional>
#include <utility>

namespace zem {

namespace {

constexpr int Delay = 400;        // milliseconds from a change to its copy; a second is promised
constexpr int LongestNumber = 10; // digits of a size that can be one

QString LockOf(const QString& path) {
    return path + QLatin1String(".lock");
}

/// The stamp, then the game. Written beside the old copy and renamed, so that one of the two is always whole.
std::optional<QString> WriteCopy(const QString& path, const GameModel& game, const FileStamp& stamp) {
    QByteArray head;
    QDataStream(&head, QIODevice::WriteOnly) << stamp.size << stamp.modified << stamp.hash;
    const std::string snapshot = WriteSnapshot(game);
    QSaveFile file(path);
    const bool written = file.open(QIODevice::WriteOnly) &&
                         file.write(QByteArray::number(head.size()) + '\n' + head) > 0 &&
                         file.write(snapshot.data(), static_cast<qint64>(snapshot.size())) ==
                             static_cast<qint64>(snapshot.size()) &&
                         file.commit();
    return written ? std::nullopt : std::optional(file.errorString());
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
    QDataStream(head) >> copy.stamp.size >> copy.stamp.modified >> copy.stamp.hash;
    copy.game = ReadSnapshot(rest.substr(headSize));
    copy.path = path;
    copy.time = QFileInfo(path).lastModified();
    return copy;
}

} // namespace

Recovery::Recovery(GameSession& session, const QString& folder)
    : session_(session),
      folder_(folder),
      path_(folder + u'/' + QUuid::createUuid().toString(QUuid::WithoutBraces) + QLatin1String(".recovery")),
      lock_(std::make_unique<QLockFile>(LockOf(path_))) {
    pool_.setMaxThreadCount(1);
    timer_.setSingleShot(true);
    timer_.setInterval(Delay);
    lock_->setStaleLockTime(0); // it is good as long as the program runs
    connect(&timer_, &QTimer::timeout, this, &Recovery::StartWriting);
    connect(&session, &GameSession::Changed, this, &Recovery::Schedule);
    connect(&session, &GameSession::Saved, this, &Recovery::EndChanges);
    connect(&session, &GameSession::Replaced, this, &Recovery::EndChanges);
}

Recovery::~Recovery() {
    Remove();
    pool_.waitForDone();
}

/// A change while one waits already goes into the same copy: it is never later than promised.
void Recovery::Schedule() {
    if (!timer_.isActive())
        timer_.start();
}

void Recovery::StartWriting() {
    if (!IsNeeded()) {
        Remove(); // everything was undone
        return;
    }
    if (isWriting_.exchange(true)) {
        Schedule();
        return;
    }
    QDir().mkpath(folder_);
    if (!lock_->isLocked())
        lock_->tryLock(0);
    pool_.start([this, game = session_.Game(), stamp = session_.Stamp()] {
        std::optional<QString> problem;
        try {
            problem = WriteCopy(path_, game, stamp);
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
    if (IsNeeded())
        StartWriting();
    pool_.waitForDone();
}

bool Recovery::IsNeeded() const {
    return session_.Game().Modified || isFileLacking_;
}

void Recovery::KeepDespiteSave() {
    isFileLacking_ = true;
    Schedule();
}

void Recovery::EndChanges() {
    isFileLacking_ = false;
    Remove();
}

void Recovery::Remove() {
    timer_.stop();
    if (!lock_->isLocked())
        return; // nothing was written yet
    pool_.start([path = path_] { QFile::remove(path); });
}

std::vector<RecoveryCopy> Recovery::Abandoned(QStringList& damaged) const {
    std::vector<RecoveryCopy> copies;
    const QDir folder(folder_);
    for (const QString& name : folder.entryList({QStringLiteral("*.recovery")}, QDir::Files, QDir::Time)) {
        const QString path = folder.filePath(name);
        auto lock = std::make_shared<QLockFile>(LockOf(path));
        lock->setStaleLockTime(0);
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
