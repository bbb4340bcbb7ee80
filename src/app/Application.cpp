#include "app/Application.h"

#include "forms/FocusOutline.h"
#include "forms/FormKeys.h"
#include "forms/RunCommand.h"

#include <utility>

namespace zem {

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
    OutlineFocus(*this);
    HandleFormKeys(*this);
}

void Application::SetNet(Dialogs& dialogs, std::function<void()> rescue) {
    dialogs_ = &dialogs;
    rescue_ = std::move(rescue);
}

bool Application::notify(QObject* receiver, QEvent* event) {
    bool handled = false;
    RunCommand(*dialogs_, activeWindow(), [&] {
        try {
            handled = QApplication::notify(receiver, event);
        } catch (...) {
            rescue_();
            throw;
        }
    });
    return handled;
}

} // namespace zem
