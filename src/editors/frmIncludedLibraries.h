#pragma once

#include "forms/EditorContext.h"

#include <QDialog>

#include <memory>

namespace Ui {
class frmIncludedLibraries;
}

namespace zem {

/// The files that the game includes. They are not looked for.
class frmIncludedLibraries : public QDialog {
    Q_OBJECT

public:
    explicit frmIncludedLibraries(const EditorContext& context, QWidget* parent = nullptr);
    ~frmIncludedLibraries() override;

private:
    void butAdd_Click();
    void butOK_Click();
    void Write(GameModel& game) const;

    std::unique_ptr<Ui::frmIncludedLibraries> ui_;
    EditorContext context_;
    std::unique_ptr<GameEdit> edit_;
};

} // namespace zem
