#pragma once

#include <QLineEdit>

#include <string>

class QCompleter;
class QLabel;
class QStringListModel;

namespace zem {

class Dialogs;
class ScriptEditing;

/// A box into which the lines of a script are typed. Commands are offered by any of their words, then the
/// names that fit. Return makes a line of the text; where it is none, a label says why and the text stays.
class LineBox : public QLineEdit {
    Q_OBJECT

public:
    explicit LineBox(QWidget* parent = nullptr);

    /// Must be called once. All outlive the box.
    /// @param problem  says what is wrong; may be shared by several boxes
    void Use(const ScriptEditing& scripts, Dialogs& dialogs, QLabel& problem);

signals:
    /// The author has typed a whole line. The box is empty by then.
    void LineTyped(const std::string& line);

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void Offer();
    void Choose(int row);
    void Enter();
    void ShowProblem(const QString& problem);

    const ScriptEditing* scripts_ = nullptr;
    QLabel* problem_ = nullptr;
    QCompleter* matches_;
    QStringListModel* list_;
    QStringList replacements_; // the whole text of the box for each row of the list
};

} // namespace zem
