#include "forms/FocusOutline.h"

#include "forms/ColourRoles.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QEvent>
#include <QPainter>
#include <QPointer>
#include <QScrollArea>

namespace zem {

namespace {

/// Lies over the box without getting in the way.
class FocusOutline : public QWidget {
public:
    explicit FocusOutline(QWidget& box) : QWidget(&box) {
        setAttribute(Qt::WA_TransparentForMouseEvents);
        resize(box.size());
        box.installEventFilter(this);
        show();
    }

    bool eventFilter(QObject* box, QEvent* event) override {
        if (event->type() == QEvent::Resize)
            resize(static_cast<QWidget*>(box)->size());
        return QWidget::eventFilter(box, event);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        painter.setPen(QPen(ColourOf(ColourRole::Accent, palette()), 2));
        painter.drawRect(rect().adjusted(1, 1, -1, -1));
    }
};

/// Under a pressed mouse button nothing moves: the click would go astray.
void ScrollTo(QWidget& control) {
    if (QGuiApplication::mouseButtons() != Qt::NoButton)
        return;
    for (QWidget* parent = control.parentWidget(); parent != nullptr; parent = parent->parentWidget())
        if (auto* area = qobject_cast<QScrollArea*>(parent))
            area->ensureWidgetVisible(&control);
}

} // namespace

void OutlineFocus(QApplication& application) {
    QObject::connect(&application, &QApplication::focusChanged, &application,
                     [outline = QPointer<QWidget>()](QWidget*, QWidget* now) mutable {
                         delete outline;
                         if (now != nullptr)
                             ScrollTo(*now);
                         auto* box = qobject_cast<QAbstractScrollArea*>(now);
                         if (box != nullptr && box->window()->windowType() != Qt::Popup)
                             outline = new FocusOutline(*box); // The box owns it.
                     });
}

} // namespace zem
