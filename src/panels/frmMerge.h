#pragma once

#include "session/Versions.h"

#include <QDialog>

#include <vector>

class QComboBox;
class QLineEdit;
class QPushButton;

namespace zem {

class Dialogs;

/// Asks with which version the open game is to be merged, and what both began as.
class frmMerge : public QDialog {
    Q_OBJECT

public:
    /// @param game      the path of the open game's file; empty for none
    /// @param versions  the earlier versions of it, the latest first
    frmMerge(const QString& game, const std::vector<FileVersion>& versions, Dialogs& dialogs,
             QWidget* parent = nullptr);

    /// The file of the other version.
    QString Theirs() const;

    /// The file of what both began as; empty when nobody knows.
    QString Base() const;

private:
    void MakeControls();
    void BrowseTheirs();
    void BrowseBase();
    QString AskGame();

    QString game_;
    Dialogs& dialogs_;
    QLineEdit* txtTheirs_;
    QComboBox* cmbBase_;
    QPushButton* butMerge_;
};

} // namespace zem
