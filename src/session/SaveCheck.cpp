#include "session/SaveCheck.h"

#include "base/TextFile.h"
#include "qt/QtText.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <utility>

namespace zem {

namespace {

// As large a file is read back before the author could notice.
constexpr qint64 LargestAtOnce = 300'000;

std::vector<LostPlace> ReadBackFile(const GameModel& game) {
    try {
        return ReadBack(game, ReadFile(game.FileName));
    } catch (const std::exception& error) {
        return {LostPlace{{}, std::string("The file that was saved cannot be read: ") + error.what()}};
    }
}

} // namespace

SaveCheck::SaveCheck(GameSession& session, const Versions& versions)
    : session_(session),
      versions_(versions) {
    pool_.setMaxThreadCount(1);
    connect(&session, &GameSession::AboutToSave, this, &SaveCheck::KeepForeign);
    connect(&session, &GameSession::Saved, this, &SaveCheck::GameSaved);
    connect(&session, &GameSession::Replaced, this, [this] { ++saves_; }); // it is another game
}

SaveCheck::~SaveCheck() {
    pool_.waitForDone();
}

void SaveCheck::Finish() {
    pool_.waitForDone();
    QCoreApplication::sendPostedEvents(this);
}

void SaveCheck::KeepForeign(const QString& path) {
    foreign_.clear();
    if (!QFileInfo(path).isFile() || versions_.Hold(path, path))
        return;
    if (!versions_.Keep(path, path, VersionKind::Foreign))
        emit Failed(
            QStringLiteral("No copy of the file that ZEM did not write could be kept for Earlier versions."));
    try {
        foreign_ = ReadFile(PathFromQt(path));
    } catch (const std::exception&) {
        // What cannot be read cannot be looked through, and the save will tell more.
    }
}

void SaveCheck::TellDroppedLines() {
    const DroppedLines dropped = InspectFile(std::exchange(foreign_, {})).dropped;
    if (dropped.comments + dropped.others > 0)
        emit LinesDropped(dropped);
}

void SaveCheck::GameSaved() {
    const int save = ++saves_;
    const QString path = session_.FileName();
    TellDroppedLines();
    if (!versions_.Keep(path, path))
        emit Failed(
            QStringLiteral("The game is saved, but no version of it could be kept for Earlier versions."));
    if (QFileInfo(path).size() <= LargestAtOnce) {
        Report(save, ReadBackFile(session_.Game()));
        return;
    }
    pool_.start([this, save, game = session_.Game()] {
        const std::vector<LostPlace> places = ReadBackFile(game);
        QMetaObject::invokeMethod(this, [this, save, places] { Report(save, places); });
    });
}

void SaveCheck::Report(int save, const std::vector<LostPlace>& places) {
    if (places.empty() || save != saves_)
        return;
    const QString previous = session_.FileName() + u'~';
    if (QFileInfo::exists(previous))
        versions_.Keep(session_.FileName(), previous, VersionKind::BeforeLoss);
    emit PlacesLost(places);
}

} // namespace zem
