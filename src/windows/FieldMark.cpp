#include "windows/FieldMark.h"

#include "forms/ToolTip.h"
#include "panels/ProblemsPanel.h"
#include "qt/QtText.h"

#include <QAbstractScrollArea>
#include <QComboBox>
#include <QEvent>
#include <QLineEdit>
#include <QMenu>
#include <QScrollBar>
#include <QStyleOptionComboBox>

#include <algorithm>

namespace zem {

namespace {

constexpr int Margin = 3;        // pixels between the mark and the edges of its control
constexpr int WidestEntry = 640; // pixels; the rest is in the tool tip

/// What the control needs for itself at its right edge.
int TakenAtRight(const QWidget& control) {
    if (const auto* combo = qobject_cast<const QComboBox*>(&control)) {
        QStyleOptionComboBox option;
        option.initFrom(combo);
        const QRect arrow =
            combo->style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, combo);
        return combo->width() - arrow.left();
    }
    const auto* area = qobject_cast<const QAbstractScrollArea*>(&control);
    const bool scrolls = area != nullptr && area->verticalScrollBar()->isVisible();
    return scrolls ? area->verticalScrollBar()->width() : 0;
}

} // namespace

FieldMark::FieldMark(QWidget& control, const std::vector<Entry>& entries)
    : QToolButton(&control),
      control_(control),
      description_(control.accessibleDescription()) {
    setObjectName(QStringLiteral("mark_") + control.objectName());
    QStringList texts;
    for (const Entry& entry : entries) {
        level_ = std::min(level_, entry.level);
        texts.append(QLatin1String(problems::WordFor(entry.level)) + QStringLiteral(": ") + entry.text);
    }
    setIcon(IconOf(level_, palette()));
    const int size = fontMetrics().height();
    setIconSize({size, size});
    setAutoRaise(true);
    setFocusPolicy(Qt::NoFocus); // the field has it; Ctrl+. opens the menu
    setCursor(Qt::ArrowCursor);
    setStyleSheet(QStringLiteral("QToolButton { padding: 0; border: none; }"
                                 "QToolButton::menu-indicator { image: none; }"));
    setFixedSize(size + 2, size + 2);
    setPopupMode(InstantPopup);
    auto* menu = new QMenu(this);
    menu->setToolTipsVisible(true);
    for (const QString& text : texts) {
        const QString shown = fontMetrics().elidedText(text, Qt::ElideRight, WidestEntry);
        QAction* told = menu->addAction(QString(shown).replace(u'&', QLatin1String("&&")));
        told->setToolTip(ToolTipOf(text));
        connect(told, &QAction::triggered, &control_, [this] { control_.setFocus(); });
    }
    setMenu(menu);
    const QString all = texts.join(u'\n');
    setToolTip(ToolTipOf(all));
    setAccessibleName(all);
    control_.setAccessibleDescription(description_.isEmpty() ? all : description_ + u'\n' + all);
    control_.installEventFilter(this);
    if (auto* line = qobject_cast<QLineEdit*>(&control_))
        line->setTextMargins(0, 0, width(), 0); // the text ends before the mark
    FindPlace();
    show();
    raise();
}

FieldMark::~FieldMark() {
    control_.setAccessibleDescription(description_);
    if (auto* line = qobject_cast<QLineEdit*>(&control_))
        line->setTextMargins(0, 0, 0, 0);
}

void FieldMark::AddFix(const QString& caption, std::function<void()> fix) {
    QAction* action =
        menu()->addAction(QStringLiteral("Fix: ") + QString(caption).replace(u'&', QLatin1String("&&")));
    action->setObjectName(QStringLiteral("fix_") + control_.objectName());
    connect(action, &QAction::triggered, this, [fix = std::move(fix)] { fix(); });
}

bool FieldMark::eventFilter(QObject* watched, QEvent* event) {
    if (watched == &control_ && (event->type() == QEvent::Resize || event->type() == QEvent::Show))
        FindPlace();
    return QToolButton::eventFilter(watched, event);
}

/// In the middle of the right edge of a box of one line, else in the corner at the top, which is in sight on
/// small screens, too.
void FieldMark::FindPlace() {
    const bool isOneLine = control_.height() < 2 * height();
    move(control_.width() - TakenAtRight(control_) - width() - Margin,
         isOneLine ? (control_.height() - height()) / 2 : Margin);
}

} // namespace zem
