#include "forms/FileDrop.h"

#include <QApplication>
#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QTimer>
#include <QUrl>
#include <QWidget>

#include <utility>

namespace zem {

namespace {

/// The file that is dragged; empty when it cannot be opened.
QString DraggedFile(const QMimeData& data) {
    const QList<QUrl> urls = data.urls();
    const QString path = urls.isEmpty() ? QString() : urls.constFirst().toLocalFile();
    return QFileInfo(path).isFile() ? path : QString();
}

class FileDrop : public QObject {
public:
    FileDrop(QWidget& window, std::function<void(const QString&)> open)
        : QObject(&window),
          open_(std::move(open)) {}

    bool eventFilter(QObject* window, QEvent* event) override {
        if (event->type() != QEvent::DragEnter && event->type() != QEvent::Drop)
            return false;
        auto& drop = static_cast<QDropEvent&>(*event); // QDragEnterEvent derives from it.
        const QString file =
            QApplication::activeModalWidget() == nullptr ? DraggedFile(*drop.mimeData()) : QString();
        drop.setDropAction(Qt::CopyAction); // After a move the other program would delete the file.
        drop.setAccepted(!file.isEmpty());
        if (event->type() == QEvent::Drop && drop.isAccepted())
            QTimer::singleShot(
                0, window, [this, file] { open_(file); }); // The other program waits until the drop is over.
        return true;
    }

private:
    std::function<void(const QString&)> open_;
};

} // namespace

void AcceptFileDrops(QWidget& window, std::function<void(const QString& path)> open) {
    window.setAcceptDrops(true);
    window.installEventFilter(new FileDrop(window, std::move(open))); // The window owns it.
}

} // namespace zem
