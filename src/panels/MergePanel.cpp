#include "panels/MergePanel.h"

#include "base/Html.h"
#include "base/TextEncoding.h"
#include "forms/ColourRoles.h"
#include "forms/RunCommand.h"
#include "merge/MarkedText.h"
#include "panels/ResultList.h"
#include "session/GameMerge.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTextBrowser>
#include <QVBoxLayout>

#include <algorithm>
#include <map>
#include <utility>

namespace zem {

using merge::Conflict;
using merge::MarkedPiece;
using merge::Take;

namespace {

QString NameOfTake(const std::optional<Take>& take) {
    if (!take)
        return QStringLiteral("to decide");
    return *take == Take::Ours     ? QStringLiteral("mine")
           : *take == Take::Theirs ? QStringLiteral("theirs")
                                   : QStringLiteral("both");
}

std::string SidePieces(const std::vector<MarkedPiece>& pieces) {
    std::string html;
    for (const MarkedPiece& piece : pieces) {
        const std::string text = HtmlOf(ToUtf8(piece.text));
        if (piece.kind == MarkedPiece::Added)
            html += "<ins>" + text + "</ins>";
        else if (piece.kind != MarkedPiece::Removed)
            html += text;
    }
    return html;
}

/// All lines of a version, with the words marked that it has and the base has not.
QString SideAsHtml(const std::string& base, const std::string& side) {
    std::map<std::size_t, const std::vector<MarkedPiece>*> changed;
    const std::vector<merge::MarkedLine> marked = merge::MarkChanges(base, side);
    for (const merge::MarkedLine& line : marked)
        if (std::any_of(line.pieces.begin(), line.pieces.end(), [](const MarkedPiece& piece) {
                return piece.kind == MarkedPiece::Same || piece.kind == MarkedPiece::Added;
            }))
            changed[line.line] = &line.pieces;
    std::string html;
    std::size_t number = 0;
    for (const QString& line : ToQt(side).split(QLatin1String("\r\n"))) {
        const auto found = changed.find(++number);
        html += "<div>" + (found == changed.end() ? HtmlOf(line.toStdString()) : SidePieces(*found->second)) +
                "</div>";
    }
    return QString::fromStdString(html);
}

} // namespace

MergePanel::MergePanel(GameMerge& merge, Dialogs& dialogs, std::function<void(const Place&)> open,
                       QWidget* parent)
    : QDockWidget(QStringLiteral("Merge"), parent),
      merge_(merge),
      dialogs_(dialogs),
      lblConflicts_(new QLabel(this)),
      lstConflicts_(new ResultList(this)),
      butFinish_(new QPushButton(QStringLiteral("Fi&nish the merge"), this)) {
    setObjectName(QStringLiteral("dckMerge"));
    setProperty("isTabbed", true);
    setWidget(MakeControls());
    connect(lstConflicts_, &ResultList::SelectedChanged, this, &MergePanel::ShowSelected);
    connect(lstConflicts_, &ResultList::Chosen, this, [this, open = std::move(open)](int row) {
        if (const auto& place = merge_.Conflicts()[static_cast<std::size_t>(row)].inMerged)
            open(Place(*place));
    });
    for (const Take take : {Take::Ours, Take::Theirs, Take::Both})
        OnClick(takes_[static_cast<std::size_t>(take)], this, dialogs_, [this, take] { Decide(take); });
    OnClick(butFinish_, this, dialogs_, [this] { Finish(); });
    connect(&merge_, &GameMerge::Changed, this, &MergePanel::Refresh);
    Refresh();
}

QWidget* MergePanel::MakeControls() {
    lblConflicts_->setObjectName(QStringLiteral("lblConflicts"));
    lblConflicts_->setTextFormat(Qt::PlainText);
    lblConflicts_->setWordWrap(true);
    lstConflicts_->setObjectName(QStringLiteral("lstConflicts"));
    lstConflicts_->setAccessibleName(QStringLiteral("Conflicts"));
    butFinish_->setObjectName(QStringLiteral("butFinishMerge"));
    auto* content = new QWidget(this);
    auto* column = new QVBoxLayout(content);
    column->addWidget(lblConflicts_);
    column->addWidget(lstConflicts_, 1);
    column->addWidget(MakeSides(content), 1);
    auto* row = new QHBoxLayout;
    constexpr std::array<std::pair<const char*, const char*>, 3> Buttons = {
        {{"butTakeMine", "Take m&ine"}, {"butTakeTheirs", "Ta&ke theirs"}, {"butTakeBoth", "Take &both"}}};
    for (std::size_t k = 0; k < Buttons.size(); ++k) {
        takes_[k] = new QPushButton(QLatin1String(Buttons[k].second), content);
        takes_[k]->setObjectName(QLatin1String(Buttons[k].first));
        row->addWidget(takes_[k]);
    }
    row->addStretch(1);
    row->addWidget(butFinish_);
    column->addLayout(row);
    return content;
}

QWidget* MergePanel::MakeSides(QWidget* parent) {
    auto* sides = new QWidget(parent);
    auto* row = new QHBoxLayout(sides);
    row->setContentsMargins({});
    constexpr std::array<std::pair<const char*, const char*>, 3> Names = {
        {{"txtBase", "Both began as"}, {"txtMine", "Mine"}, {"txtTheirs", "Theirs"}}};
    for (std::size_t k = 0; k < Names.size(); ++k) {
        auto* side = new QVBoxLayout;
        auto* label = new QLabel(QLatin1String(Names[k].second), sides);
        sides_[k] = new QTextBrowser(sides);
        sides_[k]->setObjectName(QLatin1String(Names[k].first));
        sides_[k]->setAccessibleName(label->text());
        sides_[k]->setTabChangesFocus(true);
        sides_[k]->setOpenLinks(false);
        side->addWidget(label);
        side->addWidget(sides_[k], 1);
        row->addLayout(side, 1);
    }
    return sides;
}

void MergePanel::Refresh() {
    const std::vector<Conflict>& conflicts = merge_.Conflicts();
    std::vector<ResultRow> rows;
    for (std::size_t k = 0; k < conflicts.size(); ++k)
        rows.push_back({ToQt(conflicts[k].where), NameOfTake(merge_.Decision(k)),
                        conflicts[k].line > 1 ? QStringLiteral("line %1").arg(conflicts[k].line)
                                              : ToQt(conflicts[k].where),
                        GameMerge::Describe(conflicts[k].kind)});
    lstConflicts_->SetRows(std::move(rows));
    if (!conflicts.empty() && lstConflicts_->Selected() < 0)
        lstConflicts_->Select(0);
    const std::size_t left = merge_.CountUndecided();
    lblConflicts_->setText(
        !merge_.IsOpen()    ? QStringLiteral("There is no merge to settle.")
        : conflicts.empty() ? QStringLiteral("Both versions are merged without a conflict.")
        : left == 0         ? QStringLiteral("All is decided.")
        : left == 1         ? QStringLiteral("1 conflict to decide; until then the game holds mine.")
                    : QStringLiteral("%1 conflicts to decide; until then the game holds mine.").arg(left));
    butFinish_->setEnabled(merge_.IsOpen() && left == 0);
    ShowSelected(lstConflicts_->Selected());
}

void MergePanel::ShowSelected(int row) {
    const bool isRow = row >= 0 && static_cast<std::size_t>(row) < merge_.Conflicts().size();
    const Conflict none;
    const Conflict& conflict = isRow ? merge_.Conflicts()[static_cast<std::size_t>(row)] : none;
    const QString style =
        QStringLiteral("ins { color: %1; text-decoration: underline } div { white-space: pre-wrap }")
            .arg(ColourOf(ColourRole::Accent, palette()).name());
    const std::array<const std::string*, 3> texts = {&conflict.base, &conflict.ours, &conflict.theirs};
    for (std::size_t k = 0; k < texts.size(); ++k) {
        sides_[k]->document()->setDefaultStyleSheet(style);
        sides_[k]->setHtml(SideAsHtml(conflict.base, *texts[k]));
    }
    for (QPushButton* button : takes_)
        button->setEnabled(isRow);
    takes_[static_cast<std::size_t>(Take::Both)]->setEnabled(isRow && conflict.canTakeBoth);
}

/// Goes on to the next conflict that is still to be decided.
void MergePanel::Decide(Take take) {
    const int row = lstConflicts_->Selected();
    if (row < 0)
        return;
    const auto decided = static_cast<std::size_t>(row);
    if (!merge_.Decide(decided, take))
        throw CommandError(QStringLiteral("You have changed this place since the merge. What you wrote there "
                                          "stays; the rest of the decision is carried out."),
                           QStringLiteral("Merge"));
    const std::size_t count = merge_.Conflicts().size();
    for (std::size_t step = 1; step < count; ++step)
        if (const std::size_t next = (decided + step) % count; !merge_.Decision(next)) {
            lstConflicts_->Select(static_cast<int>(next));
            return;
        }
}

void MergePanel::Finish() {
    merge_.Finish();
    hide();
}

} // namespace zem
