#pragma once

#include "prose/ProseMarks.h"

#include <QObject>
#include <QTextEdit>
#include <QTimer>

#include <vector>

class QTextBlock;

namespace zem {

class GameSpelling;
class PlainTextBox;

/// Dims the format codes of a box of several lines and marks its unknown words, as they are typed. Only what
/// is in sight is looked at, and always after the key has been shown, so that typing stays as fast in a text
/// of any length.
class BoxMarks : public QObject {
    Q_OBJECT

public:
    /// @param box       owns this object
    /// @param spelling  outlives the box; null where words are not checked
    BoxMarks(PlainTextBox& box, GameSpelling* spelling);

    /// The unknown word at a position of the box; an empty one for none.
    ProseMark UnknownAt(int position) const;

    /// Selects the next unknown word behind the caret, after the last the first. False when there is none.
    bool SelectNextUnknown();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void Wait();
    void Update();
    void MarkBlock(const QTextBlock& block, int first, int last,
                   QList<QTextEdit::ExtraSelection>& selections) const;

    PlainTextBox& box_;
    GameSpelling* spelling_;
    QTimer wait_;
    int typedTo_ = -1; // the author is typing a word that ends here; -1 for none
};

} // namespace zem
