#include "app/Application.h"

#include <gtest/gtest.h>
#include <iostream>

/// Drops what the offscreen platform says at every window and menu.
static void HandleMessage(QtMsgType, const QMessageLogContext&, const QString& message) {
    if (!message.contains(QLatin1String("propagateSizeHints")) &&
        !message.startsWith(QLatin1String("This plugin does not support")))
        std::cerr << message.toStdString() << '\n';
}

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    qInstallMessageHandler(HandleMessage);
    const zem::Application application(argc, argv);
    return RUN_ALL_TESTS();
}
