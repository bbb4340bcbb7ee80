#pragma once

#include <QFrame>
#include <QString>

#include <functional>
#include <vector>

class QHBoxLayout;
class QLabel;

namespace zem {

/// A message inside a window, for what the author should know but need not answer: a text, perhaps buttons,
/// and a cross that closes it, as Esc does while the bar has the focus. It takes no focus by itself, is
/// announced to screen readers when it is shown, and deletes itself when it is closed.
class MessageBar : public QFrame {
    Q_OBJECT

public:
    struct Button {
        QString text; // with a mnemonic that is free in the window
        std::function<void()> click;
        bool closes = true; // before `click` is called
    };

    explicit MessageBar(const QString& text, const std::vector<Button>& buttons = {},
                        QWidget* parent = nullptr);

    QString Text() const;

    /// Closes the bar as its cross does.
    void Close();

signals:
    void Closed();

protected:
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void AddButton(QHBoxLayout& row, const Button& button);

    QLabel* lblMessage_;
};

} // namespace zem
