#include "app/Application.h"
#include "support/WhenOpen.h"

#include <gtest/gtest.h>
#include <iostream>
#include <utility>

/// Drops what the offscreen platform says at every window and menu.
static void HandleMessage(QtMsgType, const QMessageLogContext&, const QString& message) {
    if (!message.contains(QLatin1String("propagateSizeHints")) &&
        !message.startsWith(QLatin1String("This plugin does not support")))
        std::cerr << message.toStdString() << '\n';
}

namespace {

/// A test whose window has not opened has not looked at what it wanted to see there.
class AwaitedWindowsCheck : public testing::EmptyTestEventListener {
    void OnTestEnd(const testing::TestInfo& /*test*/) override {
        QCoreApplication::processEvents(); // at the latest now, who waits for the next window finds none
        EXPECT_EQ(std::exchange(zem::test::AwaitedWindows, 0), 0) << "windows have not opened";
    }
};

} // namespace

int main(int argc, char** argv) {
    const QByteArray screen = qgetenv("ZEM_TEST_SCREEN"); // A description of the screen for one test.
    qputenv("QT_QPA_PLATFORM", screen.isEmpty() ? "offscreen" : "offscreen:configfile=" + screen);
    testing::InitGoogleTest(&argc, argv);
    qInstallMessageHandler(HandleMessage);
    const zem::Application application(argc, argv);
    testing::UnitTest::GetInstance()->listeners().Append(new AwaitedWindowsCheck); // which takes it over
    return RUN_ALL_TESTS();
}
