#include "forms/DialogSize.h"

#include <QApplication>
#include <QDialog>
#include <QEvent>
#include <QScreen>

namespace zem {

namespace {

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

} // namespace

void RememberSize(QDialog& form) {
    const QVariant size = qApp->property(PropertyName(form).constData());
    if (size.isValid())
        form.resize(size.toSize());
    form.resize(form.size().boundedTo(form.screen()->availableSize()));
    form.installEventFilter(new SizeKeeper(&form));
}

} // namespace zem
