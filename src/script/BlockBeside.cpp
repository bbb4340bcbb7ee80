#include "script/BlockBeside.h"

#include "forms/ListRows.h"
#include "forms/RunCommand.h"
#include "script/ScriptBlock.h"
#include "script/ScriptEditing.h"

#include <QLabel>
#include <QLayout>
#include <QListWidget>
#include <QSplitter>

#include <memory>

namespace zem {

namespace {

/// A label speaks only for a control that stands beside it in the same widget.
void NameAsItsLabel(const QWidget& form, QWidget& control) {
    for (const QLabel* label : form.findChildren<QLabel*>())
        if (label->buddy() == &control && control.accessibleName().isEmpty())
            control.setAccessibleName(label->text().remove(u'&').remove(u':'));
}

} // namespace

ScriptBlock* PutBlockBeside(QWidget& control, const QWidget& form, Qt::Orientation orientation) {
    NameAsItsLabel(form, control);
    auto* both = new QSplitter(orientation, control.parentWidget());
    const std::unique_ptr<QLayoutItem> old(control.parentWidget()->layout()->replaceWidget(&control, both));
    auto* block = new ScriptBlock;
    block->setObjectName(QStringLiteral("blk") + control.objectName().mid(3));
    both->addWidget(&control);
    both->addWidget(block);
    both->setChildrenCollapsible(false);
    both->setStretchFactor(0, 2);
    both->setStretchFactor(1, 3);
    QWidget::setTabOrder(&control, block);
    return block;
}

SelectedScript::SelectedScript(const EditorContext& context, QWidget& form, QListWidget& list, Access access)
    : QObject(&form),
      context_(context),
      form_(form),
      list_(list),
      block_(PutBlockBeside(list, form, Qt::Vertical)),
      access_(std::move(access)) {
    block_->setAccessibleName(tr("The script of the selected row"));
    // Later, because a list tells of a row while its record is still being added or removed.
    connect(&list, &QListWidget::itemSelectionChanged, this, &SelectedScript::Refresh, Qt::QueuedConnection);
    connect(&list, &QListWidget::itemChanged, this, &SelectedScript::Refresh, Qt::QueuedConnection);
    connect(block_, &ScriptBlock::PartActivated, this, [this](const ScriptPath& path) {
        RunCommand(context_.dialogs, &form_, [&] { EditPart(path); });
    });
    Refresh();
}

int SelectedScript::Row() const {
    return SelectedRow(list_);
}

void SelectedScript::Refresh() {
    const int row = Row();
    block_->Show(context_.scripts, row < 0 ? std::string() : access_.read(row));
    block_->setVisible(!block_->Rows().empty());
}

void SelectedScript::EditPart(const ScriptPath& path) {
    const int row = Row();
    if (row < 0)
        return;
    std::string script = access_.read(row);
    if (context_.scripts.EditPart(&form_, script, path, access_.what(row)))
        access_.write(row, script);
    Refresh();
}

} // namespace zem
