#pragma once

#include "model/Place.h"
#include "session/Versions.h"

#include <QDockWidget>

#include <functional>
#include <vector>

class QComboBox;

namespace zem {

class DifferenceView;
class GameSession;

/// What the author has changed since the game was saved last, or since an earlier version of it.
class ChangesPanel : public QDockWidget {
    Q_OBJECT

public:
    /// All arguments but `parent` outlive the panel.
    /// @param open  opens the editor of a place
    ChangesPanel(GameSession& session, const Versions& versions, std::function<void(const Place&)> open,
                 QWidget* parent = nullptr);

    /// Whether something is still to be shown.
    bool IsBusy() const;

private:
    void OfferVersions();
    void Compare();
    QString VersionFile() const;

    GameSession& session_;
    const Versions& versions_;
    QComboBox* cmbVersion_;
    DifferenceView* view_;
};

} // namespace zem
