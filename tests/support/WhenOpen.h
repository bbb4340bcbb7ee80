#pragma once

#include "support/Controls.h"

#include <QApplication>
#include <QDialog>
#include <QTimer>

#include <functional>
#include <gtest/gtest.h>

namespace zem::test {

/// How many windows are waited for. A test that ends before all of them have opened has failed (main.cpp).
inline int AwaitedWindows = 0;

/// Runs `use` on the modal window that opens next, and closes it when `use` has left it open.
/// @param patience  how many milliseconds it may take, or other windows may be open first
template <class Form>
void WhenOpen(std::function<void(Form&)> use, int patience = 0) {
    constexpr int Pause = 5;
    ++AwaitedWindows;
    QTimer::singleShot(patience > 0 ? Pause : 0, [use, patience] {
        --AwaitedWindows;
        auto* form = qobject_cast<Form*>(QApplication::activeModalWidget());
        if (form == nullptr && patience > 0) {
            WhenOpen<Form>(use, patience - Pause);
            return;
        }
        ASSERT_NE(form, nullptr) << "another window has opened, or none";
        use(*form);
        if (form->isVisible())
            form->reject();
    });
}

/// The same for a window that opens after others, or only after a while.
template <class Form>
void WhenOpenLater(std::function<void(Form&)> use) {
    WhenOpen<Form>(use, 60000);
}

} // namespace zem::test
