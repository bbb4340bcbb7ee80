#include "forms/MessageBar.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QToolButton>

namespace zem {

MessageBar::MessageBar(const QString& text, const std::vector<Button>& buttons, QWidget* parent)
    : QFrame(parent),
      lblMessage_(new QLabel(text, this)) {
    setObjectName(QStringLiteral("MessageBar"));
    setFrameShape(QFrame::StyledPanel);
    setAutoFillBackground(true);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
    setBackgroundRole(QPalette::AlternateBase);
    setAccessibleName(text);
    lblMessage_->setObjectName(QStringLiteral("lblMessage"));
    lblMessage_->setTextFormat(Qt::PlainText); // it may hold the name of a file
    lblMessage_->setWordWrap(true);
    lblMessage_->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* row = new QHBoxLayout(this);
    row->addWidget(lblMessage_, 1);
    for (const Button& button : buttons)
        AddButton(*row, button);
    auto* cross = new QToolButton(this);
    cross->setObjectName(QStringLiteral("butCloseMessage"));
    cross->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
    cross->setAutoRaise(true);
    cross->setFocusPolicy(Qt::StrongFocus);
    cross->setAccessibleName(QStringLiteral("Close message"));
    cross->setToolTip(QStringLiteral("Close message"));
    connect(cross, &QToolButton::clicked, this, &MessageBar::Close);
    row->addWidget(cross, 0, Qt::AlignTop);
}

void MessageBar::AddButton(QHBoxLayout& row, const Button& button) {
    auto* widget = new QPushButton(button.text, this);
    widget->setAutoDefault(true);
    connect(widget, &QPushButton::clicked, this, [this, button] {
        if (button.closes)
            Close();
        button.click();
    });
    row.addWidget(widget, 0, Qt::AlignTop);
}

QString MessageBar::Text() const {
    return lblMessage_->text();
}

void MessageBar::Close() {
    if (isHidden())
        return;
    hide();
    emit Closed();
    deleteLater();
}

void MessageBar::showEvent(QShowEvent* event) {
    QFrame::showEvent(event);
    QAccessibleEvent alert(this, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

void MessageBar::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape)
        Close();
    else
        QFrame::keyPressEvent(event);
}

} // namespace zem
