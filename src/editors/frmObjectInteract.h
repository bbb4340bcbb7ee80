#pragma once

#include "forms/EditorContext.h"
#include "forms/ScriptPairList.h"

#include <QDialog>

#include <memory>
#include <vector>

namespace Ui {
class frmObjectInteract;
}

namespace zem {

/// Edits a list of objects with a script for each: what can be used on or given to something.
class frmObjectInteract : public QDialog {
    Q_OBJECT

public:
    /// @param heading  says what the list is
    frmObjectInteract(const EditorContext& context, const QString& caption, const QString& heading,
                      const std::vector<ScriptPair>& objects, QWidget* parent = nullptr);
    ~frmObjectInteract() override;

    /// The edited list; for the caller when the window was closed with OK.
    const std::vector<ScriptPair>& Objects() const { return objects_->Pairs(); }

private:
    void butAdd_Click();
    void butEdit_Click();

    std::unique_ptr<Ui::frmObjectInteract> ui_;
    EditorContext context_;
    std::unique_ptr<ScriptPairList> objects_;
};

/// Edits the use-able objects that another form holds; they stay as they are when the author cancels.
void EditUses(const EditorContext& context, const QString& heading, std::vector<ScriptPair>& uses,
              QWidget* parent);

/// The same for give-able objects.
void EditGives(const EditorContext& context, const QString& heading, std::vector<ScriptPair>& gives,
               QWidget* parent);

} // namespace zem
