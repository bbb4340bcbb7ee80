#include "script/ScriptBlock.h"

#include "base/LineText.h"
#include "forms/ToolTip.h"
#include "qt/QtText.h"
#include "script/ReachedLines.h"
#include "script/ScriptEditing.h"
#include "script/ScriptRowPainter.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>

#include <algorithm>

namespace zem {

namespace {

constexpr std::size_t MostTipRows = 30;
constexpr int RowsAtOnce = 100; // laid out before the window is shown; the others while it is

/// The procedures that the row calls, each with its lines.
QString CalledText(const ScriptEditing& scripts, const ScriptRow& row) {
    const GameModel game = scripts.Game();
    RowOptions options;
    options.friendly = scripts.IsFriendly();
    options.most = MostTipRows;
    std::string text;
    for (const RowSpan& span : row.spans) {
        if (span.procedure.empty())
            continue;
        text += text.empty() ? "" : "\n";
        text += span.procedure + ":";
        const auto body =
            std::find_if(game.Procedures.begin(), game.Procedures.end(), [&](const Procedure& procedure) {
                return EqualIgnoringCase(procedure.Name, span.procedure);
            });
        if (body == game.Procedures.end()) {
            text += "\n    there is no such procedure";
            continue;
        }
        for (const ScriptRow& line : RowsOfScript(game, (*body).Script, scripts.Commands(), options))
            text += "\n" + std::string(4 + 4 * static_cast<std::size_t>(line.indent), ' ') + line.Text();
    }
    return ToQt(text);
}

} // namespace

ScriptBlock::ScriptBlock(QWidget* parent) : QListView(parent) {
    setAccessibleName(tr("The whole script"));
    setWhatsThis(
        tr("The script with all its branches. A double-click or Return opens the editor of a line; the "
           "right arrow key shows what a procedure does, the left one hides it."));
    setModel(new ScriptRowModel(
        rows_,
        [this](const ScriptRow& row) {
            const QString called = scripts_ == nullptr ? QString() : CalledText(*scripts_, row);
            const QString text = called.isEmpty() ? ToQt(row.Text()) : called;
            return ToolTipOf(row.remark.empty() ? text
                                                : tr("No run and no walk has got here: %1.\n%2")
                                                      .arg(QString::fromStdString(row.remark), text));
        },
        this));
    setItemDelegate(new ScriptRowPainter(rows_, this));
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setResizeMode(QListView::Adjust);
    setLayoutMode(QListView::Batched);
    setBatchSize(RowsAtOnce);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setMinimumSize(160, 60);
    connect(this, &QListView::doubleClicked, this, &ScriptBlock::Activate);
    AddCommand(tr("&Edit line"), Qt::Key_Return);
    AddCommand(tr("&Show what it calls"), Qt::Key_Right);
    AddCommand(tr("&Hide what it calls"), Qt::Key_Left);
}

void ScriptBlock::AllowChanges() {
    isChanged_ = true;
    AddCommand(tr("&Remove line"), Qt::Key_Delete);
    AddCommand(tr("Move &up"), Qt::CTRL | Qt::Key_Up);
    AddCommand(tr("Move &down"), Qt::CTRL | Qt::Key_Down);
}

/// Puts what a key does into the menu.
void ScriptBlock::AddCommand(const QString& caption, const QKeySequence& key) {
    auto* command = new QAction(caption + u'\t' + key.toString(QKeySequence::NativeText), this);
    connect(command, &QAction::triggered, this, [this, key] {
        QKeyEvent press(QEvent::KeyPress, key[0].key(), key[0].keyboardModifiers());
        keyPressEvent(&press);
    });
    addAction(command);
}

void ScriptBlock::Show(const ScriptEditing& scripts, const std::string& script, const std::string& home) {
    scripts_ = &scripts;
    script_ = script;
    home_ = home.empty() ? script : home;
    Fill();
}

void ScriptBlock::Fill() {
    const int current = currentIndex().row();
    static_cast<ScriptRowModel*>(model())->Reset([this] {
        options_.friendly = scripts_->IsFriendly();
        rows_ = RowsOfScript(scripts_->Game(), script_, scripts_->Commands(), options_);
        MarkReached();
    });
    if (current >= 0 && !rows_.empty())
        setCurrentIndex(model()->index(std::min(current, static_cast<int>(rows_.size()) - 1), 0));
}

/// Says of each row whether it has ever run.
void ScriptBlock::MarkReached() {
    hits_.assign(rows_.size(), std::nullopt);
    const std::shared_ptr<const ReachedLines> known = scripts_->Reached();
    if (known == nullptr || known->lines == nullptr)
        return;
    const GameModel game = scripts_->Game();
    for (std::size_t k = 0; k < rows_.size(); ++k) {
        const ScriptPath& path = rows_[k].path;
        const bool isOtherwise =
            std::any_of(rows_.begin(), rows_.begin() + static_cast<std::ptrdiff_t>(k),
                        [&](const ScriptRow& row) { return row.path == path && !path.empty(); });
        ReachedRow reached = ReachedRowOf(*known->lines, game, script_, home_, path, isOtherwise);
        rows_[k].remark = reached.remark.toStdString();
        hits_[k] = reached.hit;
    }
}

void ScriptBlock::contextMenuEvent(QContextMenuEvent* event) {
    const int row = indexAt(event->reason() == QContextMenuEvent::Mouse ? event->pos()
                                                                        : visualRect(currentIndex()).center())
                        .row();
    const std::shared_ptr<const ReachedLines> known = scripts_ == nullptr ? nullptr : scripts_->Reached();
    QMenu menu(this);
    const QAction* which = nullptr;
    std::optional<play::Hit> hit;
    if (known != nullptr && known->judged != nullptr && row >= 0) {
        hit = hits_[static_cast<std::size_t>(row)];
        QAction* told = menu.addAction(hit ? tr("&Which run gets here?") : tr("No run gets here"));
        told->setObjectName(QStringLiteral("actWhichRun"));
        told->setEnabled(hit.has_value());
        menu.addSeparator();
        which = told;
    }
    menu.addActions(actions()); // what keys do
    if (menu.exec(event->globalPos()) == which && hit)
        known->playRun(known->judged, *hit);
}

ScriptPath ScriptBlock::CurrentPath() const {
    const auto row = static_cast<std::size_t>(currentIndex().row());
    return row < rows_.size() ? rows_[row].path : ScriptPath();
}

void ScriptBlock::SelectPath(const ScriptPath& path) {
    const auto found =
        std::find_if(rows_.begin(), rows_.end(), [&](const ScriptRow& row) { return row.path == path; });
    if (found != rows_.end())
        setCurrentIndex(model()->index(static_cast<int>(found - rows_.begin()), 0));
}

bool ScriptBlock::TellsMore() const {
    return std::any_of(rows_.begin(), rows_.end(), [](const ScriptRow& row) {
        return row.indent > 0 || std::any_of(row.spans.begin(), row.spans.end(),
                                             [](const RowSpan& span) { return !span.procedure.empty(); });
    });
}

void ScriptBlock::Activate(const QModelIndex& index) {
    const auto row = static_cast<std::size_t>(index.row());
    if (row < rows_.size() && !rows_[row].path.empty())
        emit PartActivated(ScriptPath(rows_[row].path)); // a copy: the rows change meanwhile
}

/// Shows or hides what the procedures of the current row do; false where it calls none.
bool ScriptBlock::Unfold(bool isUnfolded) {
    const auto current = static_cast<std::size_t>(currentIndex().row());
    if (current >= rows_.size())
        return false;
    bool isChanged = false;
    for (const RowSpan& span : rows_[current].spans) {
        if (span.procedure.empty())
            continue;
        const std::string name = Lower(span.procedure);
        isChanged |= isUnfolded ? options_.unfolded.insert(name).second : options_.unfolded.erase(name) != 0;
    }
    if (isChanged)
        Fill();
    return isChanged;
}

void ScriptBlock::keyPressEvent(QKeyEvent* event) {
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const bool isPlain = modifiers == Qt::NoModifier;
    const ScriptPath path = CurrentPath();
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (isPlain && currentIndex().isValid()) {
            Activate(currentIndex());
            return;
        }
        break;
    case Qt::Key_Right:
    case Qt::Key_Left:
        if (isPlain && Unfold(event->key() == Qt::Key_Right))
            return;
        break;
    case Qt::Key_Delete:
        if (isPlain && isChanged_ && !path.empty()) {
            emit RemoveAsked(path);
            return;
        }
        break;
    case Qt::Key_Up:
    case Qt::Key_Down:
        if (modifiers == Qt::ControlModifier && isChanged_ && !path.empty()) {
            emit MoveAsked(path, event->key() == Qt::Key_Up ? -1 : 1);
            return;
        }
        break;
    default:
        break;
    }
    QListView::keyPressEvent(event);
}

void ScriptBlock::changeEvent(QEvent* event) {
    QListView::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        viewport()->update();
}

/// The rows are broken anew for the new width.
void ScriptBlock::resizeEvent(QResizeEvent* event) {
    QListView::resizeEvent(event);
    scheduleDelayedItemsLayout();
}

} // namespace zem
