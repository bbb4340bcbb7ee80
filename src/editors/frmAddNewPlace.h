#pragma once

#include "forms/EditorContext.h"

#include <QAbstractItemModel>
#include <QDialog>

#include <memory>
#include <string>

namespace Ui {
class frmAddNewPlace;
}

namespace zem {

/// Asks where a new place of a room leads.
class frmAddNewPlace : public QDialog {
    Q_OBJECT

public:
    /// @param rooms  the names to pick from; any other may be typed. Outlives the form
    frmAddNewPlace(const EditorContext& context, QAbstractItemModel& rooms, QWidget* parent = nullptr);
    ~frmAddNewPlace() override;

    /// "name" or "prefix; name"; for the caller when the window was closed with Add.
    std::string Place() const;

private:
    std::unique_ptr<Ui::frmAddNewPlace> ui_;
};

} // namespace zem
