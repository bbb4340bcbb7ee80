#pragma once

#include "forms/Dialogs.h"

#include <QDialog>
#include <QString>

#include <memory>

class QUrl;

namespace Ui {
class frmManual;
}

namespace zem {

/// The manual, ZEM.HTM, to read beside the other windows. It has no parent and never keeps the program alive.
class frmManual : public QDialog {
    Q_OBJECT

public:
    /// @param file  the path of ZEM.HTM
    /// @param dialogs  opens what the manual links to outside of itself; outlives the window
    frmManual(const QString& file, Dialogs& dialogs);
    ~frmManual() override;

    /// Whether a place of this name is in the manual.
    bool HasPlace(const QString& name) const;

    /// Scrolls to a place, or to the beginning for an empty name.
    void GoTo(const QString& place);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Follow(const QUrl& link);
    void butFind_Click();
    void FitPictures();

    std::unique_ptr<Ui::frmManual> ui_;
    QString file_;
    Dialogs& dialogs_;
};

} // namespace zem
