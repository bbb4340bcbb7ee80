#pragma once

#include <QApplication>
#include <QDialog>
#include <QPushButton>
#include <QTimer>
#include <QtTest/QTest>

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

/// A control of a form.
template <class Control>
Control& Find(const QWidget& form, const char* name) {
    auto* control = form.findChild<Control*>(QLatin1String(name));
    if (control == nullptr)
        throw std::runtime_error(std::string("no control ") + name);
    return *control;
}

inline void Click(const QWidget& form, const char* button) {
    QTest::mouseClick(&Find<QPushButton>(form, button), Qt::LeftButton);
}

} // namespace zem::test
