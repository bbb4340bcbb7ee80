#include "forms/AskBeforeDiscard.h"

#include <QDialog>
#include <QKeyEvent>

namespace zem {

namespace {

class DiscardQuestion : public QObject {
public:
    DiscardQuestion(QDialog& form, Dialogs& dialogs, const OpenEdit& edit)
        : QObject(&form),
          form_(form),
          dialogs_(dialogs),
          edit_(edit) {}

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        const bool isEsc =
            event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape;
        if ((!isEsc && event->type() != QEvent::Close) || !edit_.HasChanges() || MayDiscard())
            return QObject::eventFilter(watched, event);
        event->ignore();
        return true;
    }

private:
    bool MayDiscard() {
        return dialogs_.ShowMessageBox(&form_, QStringLiteral("Discard changes?"), form_.windowTitle(),
                                       QMessageBox::Yes | QMessageBox::No,
                                       QMessageBox::Question) == QMessageBox::Yes;
    }

    QDialog& form_;
    Dialogs& dialogs_;
    const OpenEdit& edit_;
};

} // namespace

void AskBeforeDiscard(QDialog& form, Dialogs& dialogs, const OpenEdit& edit) {
    form.installEventFilter(new DiscardQuestion(form, dialogs, edit));
}

} // namespace zem
