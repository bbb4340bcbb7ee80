#pragma once

#include "merge/DiffGames.h"
#include "model/Place.h"
#include "qt/LatestWork.h"

#include <QWidget>

#include <functional>
#include <memory>

class QLabel;
class QTextBrowser;

namespace zem {

class ResultList;

/// Two versions of a game, the later one second.
struct ComparedGames {
    GameModel before;
    GameModel after;
};

/// What two versions of a game differ in: a row for each difference, in groups by room and list, and the
/// selected one whole, with what went and what came marked in it.
class DifferenceView : public QWidget {
    Q_OBJECT

public:
    explicit DifferenceView(QWidget* parent = nullptr);

    /// Compares two versions, on another thread.
    /// @param read  gives them, on that thread; what it throws as KelError is told in place of the rows
    void Compare(std::function<ComparedGames()> read);

    /// Shows nothing but a sentence.
    void Clear(const QString& sentence = {});

    /// Whether something is still to be shown.
    bool IsBusy() const { return work_.IsRunning(); }

    /// Puts the view behind one widget of its window and before another one, for Tab.
    void SetTabOrder(QWidget* before, QWidget* after);

signals:
    /// A row was chosen that stands in the later version.
    void Chosen(const Place& place);

private:
    struct Compared;

    void ShowCompared(const Compared& compared);
    void ShowSelected(int row);

    QLabel* lblDifferences_;
    ResultList* lstDifferences_;
    QTextBrowser* txtDifference_;
    std::shared_ptr<const merge::GameDiff> diff_; // null when there is nothing to show
    LatestWork work_;
};

} // namespace zem
