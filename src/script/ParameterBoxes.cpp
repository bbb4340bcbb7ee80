#include "script/ParameterBoxes.h"

#include "base/LineText.h"
#include "figures/PrintedWords.h"
#include "forms/OfferMatches.h"
#include "forms/StorableInput.h"
#include "kel/ScriptLine.h"
#include "prose/HelpWriting.h"
#include "qt/QtText.h"
#include "script/ScriptEditing.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QScopedValueRollback>

#include <algorithm>

namespace zem {

namespace {

constexpr int LettersShown = 12; // at least, in each box

/// What each part is, from the description of the parameter: "The object; the room to move it to".
QStringList LabelsOf(const CommandDefinition& command, bool isFriendly, std::size_t count) {
    QStringList labels;
    for (const std::string* text :
         {isFriendly ? &command.FriendlyPrompt : &command.RawSyntax, &command.RawSyntax}) {
        labels.clear();
        for (const std::string_view part : SplitAt(*text, ";")) {
            QString label = ToQt(std::string(Trim(part)));
            if (!label.isEmpty())
                label[0] = label[0].toUpper();
            labels.append(label);
        }
        if (static_cast<std::size_t>(labels.size()) == count)
            return labels;
    }
    return labels;
}

} // namespace

ParameterBoxes::ParameterBoxes(QWidget* parent) : QWidget(parent) {
    auto* rows = new QFormLayout(this);
    rows->setContentsMargins(0, 0, 0, 0);
    hide();
}

void ParameterBoxes::Use(QLineEdit& whole, const ScriptEditing& scripts, Dialogs& dialogs) {
    whole_ = &whole;
    before_ = &whole;
    scripts_ = &scripts;
    dialogs_ = &dialogs;
    connect(&whole, &QLineEdit::textChanged, this, &ParameterBoxes::ShowWhole);
}

void ParameterBoxes::SetCommand(const CommandDefinition* command) {
    if (command == command_)
        return;
    command_ = command;
    syntax_ = command == nullptr ? ParameterSyntax() : ReadSyntax(command->RawSyntax);
    Build();
}

void ParameterBoxes::Build() {
    boxes_.clear();
    auto* rows = static_cast<QFormLayout*>(layout());
    while (rows->rowCount() > 0)
        rows->removeRow(0);
    names_.clear();
    const std::size_t count = syntax_.parts.size();
    setVisible(count > 1);
    if (count < 2)
        return;
    const QStringList labels = LabelsOf(*command_, scripts_->IsFriendly(), count);
    for (std::size_t k = 0; k < count; ++k)
        AddBox(syntax_.lastRepeats ? tr("Part %1").arg(k + 1) : labels.value(static_cast<qsizetype>(k)),
               syntax_.parts[k]);
    ShowWhole();
}

/// Where the last part may be repeated there is always one box more than parts.
void ParameterBoxes::AddSpareBoxes() {
    const auto parts = static_cast<std::size_t>(PartsOfWhole().size());
    while (syntax_.lastRepeats && boxes_.size() <= parts)
        AddBox(tr("Part %1").arg(boxes_.size() + 1), syntax_.parts.back());
}

void ParameterBoxes::AddBox(const QString& label, NameKind kind) {
    auto* box = new QComboBox(this);
    box->setObjectName(QStringLiteral("cmbPart_%1").arg(boxes_.size()));
    box->setEditable(true);
    box->setInsertPolicy(QComboBox::NoInsert);
    // Otherwise the box measures every name, and there may be 32,767.
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    box->setMinimumContentsLength(LettersShown);
    names_.push_back(std::make_unique<NameListModel>());
    if (kind != NameKind::None && kind != NameKind::File) {
        const auto names = scripts_->Names(kind);
        names_.back()->Reset(static_cast<int>(names->size()),
                             [names](int row) { return ToQt((*names)[static_cast<std::size_t>(row)]); });
    }
    box->setModel(names_.back().get());
    box->setCurrentIndex(-1);
    static_cast<QListView*>(box->view())->setUniformItemSizes(true);
    OfferMatches(*box);
    RefuseUnstorableText(*box->lineEdit(), *dialogs_);
    const CommandEntry* entry = scripts_->Commands().FindKeyword(command_->Keyword);
    if (context_ && entry != nullptr && figures::PrintedPart(*entry) == static_cast<int>(boxes_.size()))
        HelpWriting(*box->lineEdit(), *context_);
    box->setAccessibleName(label);
    box->setAccessibleDescription(label);
    connect(box, &QComboBox::editTextChanged, this, &ParameterBoxes::PartChanged);
    auto* text = new QLabel(label + u':', this);
    text->setTextFormat(Qt::PlainText);
    text->setBuddy(box);
    static_cast<QFormLayout*>(layout())->addRow(text, box);
    QWidget::setTabOrder(boxes_.empty() ? before_ : boxes_.back(), box);
    boxes_.push_back(box);
}

QStringList ParameterBoxes::PartsOfWhole() const {
    QStringList parts;
    const QString text = whole_->text();
    const QByteArray bytes = text.toLatin1(); // a byte for each character
    ForEachPart(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())), syntax_,
                [&](TextRange range, NameKind) {
                    parts.append(
                        text.mid(static_cast<qsizetype>(range.begin), static_cast<qsizetype>(range.Size())));
                });
    return parts;
}

void ParameterBoxes::ShowWhole() {
    if (showing_ || boxes_.empty())
        return;
    const QScopedValueRollback<bool> showing(showing_, true);
    AddSpareBoxes();
    const QStringList parts = PartsOfWhole();
    for (std::size_t k = 0; k < boxes_.size(); ++k)
        boxes_[k]->setEditText(parts.value(static_cast<qsizetype>(k)));
}

/// The parameter follows its parts; empty ones at the end of a list are left out.
void ParameterBoxes::PartChanged() {
    if (showing_)
        return;
    QStringList parts;
    for (const QComboBox* box : boxes_)
        parts.append(box->currentText());
    while (syntax_.lastRepeats && parts.size() > 1 && parts.last().trimmed().isEmpty())
        parts.removeLast();
    const QScopedValueRollback<bool> showing(showing_, true);
    whole_->setText(parts.join(QLatin1String("; ")));
    AddSpareBoxes();
}

} // namespace zem
