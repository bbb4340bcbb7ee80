#pragma once

#include "base/Host.h"

#include <QDialog>

#include <cstdint>
#include <memory>

namespace Ui {
class frmOrbMsgBox;
}

namespace zem {

/// The editor's own message window. It keeps its own caption, whatever the message.
class frmOrbMsgBox : public QDialog {
    Q_OBJECT

public:
    frmOrbMsgBox(const QString& text, MessageButtons buttons, QWidget* parent = nullptr);
    ~frmOrbMsgBox() override;

    /// What was answered; valid once the window is closed.
    MessageResult Result() const;

    void reject() override;

protected:
    void showEvent(QShowEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void butOK_Click();
    void butCancel_Click();

    std::unique_ptr<Ui::frmOrbMsgBox> ui_;
    MessageButtons buttons_;
    std::int16_t MsgBoxResult = 2; // 1 the first button, 2 the second
};

} // namespace zem
