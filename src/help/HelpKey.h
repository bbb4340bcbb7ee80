#pragma once

#include "forms/Dialogs.h"

#include <QObject>
#include <QString>

#include <memory>

namespace zem {

class frmManual;

/// F1 in any window: shows the manual at the place that is named after the window's class. Catches the key
/// for the whole application while it lives.
class HelpKey : public QObject {
    Q_OBJECT

public:
    /// @param programFolder  where ZEM.HTM is
    /// @param dialogs  tells when it cannot be read; outlives this object
    HelpKey(const QString& programFolder, Dialogs& dialogs);
    ~HelpKey() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

    /// Shows a place of the manual, the beginning for an empty name.
    /// @param beside  a window that goes on being used
    void ShowPlace(const QString& place, QWidget& beside);

    /// The window of the manual, once it was opened.
    frmManual* Manual() const { return manual_.get(); }

private:
    /// @param window  or a panel in one
    void Show(QWidget& window);
    bool OpenManual(QWidget& window);
    QString PlaceOf(const QWidget& window) const;
    void LetUseBeside(const QWidget& window);

    QString file_;
    Dialogs& dialogs_;
    std::unique_ptr<frmManual> manual_;
};

} // namespace zem
