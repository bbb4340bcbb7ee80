#include "script/ScriptField.h"

#include "forms/RunCommand.h"
#include "script/ScriptEditing.h"

#include <QKeyEvent>
#include <QPushButton>
#include <QTextEdit>

namespace zem {

ScriptField::ScriptField(const EditorContext& context, QWidget& form, QTextEdit& box, QPushButton& button,
                         const std::string& script)
    : QObject(&form),
      context_(context),
      form_(form),
      box_(box),
      button_(button),
      script_(script) {
    context_.scripts.Show(script_, box_);
    OnClick(&button_, &form_, context_.dialogs, [this] { Edit(); });
    box_.setAccessibleDescription(QStringLiteral("Return opens its editor"));
    box_.installEventFilter(this);
    box_.viewport()->installEventFilter(this);
}

bool ScriptField::eventFilter(QObject* watched, QEvent* event) {
    const auto isReturn = [event] {
        const int key = static_cast<QKeyEvent*>(event)->key();
        return key == Qt::Key_Return || key == Qt::Key_Enter;
    };
    if (event->type() != QEvent::MouseButtonDblClick && (event->type() != QEvent::KeyPress || !isReturn()))
        return QObject::eventFilter(watched, event);
    button_.click();
    return true;
}

void ScriptField::Edit() {
    if (context_.scripts.EditScript(&form_, script_))
        context_.scripts.Show(script_, box_);
}

} // namespace zem
