#pragma once

#include "forms/Dialogs.h"

#include <QApplication>

#include <functional>

namespace zem {

/// The application with a last net: whatever an event handler lets through ends that event and not the
/// program. The unsaved changes are made sure of, and the author is told.
class Application : public QApplication {
public:
    Application(int& argc, char** argv);

    /// @param dialogs  shows the messages
    /// @param rescue  makes sure of the unsaved changes
    void SetNet(Dialogs& dialogs, std::function<void()> rescue);

    /// What SetNet was given is used no longer.
    void ClearNet() {
        SetNet(platformDialogs_, [] {});
    }

    bool notify(QObject* receiver, QEvent* event) override;

private:
    QtDialogs platformDialogs_;
    Dialogs* dialogs_ = &platformDialogs_;
    std::function<void()> rescue_ = [] {};
};

} // namespace zem
