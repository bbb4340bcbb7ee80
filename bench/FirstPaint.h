#pragma once

#include <QApplication>
#include <QEvent>
#include <QWidget>

namespace zem::bench {

/// Ends the program as soon as a window of it has been painted.
class QuitAtFirstPaint : public QObject {
public:
    explicit QuitAtFirstPaint(QApplication& application) { application.installEventFilter(this); }

    bool eventFilter(QObject* watched, QEvent* event) override {
        const auto* widget = qobject_cast<QWidget*>(watched);
        if (event->type() == QEvent::Paint && widget != nullptr && widget->isWindow())
            QMetaObject::invokeMethod(qApp, &QApplication::quit, Qt::QueuedConnection);
        return false;
    }
};

} // namespace zem::bench
