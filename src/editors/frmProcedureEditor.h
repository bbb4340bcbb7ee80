#pragma once

#include "forms/EditorContext.h"
#include "model/Place.h"

#include <QDialog>

#include <memory>
#include <string_view>
#include <vector>

namespace Ui {
class frmProcedureEditor;
}

namespace zem {

class SelectedScript;

/// The list of the game's procedures, without those that the editor makes itself. Everything here changes the
/// game at once.
class frmProcedureEditor : public QDialog {
    Q_OBJECT

public:
    explicit frmProcedureEditor(const EditorContext& context, QWidget* parent = nullptr);
    ~frmProcedureEditor() override;

private:
    void Fill();
    void ShowScripts();
    int SelectedProcedure() const; // from 1; 0 for none
    void butAdd_Click();
    void butEdit_Click();
    void butRemove_Click();
    std::vector<Place> SelectedPlaces() const;
    void Paste(std::string_view text);

    std::unique_ptr<Ui::frmProcedureEditor> ui_;
    EditorContext context_;
    std::vector<int> procedures_;      // by row, from 1: names may be equal
    SelectedScript* script_ = nullptr; // below the list
};

} // namespace zem
