#pragma once

#include "prose/ProseBox.h"

#include <QWidget>

class QLabel;
class QLineEdit;

namespace zem {

/// Finds words in one box, in any capitals. Return goes on, Shift+Return goes back, Esc closes the bar.
class FindBar : public QWidget {
    Q_OBJECT

public:
    FindBar(const ProseBox& box, QWidget* parent);

    /// Shows the bar and lets the author type.
    void Begin();

    void GoOn(bool backwards);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void FindFrom(int position);
    void SelectHit(qsizetype at);
    void Close();

    ProseBox box_;
    QLineEdit* txtFind_;
    QLabel* lblAnswer_;
};

} // namespace zem
