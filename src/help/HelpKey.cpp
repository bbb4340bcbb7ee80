#include "help/HelpKey.h"

#include "help/frmManual.h"

#include <QApplication>
#include <QDockWidget>
#include <QFileInfo>
#include <QKeyEvent>
#include <QStackedWidget>
#include <QWindow>

namespace zem {

namespace {

QString ClassName(const QWidget& window) {
    return QString::fromLatin1(window.metaObject()->className()).section(QLatin1String("::"), -1);
}

/// "-Exits" for a window that shows the page fraExits; nothing for one without pages.
QString PageSuffix(const QWidget& window) {
    const auto* pages = window.findChild<QStackedWidget*>(QStringLiteral("pages"));
    return pages == nullptr ? QString() : u'-' + pages->currentWidget()->objectName().mid(3);
}

/// The panel that the widget is in, which has a page of its own, or else the window.
QWidget& PanelOrWindow(QWidget& widget) {
    for (QWidget* outer = &widget; outer != nullptr; outer = outer->parentWidget())
        if (qobject_cast<QDockWidget*>(outer) != nullptr)
            return *outer;
    return *widget.window();
}

bool IsHelpKey(const QEvent& event) {
    if (event.type() != QEvent::KeyPress)
        return false;
    const auto& key = static_cast<const QKeyEvent&>(event);
    return key.key() == Qt::Key_F1 && key.modifiers() == Qt::NoModifier;
}

} // namespace

HelpKey::HelpKey(const QString& programFolder, Dialogs& dialogs)
    : file_(programFolder + QLatin1String("/ZEM.HTM")),
      dialogs_(dialogs) {
    qApp->installEventFilter(this);
}

HelpKey::~HelpKey() = default;

bool HelpKey::eventFilter(QObject* watched, QEvent* event) {
    if (!watched->isWidgetType()) // QWindow gets both events before the widget.
        return false;
    QWidget& widget = *static_cast<QWidget*>(watched);
    if (event->type() == QEvent::WindowActivate && widget.isWindow())
        LetUseBeside(widget);
    if (!IsHelpKey(*event))
        return false;
    QWidget* window = widget.window();
    while (QWidget* popup = QApplication::activePopupWidget()) { // It is a menu or a list of matches.
        popup->close();
        if (QApplication::activePopupWidget() == popup)
            return false; // The popup refused to close, so the manual would open behind it.
        window = QApplication::activeWindow();
    }
    if (window != nullptr)
        Show(widget.window() == window ? PanelOrWindow(widget) : *window);
    return true;
}

/// False when it cannot be read; the author has been told then.
bool HelpKey::OpenManual(QWidget& window) {
    if (!manual_ && !QFileInfo(file_).isReadable()) {
        dialogs_.ShowMessageBox(&window,
                                QStringLiteral("The manual cannot be shown: there is no file %1, or it "
                                               "cannot be read.")
                                    .arg(file_),
                                QLatin1String(DefaultTitle), QMessageBox::Ok, QMessageBox::Warning);
        return false;
    }
    if (!manual_)
        manual_ = std::make_unique<frmManual>(file_, dialogs_);
    return true;
}

void HelpKey::Show(QWidget& window) {
    if (OpenManual(window))
        ShowPlace(PlaceOf(window), window);
}

void HelpKey::ShowPlace(const QString& place, QWidget& beside) {
    if (!OpenManual(beside))
        return;
    manual_->show();
    LetUseBeside(*beside.window());
    manual_->GoTo(place); // Where the place is depends on the size of the shown window.
    manual_->setWindowState(manual_->windowState() & ~Qt::WindowMinimized);
    manual_->raise();
    manual_->activateWindow();
}

/// The place of the window, or of the first of the windows behind it that has one.
QString HelpKey::PlaceOf(const QWidget& window) const {
    const QWidget* candidate = &window;
    while (candidate != nullptr) {
        const QString name = ClassName(*candidate);
        for (const QString& place : {name + PageSuffix(*candidate), name})
            if (manual_->HasPlace(place))
                return place;
        candidate = candidate->parentWidget() == nullptr ? nullptr : candidate->parentWidget()->window();
    }
    return {};
}

/// A modal window locks all others out except those that belong to it, so the manual belongs to whichever
/// window the author works in.
void HelpKey::LetUseBeside(const QWidget& window) {
    const bool isOfManual = &window == manual_.get() || (manual_ && manual_->isAncestorOf(&window));
    if (manual_ && manual_->windowHandle() != nullptr && !isOfManual)
        manual_->windowHandle()->setTransientParent(window.windowHandle());
}

} // namespace zem
