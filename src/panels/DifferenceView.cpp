#include "panels/DifferenceView.h"

#include "base/KelError.h"
#include "commands/DiffPages.h"
#include "forms/ColourRoles.h"
#include "merge/Describe.h"
#include "merge/MarkedText.h"
#include "panels/ResultList.h"
#include "qt/QtText.h"

#include <QLabel>
#include <QSplitter>
#include <QTextBrowser>
#include <QVBoxLayout>

#include <utility>
#include <vector>

namespace zem {

using merge::Difference;
using merge::DifferenceKind;
using merge::GameDiff;
using merge::MarkedPiece;

struct DifferenceView::Compared {
    std::shared_ptr<const GameDiff> diff; // null when the versions could not be read
    std::vector<ResultRow> rows;
    QString problem;
};

namespace {

constexpr qsizetype MostShown = 200; // characters of a difference in its row

/// The lines of a text as one, for a row.
QString OnOneLine(const std::string& text) {
    QString line = ToQt(text).trimmed();
    line.replace(QLatin1String("\r\n"), QStringLiteral(" \u00B7 "));
    return line.size() > MostShown ? line.left(MostShown) + QChar(0x2026) : line;
}

/// A changed line as it is now, or as it was if nothing is left of it.
QString ChangedLine(const Difference& difference) {
    const std::vector<merge::MarkedLine> lines = merge::MarkChanges(difference.from, difference.to);
    if (lines.empty())
        return QStringLiteral("other empty lines");
    std::string now;
    std::string old;
    for (const MarkedPiece& piece : lines.front().pieces) {
        const std::string text = piece.kind == MarkedPiece::LeftOut ? "..." : piece.text;
        now += piece.kind == MarkedPiece::Removed ? "" : text;
        old += piece.kind == MarkedPiece::Added ? "" : text;
    }
    if (difference.to.empty())
        return QStringLiteral("(was: %1)").arg(OnOneLine(old));
    return OnOneLine(now.empty() ? "..." : now);
}

ResultRow RowFor(const GameDiff& diff, const Difference& difference) {
    ResultRow row;
    row.group = ToQt(diff.Group(difference));
    row.what = QLatin1String(WordFor(difference.kind));
    row.where = ToQt(diff.WhereInGroup(difference));
    if (row.where.isEmpty())
        row.where = row.group;
    switch (difference.kind) {
    case DifferenceKind::Added:
        row.text = OnOneLine(merge::RecordText(diff.After(), difference.after));
        break;
    case DifferenceKind::Removed:
        row.text = OnOneLine(merge::RecordText(diff.Before(), difference.before));
        break;
    case DifferenceKind::Changed:
        row.text = ChangedLine(difference);
        break;
    case DifferenceKind::Moved:
    case DifferenceKind::Reordered:
        row.text = ToQt(MovedWords(diff, difference));
        break;
    }
    return row;
}

} // namespace

DifferenceView::DifferenceView(QWidget* parent)
    : QWidget(parent),
      lblDifferences_(new QLabel(this)),
      lstDifferences_(new ResultList(this)),
      txtDifference_(new QTextBrowser(this)) {
    lblDifferences_->setObjectName(QStringLiteral("lblDifferences"));
    lblDifferences_->setTextFormat(Qt::PlainText);
    lblDifferences_->setWordWrap(true);
    lstDifferences_->setObjectName(QStringLiteral("lstDifferences"));
    lstDifferences_->setAccessibleName(QStringLiteral("Differences"));
    txtDifference_->setObjectName(QStringLiteral("txtDifference"));
    txtDifference_->setAccessibleName(QStringLiteral("The selected difference"));
    txtDifference_->setTabChangesFocus(true);
    txtDifference_->setOpenLinks(false);
    auto* parts = new QSplitter(Qt::Horizontal, this);
    parts->addWidget(lstDifferences_);
    parts->addWidget(txtDifference_);
    parts->setStretchFactor(0, 3);
    parts->setStretchFactor(1, 2);
    parts->setChildrenCollapsible(false);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->addWidget(lblDifferences_);
    column->addWidget(parts, 1);
    connect(lstDifferences_, &ResultList::SelectedChanged, this, &DifferenceView::ShowSelected);
    connect(lstDifferences_, &ResultList::Chosen, this, [this](int row) {
        const Difference& difference = diff_->Differences()[static_cast<std::size_t>(row)];
        if (difference.after < 0)
            return; // it is gone
        const bool isField = difference.kind == DifferenceKind::Changed;
        emit Chosen(diff_->After().PlaceOf(difference.after, isField ? &difference.field : nullptr));
    });
}

void DifferenceView::SetTabOrder(QWidget* before, QWidget* after) {
    setTabOrder(before, lstDifferences_);
    setTabOrder(lstDifferences_, txtDifference_);
    setTabOrder(txtDifference_, after);
}

void DifferenceView::Clear(const QString& sentence) {
    work_.Cancel();
    ShowCompared({nullptr, {}, sentence});
}

void DifferenceView::Compare(std::function<ComparedGames()> read) {
    lblDifferences_->setText(QStringLiteral("Comparing..."));
    work_.Run(
        *this,
        [read = std::move(read)](const IsOutdated&) {
            Compared compared;
            try {
                const ComparedGames games = read();
                compared.diff = std::make_shared<const GameDiff>(games.before, games.after);
            } catch (const KelError& error) {
                compared.problem = ToQt(error.ProblemWithText());
                return compared;
            }
            for (const Difference& difference : compared.diff->Differences())
                compared.rows.push_back(RowFor(*compared.diff, difference));
            return compared;
        },
        [this](const Compared& compared) { ShowCompared(compared); });
}

void DifferenceView::ShowCompared(const Compared& compared) {
    diff_ = compared.diff;
    const std::size_t count = compared.rows.size();
    lblDifferences_->setText(diff_ == nullptr ? compared.problem
                             : count == 0     ? QStringLiteral("Nothing differs")
                             : count == 1     ? QStringLiteral("1 difference")
                                              : QStringLiteral("%1 differences").arg(count));
    lstDifferences_->SetRows(compared.rows);
    if (count > 0 && lstDifferences_->Selected() < 0)
        lstDifferences_->Select(0);
    ShowSelected(lstDifferences_->Selected());
}

void DifferenceView::ShowSelected(int row) {
    if (diff_ == nullptr || row < 0 || static_cast<std::size_t>(row) >= diff_->Differences().size()) {
        txtDifference_->clear();
        return;
    }
    txtDifference_->document()->setDefaultStyleSheet(
        QStringLiteral("ins { color: %1; text-decoration: underline } del { color: %2; text-decoration: "
                       "line-through } dd { white-space: pre-wrap } .line { color: %3 }")
            .arg(ColourOf(ColourRole::True, palette()).name(), ColourOf(ColourRole::Error, palette()).name(),
                 ColourOf(ColourRole::SecondaryText, palette()).name()));
    txtDifference_->setHtml(QString::fromStdString(
        "<dl>" + DifferenceAsHtml(*diff_, diff_->Differences()[static_cast<std::size_t>(row)]) + "</dl>"));
}

} // namespace zem
