#include "forms/EditorHead.h"

#include <QBoxLayout>
#include <QDialog>
#include <QLabel>

namespace zem {

namespace {

constexpr const char* WhereProperty = "where";

QLabel& HeadOf(QDialog& form) {
    auto* head = form.findChild<QLabel*>(QStringLiteral("lblWhere"));
    if (head != nullptr)
        return *head;
    head = new QLabel(&form);
    head->setObjectName(QStringLiteral("lblWhere"));
    head->setTextFormat(Qt::PlainText);
    head->setAccessibleName(QDialog::tr("What is edited here"));
    head->setMinimumWidth(1); // a long name must not make the window wider
    QFont bold = head->font();
    bold.setBold(true);
    head->setFont(bold);
    static_cast<QBoxLayout*>(form.layout())->insertWidget(0, head); // every form is rows, one below the other
    return *head;
}

} // namespace

void ShowWhere(QDialog& form, const QString& what) {
    const QWidget* around = form.parentWidget() == nullptr ? nullptr : form.parentWidget()->window();
    QString where = around == nullptr ? QString() : around->property(WhereProperty).toString();
    if (!what.isEmpty())
        where += (where.isEmpty() ? QString() : QStringLiteral(" \u203a ")) + what;
    form.setProperty(WhereProperty, where);
    if (where.isEmpty())
        return;
    QLabel& head = HeadOf(form);
    head.setText(where);
    head.setToolTip(where.toHtmlEscaped());
}

} // namespace zem
