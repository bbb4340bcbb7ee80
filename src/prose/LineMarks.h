#pragma once

#include "prose/ProseMarks.h"

#include <QObject>
#include <QTimer>

#include <vector>

class QLineEdit;

namespace zem {

class GameSpelling;

/// The same as BoxMarks for a box of one line, of which players may read a part only.
class LineMarks : public QObject {
    Q_OBJECT

public:
    /// @param box       owns this object
    /// @param spelling  outlives the box; null where words are not checked
    /// @param parts     empty for a text that players read as a whole
    LineMarks(QLineEdit& box, GameSpelling* spelling, ProseParts parts);

    /// The marks that are shown.
    const std::vector<ProseMark>& Shown() const { return shown_; }

    /// The unknown word at a position of the box; an empty one for none.
    ProseMark UnknownAt(int position) const;

    /// Selects the next unknown word behind the caret, after the last the first. False when there is none.
    bool SelectNextUnknown();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    std::vector<ProseMark> Find() const;
    void Wait();
    void Update();
    void Show();

    QLineEdit& box_;
    GameSpelling* spelling_;
    ProseParts parts_;
    QTimer wait_;
    std::vector<ProseMark> shown_;
    int typedTo_ = -1;         // the author is typing a word that ends here; -1 for none
    bool isComposing_ = false; // an input method has not finished its word
    bool isShowing_ = false;
};

} // namespace zem
