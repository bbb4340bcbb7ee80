#pragma once

#include "forms/EditorContext.h"
#include "model/Place.h"

#include <QDialog>

#include <memory>
#include <string_view>
#include <vector>

namespace Ui {
class frmTextSectionEdit;
}

namespace zem {

/// Edits the texts of the game. Everything here changes the game at once.
class frmTextSectionEdit : public QDialog {
    Q_OBJECT

public:
    explicit frmTextSectionEdit(const EditorContext& context, QWidget* parent = nullptr);
    ~frmTextSectionEdit() override;

    void done(int result) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    int SelectedSection() const; // from 1; 0 for none
    void cmbTextSections_Click();
    void txtText_Change();
    void butAdd_Click();
    void butRename_Click();
    std::vector<Place> SelectedPlaces() const;
    void Paste(std::string_view text);

    std::unique_ptr<Ui::frmTextSectionEdit> ui_;
    EditorContext context_;
};

} // namespace zem
