#pragma once

#include <QDialog>

#include <functional>
#include <vector>

class QLabel;
class QLineEdit;
class QTreeWidget;

namespace zem {

/// A line to type a few words into, and below it what they may mean: commands, or the names of a game.
class frmQuickFind : public QDialog {
    Q_OBJECT

public:
    struct Row {
        QString title;
        QString where;
        QString keys;   // empty for none
        QString whyNot; // it cannot be chosen now; empty when it can
    };

    /// @param fitting  the numbers of the rows that fit the typed words, the best first
    /// @param row  of a number; asked for those alone that are shown
    frmQuickFind(const QString& caption, const QString& prompt,
                 std::function<std::vector<int>(const QString&)> fitting, std::function<Row(int)> row,
                 QWidget* parent = nullptr);

    /// The number of the chosen row; for the caller when the window was closed with a choice.
    int Chosen() const { return chosen_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void ShowFitting();
    void Choose();

    std::function<std::vector<int>(const QString&)> fitting_;
    std::function<Row(int)> row_;
    QLineEdit* txtWords_;
    QTreeWidget* lstFound_;
    QLabel* lblFound_;
    int chosen_ = -1;
};

} // namespace zem
