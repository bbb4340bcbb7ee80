#pragma once

#include "support/Controls.h"

#include <QApplication>
#include <QDialog>
#include <QTimer>

#include <functional>
#include <gtest/gtest.h>

namespace zem::test {

/// Runs `use` on the modal window that opens next, and closes it when `use` has left it open.
template <class Form>
void WhenOpen(std::function<void(Form&)> use) {
    QTimer::singleShot(0, [use] {
        auto* form = qobject_cast<Form*>(QApplication::activeModalWidget());
        ASSERT_NE(form, nullptr) << "another window has opened, or none";
        use(*form);
        if (form->isVisible())
            form->reject();
    });
}

/// The same for a window that opens after others, or only after a while.
template <class Form>
void WhenOpenLater(std::function<void(Form&)> use, int tries = 12000) {
    QTimer::singleShot(5, [use, tries] {
        auto* form = qobject_cast<Form*>(QApplication::activeModalWidget());
        if (form == nullptr && tries > 0) {
            WhenOpenLater<Form>(use, tries - 1);
            return;
        }
        ASSERT_NE(form, nullptr) << "the window has not opened";
        use(*form);
        if (form->isVisible())
            form->reject();
    });
}

} // namespace zem::test
