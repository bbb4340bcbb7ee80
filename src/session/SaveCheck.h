#pragma once

#include "readback/ReadBack.h"
#include "reader/InspectFile.h"
#include "session/GameSession.h"
#include "session/Versions.h"

#include <QObject>
#include <QThreadPool>

#include <string>
#include <vector>

namespace zem {

/// Goes with every save: keeps the version that is replaced if another program wrote it, and the new one,
/// reads the file back, and tells what it does not give back.
class SaveCheck : public QObject {
    Q_OBJECT

public:
    /// Both arguments outlive this object.
    SaveCheck(GameSession& session, const Versions& versions);
    ~SaveCheck() override;

    /// Waits until the file of the last save is read back.
    void Finish();

signals:
    /// The file that was just saved would not give back these places of the game.
    void PlacesLost(const std::vector<LostPlace>& places);

    /// The file that was just saved, and that another program had written, has lost so many lines of it.
    void LinesDropped(const DroppedLines& lines);

    /// A version could not be kept.
    void Failed(const QString& problem);

private:
    void KeepForeign(const QString& path);
    void TellDroppedLines();
    void GameSaved();
    void Report(int save, const std::vector<LostPlace>& places);

    GameSession& session_;
    const Versions& versions_;
    QThreadPool pool_;
    std::string foreign_; // what another program wrote into the file that is being saved
    int saves_ = 0;       // so far; what a background reading finds counts only for the last
};

} // namespace zem
