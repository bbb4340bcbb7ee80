#pragma once

#include "model/GameModel.h"
#include "model/Place.h"
#include "problems/Problem.h"
#include "qt/LatestWork.h"
#include "windows/Landing.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

#include <memory>
#include <vector>

class QDialog;
class QLabel;
class QWidget;

namespace zem {

class FieldMark;
class OpenEdits;
class ProblemWatch;
struct FoundProblems;

/// The checks of what open editors hold. They belong to the main window, so that no editor waits for one when
/// it is closed.
struct EditorChecks : QObject {
    using QObject::QObject;

    LatestWork problems;
    LatestWork offers;
};

/// Shows the errors and warnings of the record in an editor as marks at its fields. They are those of the
/// game as it would be with OK, which is checked on another thread whenever the author pauses.
class EditorMarks : public QObject {
    Q_OBJECT

public:
    /// All arguments outlive this object.
    /// @param form    the editor
    /// @param record  that it edits: a room, a thing, or the game with its own fields; a step with the entry
    /// 0
    ///                for a whole list
    EditorMarks(QDialog& form, const Place& record, const OpenEdits& edits, const ProblemWatch& watch,
                EditorChecks& checks);
    ~EditorMarks() override;

    /// Whether marks are still to be shown.
    bool IsBusy() const {
        return wait_.isActive() || checks_.problems.IsRunning() || checks_.offers.IsRunning();
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    /// A problem of the record, and the way to what it is about.
    struct Own {
        problems::Problem problem;
        std::vector<LandingStep> steps; // at least one
        QString text;                   // that is told
        QString value;                  // of the field; what a box of another window must show to be meant
    };
    struct Checked {
        std::shared_ptr<const FoundProblems> found;
        std::vector<Own> own;
    };
    /// A way to put a problem right that changes nothing but the text of one field.
    struct FieldFix {
        std::size_t own = 0;
        QString caption;
        std::string text; // of the field afterwards
    };

    static std::vector<Own> OwnOf(const FoundProblems& found, const Place& record);
    static std::vector<FieldFix> FixesOf(const FoundProblems& found, const std::vector<Own>& own);

    void Check();
    void Show(Checked checked);
    void Arrange();
    void DropMarksIn(const QObject& window);
    void AddKeys(QWidget& window);
    QWidget* ControlOf(const Own& own) const;
    std::vector<FieldMark*> MarksHere() const;
    void ShowFixes(const std::vector<FieldFix>& fixes);
    void MarkPages();
    void Fix(const Own& own, const std::string& text);
    void OpenMenu();
    void GoToNext(bool backwards);
    FieldMark* MarkOf(const QWidget* control) const;

    QDialog& form_;
    Place record_;
    const OpenEdits& edits_;
    const ProblemWatch& watch_;
    EditorChecks& checks_;
    QTimer wait_;
    std::unique_ptr<GameModel> game_; // that is checked or shown; null at first
    Checked shown_;
    std::vector<QPointer<FieldMark>> marks_; // those in windows that this one has opened go with them
    std::vector<QWidget*> controls_;         // that carry the marks, of each problem; only to be compared
    std::vector<QLabel*> pageMarks_;
};

} // namespace zem
