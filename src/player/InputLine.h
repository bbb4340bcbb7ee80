#pragma once

#include <QLineEdit>
#include <QStringList>

namespace zem {

/// Where the player types: the arrows bring earlier lines back, and words that the game knows are completed.
class InputLine : public QLineEdit {
    Q_OBJECT

public:
    explicit InputLine(QWidget* parent = nullptr);

    /// The words that Tab and typing complete.
    void SetWords(const QStringList& words);

    /// Whether Return alone sends an empty line, as answers may be empty.
    void AllowEmpty(bool allow) { allowsEmpty_ = allow; }

    /// Forgets the lines typed so far.
    void ForgetHistory();

signals:
    /// The player has typed a line and pressed Return.
    void Entered(const QString& line);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;

private:
    void Enter();
    void ShowEarlier(int step);
    void OfferWord();
    bool HasOffer() const;

    QStringList words_;
    QStringList history_;
    qsizetype shown_ = 0;    // of the history; its size for the line that is being typed
    QString typed_;          // while an earlier line is shown
    qsizetype lastSize_ = 0; // of the text, to tell typing from deleting
    bool hasOffer_ = false;  // the selection is a completion
    bool allowsEmpty_ = false;
};

} // namespace zem
