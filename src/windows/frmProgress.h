#pragma once

#include <QDialog>

#include <memory>

namespace Ui {
class frmProgress;
}

namespace zem {

/// Shows the stages of a load or a save. It is painted after every stage, although the work keeps the one
/// thread busy.
class frmProgress : public QDialog {
    Q_OBJECT

public:
    explicit frmProgress(QWidget* parent = nullptr);
    ~frmProgress() override;

    void ShowStage(const QString& text);
    void ShowProgress(int percent);

    /// Nothing stops the work half-way.
    void reject() override {}

private:
    std::unique_ptr<Ui::frmProgress> ui_;
};

} // namespace zem
