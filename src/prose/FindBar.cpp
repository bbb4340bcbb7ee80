#include "prose/FindBar.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QToolButton>

namespace zem {

FindBar::FindBar(const ProseBox& box, QWidget* parent)
    : QWidget(parent),
      box_(box),
      txtFind_(new QLineEdit(this)),
      lblAnswer_(new QLabel(this)) {
    const QString name = box.Widget().objectName();
    txtFind_->setObjectName(name + QStringLiteral("_Find"));
    txtFind_->setPlaceholderText(QStringLiteral("Find in this text"));
    txtFind_->setAccessibleName(QStringLiteral("Find in this text"));
    txtFind_->installEventFilter(this);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins({});
    row->addWidget(txtFind_, 1);
    row->addWidget(lblAnswer_);
    const auto add = [&](const char* text, const char* what, auto run) {
        auto* button = new QToolButton(this);
        button->setText(QString::fromUtf8(text));
        button->setAccessibleName(QLatin1String(what));
        button->setToolTip(QLatin1String(what));
        button->setAutoRaise(true);
        button->setFocusPolicy(Qt::NoFocus); // Return, Shift+Return and Esc do the same
        connect(button, &QToolButton::clicked, this, run);
        row->addWidget(button);
    };
    add("\xE2\x86\x91", "Previous (Shift+Return)", [this] { GoOn(true); });
    add("\xE2\x86\x93", "Next (Return)", [this] { GoOn(false); });
    add("\xC3\x97", "Close (Esc)", [this] { Close(); });
    connect(txtFind_, &QLineEdit::textEdited, this, [this] { FindFrom(box_.Selected().begin); });
    hide();
}

void FindBar::Begin() {
    const ProseBox::Selection selected = box_.Selected();
    const QString words = box_.Text().mid(selected.begin, selected.end - selected.begin);
    if (!words.isEmpty() && !words.contains(u'\n'))
        txtFind_->setText(words);
    lblAnswer_->clear();
    show();
    txtFind_->setFocus();
    txtFind_->selectAll();
}

void FindBar::Close() {
    hide();
    box_.Widget().setFocus();
}

void FindBar::SelectHit(qsizetype at) {
    const auto size = static_cast<int>(txtFind_->text().size());
    lblAnswer_->setText(at < 0 && size > 0 ? QStringLiteral("not there") : QString());
    if (at >= 0)
        box_.Select(static_cast<int>(at), static_cast<int>(at) + size);
}

/// The first one from the position on, else the first of all.
void FindBar::FindFrom(int position) {
    const QString words = txtFind_->text();
    const QString text = box_.Text();
    qsizetype at = words.isEmpty() ? -1 : text.indexOf(words, position, Qt::CaseInsensitive);
    if (at < 0 && !words.isEmpty())
        at = text.indexOf(words, 0, Qt::CaseInsensitive);
    SelectHit(at);
}

void FindBar::GoOn(bool backwards) {
    if (!backwards) {
        FindFrom(box_.Selected().end);
        return;
    }
    const QString words = txtFind_->text();
    const QString text = box_.Text();
    const int begin = box_.Selected().begin;
    qsizetype at =
        words.isEmpty() || begin == 0 ? -1 : text.lastIndexOf(words, begin - 1, Qt::CaseInsensitive);
    if (at < 0 && !words.isEmpty())
        at = text.lastIndexOf(words, -1, Qt::CaseInsensitive);
    SelectHit(at);
}

/// The form around it has other plans for these keys.
bool FindBar::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        const bool isReturn = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
        if ((isReturn && !key->modifiers().testFlag(Qt::ControlModifier)) || key->key() == Qt::Key_Escape) {
            event->accept();
            if (event->type() == QEvent::KeyPress && isReturn)
                GoOn(key->modifiers().testFlag(Qt::ShiftModifier));
            else if (event->type() == QEvent::KeyPress)
                Close();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace zem
