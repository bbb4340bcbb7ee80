#pragma once

#include "forms/EditorContext.h"
#include "kel/ScriptTree.h"

#include <QObject>
#include <QString>

#include <functional>
#include <string>

class QListWidget;
class QWidget;

namespace zem {

class ScriptBlock;

/// Puts a block for a whole script into the place of a control of the form, beside or below that control. The
/// control keeps the name that its label gave it.
ScriptBlock* PutBlockBeside(QWidget& control, const QWidget& form, Qt::Orientation orientation);

/// Below a list of records with a script each: the whole script of the selected one. A double-click on a line
/// of it opens that line.
class SelectedScript : public QObject {
    Q_OBJECT

public:
    struct Access {
        std::function<const std::string&(int row)> read;
        std::function<void(int row, const std::string& script)> write;
        std::function<QString(int row)> what; // for the windows that edit it: "choice the rain"
    };

    /// @param form  owns this object and the list
    SelectedScript(const EditorContext& context, QWidget& form, QListWidget& list, Access access);

    /// The script of the selected row was changed.
    void Refresh();

private:
    int Row() const;
    void EditPart(const ScriptPath& path);

    EditorContext context_;
    QWidget& form_;
    QListWidget& list_;
    ScriptBlock* block_;
    Access access_;
};

} // namespace zem
