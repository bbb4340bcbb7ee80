#pragma once

#include "readback/ReadBack.h"

#include <QDialog>

#include <memory>
#include <vector>

namespace Ui {
class frmReadBack;
}

namespace zem {

/// Names the places of the game that its file would not give back, and leads to them.
class frmReadBack : public QDialog {
    Q_OBJECT

public:
    /// @param places  at least one
    explicit frmReadBack(const std::vector<LostPlace>& places, QWidget* parent = nullptr);
    ~frmReadBack() override;

    /// The place whose editor is to be opened, when the window was closed with that button.
    const LostPlace& Selected() const;

private:
    std::unique_ptr<Ui::frmReadBack> ui_;
    std::vector<LostPlace> places_;
};

} // namespace zem
