#pragma once

#include "forms/EditorContext.h"

#include <QObject>

#include <string>

class QPushButton;
class QTextEdit;
class QWidget;

namespace zem {

/// One script of a form: its box, which only displays it, and the button that edits it.
class ScriptField : public QObject {
    Q_OBJECT

public:
    /// @param form  owns this object and the controls
    /// @param scripts  outlives the form
    ScriptField(const EditorContext& context, QWidget& form, QTextEdit& box, QPushButton& button,
                const std::string& script);

    const std::string& Script() const { return script_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Edit();

    EditorContext context_;
    QWidget& form_;
    QTextEdit& box_;
    QPushButton& button_;
    std::string script_;
};

} // namespace zem
