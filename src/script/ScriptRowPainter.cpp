#include "script/ScriptRowPainter.h"

#include "forms/ColourRoles.h"
#include "forms/Wrapping.h"
#include "qt/QtText.h"
#include "script/ShowFormattedText.h"

#include <QAbstractItemView>
#include <QPainter>
#include <QTextLayout>

#include <cmath>

namespace zem {

namespace {

constexpr int IndentInLetters = 3;
constexpr int RowMargin = 6; // device-independent pixels beside a row
constexpr int MarkWidth = 2;
constexpr qsizetype MostLetters = 4000; // of a row; the rest of it stands in its tool tip and its editor

QColor ColourOfRole(RowRole role, const QPalette& palette) {
    switch (role) {
    case RowRole::Parameter:
        return ScreenColour(9, palette);
    case RowRole::Remark:
        return ColourOf(ColourRole::SecondaryText, palette);
    case RowRole::Problem:
        return ColourOf(ColourRole::Error, palette);
    default:
        return palette.color(QPalette::Text);
    }
}

QString ShownText(const ScriptRow& row) {
    QString text = ToQt(row.Text());
    if (text.size() > MostLetters)
        text = text.left(MostLetters) + QChar(u'…');
    return text;
}

QList<QTextLayout::FormatRange> Formats(const ScriptRow& row, const QPalette& palette, bool isSelected) {
    QList<QTextLayout::FormatRange> formats;
    int begin = 0;
    for (const RowSpan& span : row.spans) {
        QTextLayout::FormatRange range;
        range.start = begin;
        range.length = static_cast<int>(span.text.size());
        if (!isSelected)
            range.format.setForeground(ColourOfRole(span.role, palette));
        if (span.role == RowRole::Frame)
            range.format.setFontWeight(QFont::Bold);
        range.format.setFontUnderline(!span.procedure.empty());
        range.format.setFontItalic(span.role == RowRole::Remark);
        formats.append(range);
        begin += range.length;
    }
    return formats;
}

int IndentOf(const ScriptRow& row, const QFontMetrics& metrics) {
    return RowMargin + row.indent * IndentInLetters * metrics.averageCharWidth();
}

/// Breaks the row into lines; returns their height.
qreal LayOutRow(QTextLayout& layout, int width) {
    QTextOption option(Qt::AlignLeft);
    option.setWrapMode(HasEndlessWord(layout.text()) ? QTextOption::WrapAnywhere
                                                     : QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    qreal height = 0;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(std::max(width, 1));
        line.setPosition({0, height});
        height += line.height();
    }
    layout.endLayout();
    return height;
}

int WidthOf(const QStyleOptionViewItem& option) {
    const auto* view = qobject_cast<const QAbstractItemView*>(option.widget);
    return view != nullptr ? view->viewport()->width() : option.rect.width();
}

} // namespace

ScriptRowModel::ScriptRowModel(const std::vector<ScriptRow>& rows,
                               std::function<QString(const ScriptRow&)> tip, QObject* parent)
    : QAbstractListModel(parent),
      rows_(rows),
      tip_(std::move(tip)) {}

void ScriptRowModel::Reset(const std::function<void()>& change) {
    beginResetModel();
    change();
    endResetModel();
}

int ScriptRowModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant ScriptRowModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const ScriptRow& row = rows_[static_cast<std::size_t>(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return QString(row.indent * IndentInLetters, u' ') + ToQt(row.Text());
    case Qt::AccessibleTextRole: {
        const QString remark =
            row.remark.empty() ? QString() : QStringLiteral(" (%1)").arg(QString::fromStdString(row.remark));
        return (row.indent == 0 ? ToQt(row.Text())
                                : tr("level %1: %2").arg(row.indent + 1).arg(ToQt(row.Text()))) +
               remark;
    }
    case Qt::ToolTipRole:
        return tip_(row);
    default:
        return {};
    }
}

ScriptRowPainter::ScriptRowPainter(const std::vector<ScriptRow>& rows, QObject* parent)
    : QStyledItemDelegate(parent),
      rows_(rows) {}

void ScriptRowPainter::paint(QPainter* painter, const QStyleOptionViewItem& option,
                             const QModelIndex& index) const {
    QStyleOptionViewItem row = option;
    row.text.clear();
    option.widget->style()->drawControl(QStyle::CE_ItemViewItem, &row, painter, option.widget);
    const ScriptRow& shown = rows_[static_cast<std::size_t>(index.row())];
    const bool isSelected = option.state.testFlag(QStyle::State_Selected);
    const int indent = IndentOf(shown, option.fontMetrics);
    QTextLayout layout(ShownText(shown), option.font);
    layout.setFormats(Formats(shown, option.palette, isSelected));
    LayOutRow(layout, WidthOf(option) - indent - RowMargin);
    painter->save();
    painter->setPen(option.palette.color(isSelected ? QPalette::HighlightedText : QPalette::Text));
    layout.draw(painter, option.rect.topLeft() + QPoint(indent, 1));
    if (!shown.remark.empty()) {
        // Dashes beside what no run has reached, in one line from row to row.
        QPen dashes(ColourOf(ColourRole::Warning, option.palette), MarkWidth);
        dashes.setDashPattern({1.5, 1});
        painter->setPen(dashes);
        const int left = option.rect.left() + MarkWidth / 2 + 1;
        painter->drawLine(left, option.rect.top(), left, option.rect.bottom() + 1);
    }
    painter->restore();
}

QSize ScriptRowPainter::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    const ScriptRow& row = rows_[static_cast<std::size_t>(index.row())];
    const int width = WidthOf(option);
    QTextLayout layout(ShownText(row), option.font);
    layout.setFormats(Formats(row, option.palette, false));
    const qreal height = LayOutRow(layout, width - IndentOf(row, option.fontMetrics) - RowMargin);
    return {std::min(width, 40), static_cast<int>(std::ceil(height)) + 2};
}

} // namespace zem
