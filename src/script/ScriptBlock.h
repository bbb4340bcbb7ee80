#pragma once

#include "kel/ScriptRows.h"
#include "play/Outcome.h"

#include <QListView>

#include <optional>
#include <string>
#include <vector>

namespace zem {

class ScriptEditing;

/// Shows a whole script to be read: branches indented, internal procedures unfolded, the procedures that it
/// calls in the tool tip of their line, or below it with the right arrow key. What it shows cannot be typed
/// into.
class ScriptBlock : public QListView {
    Q_OBJECT

public:
    explicit ScriptBlock(QWidget* parent = nullptr);

    /// Shows a script as the game with its open drafts has it. The row in which one was stays the current
    /// one.
    /// @param scripts  outlives this widget
    /// @param home  the value of the field of which the script is the lines; empty where it is that itself
    void Show(const ScriptEditing& scripts, const std::string& script, const std::string& home = {});

    /// The way to the line of the current row; empty for none.
    ScriptPath CurrentPath() const;

    /// Makes the row of a line the current one; nothing where it has none.
    void SelectPath(const ScriptPath& path);

    const std::vector<ScriptRow>& Rows() const { return rows_; }

    /// Whether the rows tell more than the lines do by themselves: there are branches or procedures.
    bool TellsMore() const;

    /// Delete and Ctrl with an arrow key ask for a change from now on; otherwise the script is only read.
    void AllowChanges();

signals:
    /// A row was double-clicked, or Return was pressed on it.
    void PartActivated(const zem::ScriptPath& path);
    void RemoveAsked(const zem::ScriptPath& path);
    void MoveAsked(const zem::ScriptPath& path, int by);

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void Fill();
    void MarkReached();
    void Activate(const QModelIndex& index);
    bool Unfold(bool isUnfolded);
    void AddCommand(const QString& caption, const QKeySequence& key);

    const ScriptEditing* scripts_ = nullptr;
    std::string script_;
    std::string home_;
    RowOptions options_;
    std::vector<ScriptRow> rows_;
    std::vector<std::optional<play::Hit>> hits_; // of each row, by which a run that gets there is found
    bool isChanged_ = false;
};

} // namespace zem
