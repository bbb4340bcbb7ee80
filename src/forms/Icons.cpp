#include "forms/Icons.h"

#include <QFile>
#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>
#include <QSvgRenderer>

/// A resource of a static library is linked in only where it is asked for, outside of any namespace.
static void InitIcons() {
    Q_INIT_RESOURCE(icons);
}

namespace zem {

namespace {

/// Paints a drawing whose lines are in "currentColor".
class LineIconEngine : public QIconEngine {
public:
    explicit LineIconEngine(const QByteArray& drawing) : drawing_(drawing) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        const QPalette::ColorGroup group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
        QByteArray drawing = drawing_;
        drawing.replace("currentColor",
                        QGuiApplication::palette().color(group, QPalette::ButtonText).name().toLatin1());
        QSvgRenderer(drawing).render(painter, rect);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(0, 0), size), mode, state);
        return pixmap;
    }

    QIconEngine* clone() const override { return new LineIconEngine(*this); }

private:
    QByteArray drawing_;
};

} // namespace

QIcon ThemedIcon(const QString& name) {
    InitIcons();
    QFile file(QStringLiteral(":/icons/%1.svg").arg(name));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QIcon(new LineIconEngine(file.readAll())); // The icon owns its engine.
}

} // namespace zem
