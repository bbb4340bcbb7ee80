#include "forms/DialogSize.h"

#include <QApplication>
#include <QBoxLayout>
#include <QDialog>
#include <QEvent>
#include <QScreen>
#include <QScrollArea>

namespace zem {

namespace {

// Device-independent pixels that a window manager needs around a form, with some to spare.
constexpr QSize Frame(12, 40);

QSize LargestSize(const QDialog& form) {
    return form.screen()->availableSize() - Frame;
}

QByteArray PropertyName(const QObject& form) {
    return "size of " + form.objectName().toLatin1();
}

class SizeKeeper : public QObject {
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Hide)
            qApp->setProperty(PropertyName(*watched).constData(), static_cast<QWidget*>(watched)->size());
        return QObject::eventFilter(watched, event);
    }
};

/// Puts everything but the last row, which holds OK and Cancel, into an area that scrolls.
void ScrollContents(QDialog& form) {
    auto* rows = qobject_cast<QBoxLayout*>(form.layout());
    QLayoutItem* lastRow = rows == nullptr ? nullptr : rows->takeAt(rows->count() - 1);
    auto* area = new QScrollArea;
    auto* contents = new QWidget;
    contents->setLayout(form.layout()); // This moves the controls of the rows, too.
    area->setWidget(contents);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    auto* outer = new QVBoxLayout(&form);
    const QMargins margins = outer->contentsMargins();
    outer->setContentsMargins(0, 0, 0, 0);
    outer->addWidget(area);
    if (lastRow != nullptr && lastRow->layout() != nullptr) {
        lastRow->layout()->setContentsMargins(margins.left(), 0, margins.right(), margins.bottom());
        outer->addLayout(lastRow->layout());
    } else if (lastRow != nullptr) {
        outer->addItem(lastRow);
    }
}

} // namespace

void FitScreen(QDialog& form) {
    const QSize largest = LargestSize(form);
    const QSize least = form.layout()->minimumSize();
    if (least.width() > largest.width() || least.height() > largest.height())
        ScrollContents(form);
}

void RememberSize(QDialog& form) {
    FitScreen(form);
    const QVariant size = qApp->property(PropertyName(form).constData());
    if (size.isValid())
        form.resize(size.toSize());
    form.resize(form.size().boundedTo(LargestSize(form)));
    form.installEventFilter(new SizeKeeper(&form)); // The form owns it.
}

} // namespace zem
