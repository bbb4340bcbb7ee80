#include "script/ScriptField.h"

#include "forms/RunCommand.h"
#include "script/BlockBeside.h"
#include "script/ScriptBlock.h"
#include "script/ScriptEditing.h"

#include <QKeyEvent>
#include <QPushButton>
#include <QTextEdit>

namespace zem {

ScriptField::ScriptField(const EditorContext& context, QWidget& form, QTextEdit& box, QPushButton& button,
                         const std::string& script, const QString& what)
    : QObject(&form),
      context_(context),
      form_(form),
      box_(box),
      button_(button),
      block_(PutBlockBeside(box, form, Qt::Horizontal)),
      script_(script),
      what_(what) {
    block_->setAccessibleName(tr("%1, with its branches").arg(what));
    ShowScript();
    OnClick(&button_, &form_, context_.dialogs, [this] { Edit(); });
    connect(block_, &ScriptBlock::PartActivated, this, [this](const ScriptPath& path) {
        RunCommand(context_.dialogs, &form_, [&] { EditPart(path); });
    });
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

void ScriptField::ShowScript() {
    context_.scripts.Show(script_, box_);
    block_->Show(context_.scripts, script_);
    // A script without branches says everything in its box.
    block_->setVisible(block_->TellsMore());
}

void ScriptField::Edit() {
    if (context_.scripts.EditScript(&form_, script_, what_))
        ShowScript();
}

void ScriptField::EditPart(const ScriptPath& path) {
    if (context_.scripts.EditPart(&form_, script_, path, what_))
        ShowScript();
}

} // namespace zem
