#include "panels/FindOptions.h"

#include "qt/QtText.h"

#include <QCheckBox>
#include <QComboBox>
#include <QHBoxLayout>
#include <QSignalBlocker>

#include <algorithm>
#include <iterator>

namespace zem {

FindOptions::FindOptions(bool hasLetters, QWidget* parent)
    : QWidget(parent),
      hasLetters_(hasLetters),
      cmbKind_(new QComboBox(this)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins({});
    cmbKind_->setObjectName(QStringLiteral("cmbFindKind"));
    cmbKind_->setAccessibleName(QStringLiteral("Where to look"));
    cmbKind_->setAccessibleDescription(cmbKind_->accessibleName()); // a box is read out as what it shows
    cmbKind_->addItem(QStringLiteral("everywhere"));
    for (const HitKind kind : HitKinds)
        cmbKind_->addItem(QLatin1String(Describe(kind)));
    row->addWidget(cmbKind_);
    connect(cmbKind_, &QComboBox::currentIndexChanged, this, &FindOptions::Changed);
    chkWords_ = AddBox("chkFindWords", QStringLiteral("Whole w&ords"));
    chkCapitals_ = AddBox("chkFindCapitals", QStringLiteral("Same &capitals"));
    chkExpression_ = AddBox("chkFindExpression", QStringLiteral("Regular e&xpression"));
}

QCheckBox* FindOptions::AddBox(const char* name, const QString& caption) {
    auto* box = new QCheckBox(hasLetters_ ? caption : QString(caption).remove(u'&'), this);
    box->setObjectName(QLatin1String(name));
    layout()->addWidget(box);
    connect(box, &QCheckBox::toggled, this, &FindOptions::Changed);
    return box;
}

FindQuery FindOptions::QueryFor(const QString& words) const {
    FindQuery query;
    query.words = FromQt(words);
    query.isRegularExpression = chkExpression_->isChecked();
    query.wholeWords = chkWords_->isChecked();
    query.capitals = chkCapitals_->isChecked();
    if (cmbKind_->currentIndex() > 0)
        query.kinds.Add(HitKinds[cmbKind_->currentIndex() - 1]);
    return query;
}

void FindOptions::Show(const FindQuery& query) {
    {
        const QSignalBlocker quiet(this);
        chkExpression_->setChecked(query.isRegularExpression);
        chkWords_->setChecked(query.wholeWords);
        chkCapitals_->setChecked(query.capitals);
        const auto* kind = std::find_if(std::begin(HitKinds), std::end(HitKinds),
                                        [&](HitKind one) { return query.kinds.Contains(one); });
        cmbKind_->setCurrentIndex(
            kind == std::end(HitKinds) ? 0 : static_cast<int>(kind - std::begin(HitKinds)) + 1);
    }
    emit Changed();
}

} // namespace zem
