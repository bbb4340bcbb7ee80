#pragma once

#include "session/Versions.h"

#include <QDialog>

#include <memory>
#include <vector>

namespace Ui {
class frmVersions;
}

namespace zem {

/// The earlier versions of the game, to open one.
class frmVersions : public QDialog {
    Q_OBJECT

public:
    explicit frmVersions(const std::vector<FileVersion>& versions, QWidget* parent = nullptr);
    ~frmVersions() override;

    /// The path of the version to open, when the window was closed with that button.
    QString Selected() const;

private:
    std::unique_ptr<Ui::frmVersions> ui_;
    std::vector<FileVersion> versions_;
};

} // namespace zem
