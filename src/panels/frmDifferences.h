#pragma once

#include "panels/DifferenceView.h"

#include <QDialog>

#include <functional>

namespace zem {

/// What two versions of a game differ in, before something is decided about them.
class frmDifferences : public QDialog {
    Q_OBJECT

public:
    /// @param what  is compared, in plain words
    /// @param read  gives both, on another thread; see DifferenceView
    frmDifferences(const QString& what, std::function<ComparedGames()> read, QWidget* parent = nullptr);
};

} // namespace zem
