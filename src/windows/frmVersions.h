#pragma once

#include "model/GameModel.h"
#include "session/Versions.h"

#include <QDialog>

#include <memory>
#include <vector>

namespace Ui {
class frmVersions;
}

namespace zem {

class DifferenceView;

/// The earlier versions of the game, to see what has changed since, and to open one.
class frmVersions : public QDialog {
    Q_OBJECT

public:
    /// @param game  the open one, with which a version is compared; outlives the window
    frmVersions(const std::vector<FileVersion>& versions, const GameModel& game, QWidget* parent = nullptr);
    ~frmVersions() override;

    /// The path of the version to open, when the window was closed with that button.
    QString Selected() const;

private:
    void CompareSelected();

    std::unique_ptr<Ui::frmVersions> ui_;
    std::vector<FileVersion> versions_;
    const GameModel& game_;
    DifferenceView* view_;
};

} // namespace zem
