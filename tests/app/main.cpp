#include "app/Application.h"

#include <gtest/gtest.h>
#include <iostream>

/// Drops what the offscreen platform says at every window.
static void HandleMessage(QtMsgType, const QMessageLogContext&, const QString& message) {
    if (!message.contains(QLatin1String("propagateSizeHints")))
        std::cerr << message.toStdString() << '\n';
}

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    qInstallMessageHandler(HandleMessage);
    const zem::Application application(argc, argv);
    return RUN_ALL_TESTS();
}
