#pragma once

#include "forms/EditorContext.h"
#include "model/GameModel.h"

#include <QDialog>

#include <memory>

namespace Ui {
class frmSynonymEditor;
}

namespace zem {

/// Edits one entry of the synonyms: some words, and the word that they are converted to.
class frmSynonymEditor : public QDialog {
    Q_OBJECT

public:
    frmSynonymEditor(const EditorContext& context, const SynonymEntry& entry, QWidget* parent = nullptr);
    ~frmSynonymEditor() override;

    /// The edited entry; for the caller when the window was closed with OK.
    SynonymEntry Entry() const;

private:
    void butAdd_Click();
    void butOK_Click();

    std::unique_ptr<Ui::frmSynonymEditor> ui_;
    EditorContext context_;
};

} // namespace zem
