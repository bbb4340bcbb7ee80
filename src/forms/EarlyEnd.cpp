#include "forms/EarlyEnd.h"

#include "forms/PlainTextBox.h"
#include "forms/StorableInput.h"

#include <QAccessible>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QPointer>

#include <algorithm>
#include <functional>
#include <utility>

namespace zem {

bool EndsEarly(const QString& text) {
    return text.contains(u'>');
}

namespace {

constexpr int LeastWidth = 320; // of the remark, in device-independent pixels
constexpr int Padding = 4;

/// The remark beside one box. It floats over what stands below the box, and clicks go through it.
class EarlyEndRemark : public QLabel {
public:
    EarlyEndRemark(QWidget& box, std::function<bool()> endsEarly)
        : QLabel(tr("A text ends at its first \">\" in a game file: what you write from there on would be "
                    "lost."),
                 box.window()),
          box_(&box),
          endsEarly_(std::move(endsEarly)) {
        setObjectName(box.objectName() + QLatin1String("_EarlyEnd"));
        setWordWrap(true);
        setMargin(Padding);
        setFrameShape(QFrame::Box);
        setAutoFillBackground(true);
        QPalette colours = palette();
        colours.setColor(QPalette::Window, colours.color(QPalette::ToolTipBase));
        colours.setColor(QPalette::WindowText, colours.color(QPalette::ToolTipText));
        setPalette(colours);
        setAttribute(Qt::WA_TransparentForMouseEvents);
        hide();
        connect(qApp, &QApplication::focusChanged, this, [this] { Update(); });
    }

    void Update() {
        const bool isNeeded = box_ && box_->isVisible() && box_->hasFocus() && endsEarly_();
        if (isNeeded)
            Place();
        if (isNeeded == isVisible())
            return;
        setVisible(isNeeded);
        if (!isNeeded)
            return;
        raise();
        QAccessibleEvent spoken(this, QAccessible::Alert);
        QAccessible::updateAccessibility(&spoken);
    }

private:
    /// Below the box, or above it where there is no room.
    void Place() {
        const QWidget& window = *box_->window();
        const QPoint corner = box_->mapTo(&window, QPoint());
        const int width = std::min(std::max(box_->width(), LeastWidth), window.width());
        resize(width, heightForWidth(width));
        const int below = corner.y() + box_->height();
        move(std::min(corner.x(), window.width() - width),
             below + height() <= window.height() ? below : std::max(corner.y() - height(), 0));
    }

    QPointer<QWidget> box_; // A form may destroy the box first.
    std::function<bool()> endsEarly_;
};

} // namespace

void RemarkEarlyEnd(QLineEdit& box) {
    auto* remark = new EarlyEndRemark(box, [&box] { return EndsEarly(box.text()); });
    QObject::connect(&box, &QLineEdit::textChanged, remark, &EarlyEndRemark::Update);
}

void RemarkEarlyEnd(QComboBox& box) {
    auto* remark = new EarlyEndRemark(box, [&box] { return EndsEarly(box.currentText()); });
    QObject::connect(&box, &QComboBox::editTextChanged, remark, &EarlyEndRemark::Update);
}

void RemarkEarlyEnd(PlainTextBox& box) {
    auto* remark = new EarlyEndRemark(box, [&box] { return EndsEarly(box.document()->toRawText()); });
    QObject::connect(&box, &QPlainTextEdit::textChanged, remark, &EarlyEndRemark::Update);
}

void EditParameter(QLineEdit& box, const std::string& text, Dialogs& dialogs) {
    EditStorableText(box, text, dialogs);
    RemarkEarlyEnd(box);
}

} // namespace zem
