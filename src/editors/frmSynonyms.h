#pragma once

#include "forms/EditorContext.h"

#include <QDialog>

#include <memory>
#include <string>
#include <vector>

namespace Ui {
class frmSynonyms;
}

namespace zem {

/// The words that stand for others.
class frmSynonyms : public QDialog {
    Q_OBJECT

public:
    explicit frmSynonyms(const EditorContext& context, QWidget* parent = nullptr);
    ~frmSynonyms() override;

private:
    void butAdd_Click();
    void butEdit_Click();
    void butRemove_Click();
    void butOK_Click();
    void Write(GameModel& game) const;

    std::unique_ptr<Ui::frmSynonyms> ui_;
    EditorContext context_;
    std::vector<SynonymEntry> entries_; // by row
    std::unique_ptr<GameEdit> edit_;
};

} // namespace zem
