#pragma once

#include "forms/EditorContext.h"
#include "kel/ScriptTree.h"

#include <QObject>
#include <QString>

#include <string>

class QPushButton;
class QTextEdit;
class QWidget;

namespace zem {

class ScriptBlock;

/// One script of a form: its box, which only displays it, and the button that edits it. Where the script has
/// branches or procedures, they are shown beside the box.
class ScriptField : public QObject {
    Q_OBJECT

public:
    /// @param form  owns this object and the controls
    /// @param what  the script is, for the windows that edit it: "look"
    ScriptField(const EditorContext& context, QWidget& form, QTextEdit& box, QPushButton& button,
                const std::string& script, const QString& what);

    const std::string& Script() const { return script_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Edit();
    void EditPart(const ScriptPath& path);
    void ShowScript();

    EditorContext context_;
    QWidget& form_;
    QTextEdit& box_;
    QPushButton& button_;
    ScriptBlock* block_;
    std::string script_;
    QString what_;
};

} // namespace zem
