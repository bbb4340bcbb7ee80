#pragma once

#include "readback/ReadBack.h"
#include "session/GameSession.h"
#include "session/Versions.h"

#include <QObject>
#include <QThreadPool>

#include <vector>

namespace zem {

/// Follows every save: keeps the version, reads the file back, and tells what it does not give back.
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

    /// A version could not be kept.
    void Failed(const QString& problem);

private:
    void GameSaved();
    void Report(int save, const std::vector<LostPlace>& places);

    GameSession& session_;
    const Versions& versions_;
    QThreadPool pool_;
    int saves_ = 0; // so far; what a background reading finds counts only for the last
};

} // namespace zem
