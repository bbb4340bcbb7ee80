#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class frmAbout;
}

namespace zem {

/// What the program is.
class frmAbout : public QDialog {
    Q_OBJECT

public:
    explicit frmAbout(QWidget* parent = nullptr);
    ~frmAbout() override;

private:
    std::unique_ptr<Ui::frmAbout> ui_;
};

} // namespace zem
