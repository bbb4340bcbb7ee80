#include "painting/BookPages.h"

#include "base/KelError.h"
#include "forms/ColourRoles.h"
#include "forms/Palettes.h"
#include "painting/MapMarks.h"
#include "painting/MapPainter.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QHash>
#include <QPainter>
#include <QPdfWriter>
#include <QScopeGuard>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextFrame>
#include <QTextList>

#include <algorithm>
#include <vector>

namespace zem {

namespace {

constexpr int Resolution = 300;   // dots to the inch, of the layout
constexpr double TextSize = 10.5; // points
constexpr double PageMargin = 20; // millimetres
constexpr double IndentWidth = 6; // millimetres
constexpr double FootHeight = 12; // millimetres at the foot of a page, for its number
constexpr double MillimetresPerInch = 25.4;
constexpr double MapMargin = 24; // around the map, in its units

double DotsOf(double millimetres) {
    return millimetres * Resolution / MillimetresPerInch;
}

/// The pages of a text, with their numbers.
class Pages {
public:
    Pages(const std::string& html, QPdfWriter& pdf) : pdf_(pdf), size_(pdf.width(), pdf.height()) {
        document_.documentLayout()->setPaintDevice(&pdf);
        document_.setDefaultFont(QFont(QStringLiteral("serif"), -1));
        QFont font = document_.defaultFont();
        font.setPointSizeF(TextSize);
        document_.setDefaultFont(font);
        document_.setDocumentMargin(0);
        document_.setIndentWidth(DotsOf(IndentWidth));
        document_.setDefaultStyleSheet(QStringLiteral("a { color: black; text-decoration: none }"));
        document_.setHtml(QString::fromStdString(html));
        document_.setPageSize({size_.width(), TextHeight()});
        NumberLinks();
    }

    void Paint(QPainter& painter) {
        const int count = document_.pageCount();
        for (int page = 0; page < count; ++page) {
            pdf_.newPage();
            PaintPage(painter, page);
        }
    }

private:
    double TextHeight() const { return size_.height() - DotsOf(FootHeight); }

    void PaintPage(QPainter& painter, int page) {
        const QRectF shown(0, page * TextHeight(), size_.width(), TextHeight());
        painter.save();
        painter.translate(0, -shown.top());
        QAbstractTextDocumentLayout::PaintContext context;
        context.clip = shown;
        context.palette = LightPalette();
        painter.setClipRect(shown);
        document_.documentLayout()->draw(&painter, context);
        painter.restore();
        painter.drawText(QRectF(0, TextHeight(), size_.width(), DotsOf(FootHeight)),
                         Qt::AlignHCenter | Qt::AlignBottom, QString::number(page + 1));
    }

    int PageOf(const QTextBlock& block) const {
        const double top = document_.documentLayout()->blockBoundingRect(block).top();
        return static_cast<int>(top / TextHeight()) + 1;
    }

    /// The pages of the headings, by the names that links have for them.
    QHash<QString, int> PagesOfAnchors() const {
        QHash<QString, int> pages;
        for (QTextBlock block = document_.begin(); block.isValid(); block = block.next())
            for (auto at = block.begin(); !at.atEnd(); ++at)
                for (const QString& name : at.fragment().charFormat().anchorNames())
                    pages.insert(name, PageOf(block));
        return pages;
    }

    /// Entries of lists that are a link and nothing else: those of the contents and of the index.
    std::vector<std::pair<QTextBlock, QString>> EntriesOfLists() const {
        std::vector<std::pair<QTextBlock, QString>> entries;
        for (QTextBlock block = document_.begin(); block.isValid(); block = block.next()) {
            if (block.textList() == nullptr || block.begin().atEnd())
                continue;
            const QTextFragment first = block.begin().fragment();
            const QString target = first.charFormat().anchorHref();
            if (target.startsWith(u'#') && first.length() == block.length() - 1)
                entries.emplace_back(block, target.mid(1));
        }
        return entries;
    }

    /// Room for the numbers is made first, so that they do not move what they tell of.
    void NumberLinks() {
        constexpr const char* Room = "000";
        const auto entries = EntriesOfLists();
        for (const auto& [block, target] : entries) {
            QTextCursor cursor(block);
            cursor.movePosition(QTextCursor::EndOfBlock);
            cursor.insertText(QChar(QChar::Nbsp) + QStringLiteral(" ") + QLatin1String(Room),
                              QTextCharFormat());
        }
        LayOutAnew();
        const QHash<QString, int> pages = PagesOfAnchors();
        for (const auto& [block, target] : entries) {
            QTextCursor cursor(block);
            cursor.movePosition(QTextCursor::EndOfBlock);
            cursor.movePosition(QTextCursor::PreviousCharacter, QTextCursor::KeepAnchor,
                                static_cast<int>(std::char_traits<char>::length(Room)));
            cursor.insertText(QString::number(pages.value(target)));
        }
        LayOutAnew();
    }

    /// A layout after edits drops lines of blocks that it only moves, so all of it is made anew.
    void LayOutAnew() { document_.markContentsDirty(0, document_.characterCount()); }

    QPdfWriter& pdf_;
    QSizeF size_;
    QTextDocument document_;
};

/// The whole map, as large as the page has room for it.
void PaintMap(QPainter& painter, const QSizeF& page, const routing::RoutedMap& map) {
    const QRectF area = ToQt(map.Bounds().Grown(MapMargin));
    const double scale = std::min({page.width() / area.width(), page.height() / area.height(),
                                   double(Resolution) / 96}); // no larger than on the screen
    MapView view;
    view.visible = area;
    view.zoom = std::max(scale, ZoomOfNames);
    view.palette = LightPalette();
    painter.save();
    painter.translate((page.width() - area.width() * scale) / 2, (page.height() - area.height() * scale) / 2);
    painter.scale(scale, scale);
    painter.translate(-area.topLeft());
    MapPainter(map).Paint(painter, view);
    painter.restore();
}

/// The same game gives the same bytes, so the day on which they were made stands nowhere in them.
void ForgetDate(QByteArray& pdf) {
    constexpr char Key[] = "/CreationDate (D:";
    constexpr char Day[] = "20000101000000";
    const qsizetype at = pdf.lastIndexOf(Key);
    if (at >= 0)
        pdf.replace(at + qsizetype(sizeof Key) - 1, qsizetype(sizeof Day) - 1, Day); // as long as it was
}

} // namespace

std::string BookPages(const std::string& html, const routing::RoutedMap& map) {
    // The fonts are written in the order of a hash, which must be the same each time.
    QHashSeed::setDeterministicGlobalSeed();
    const auto asBefore = qScopeGuard([] { QHashSeed::resetRandomGlobalSeed(); });
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter pdf(&buffer);
    pdf.setResolution(Resolution);
    pdf.setPageSize(QPageSize(QPageSize::A4));
    pdf.setPageMargins(QMarginsF(PageMargin, PageMargin, PageMargin, PageMargin), QPageLayout::Millimeter);
    QPainter painter;
    if (!painter.begin(&pdf))
        throw KelError("the pages could not be made");
    PaintMap(painter, QSizeF(pdf.width(), pdf.height()), map);
    Pages(html, pdf).Paint(painter);
    painter.end();
    ForgetDate(bytes);
    return bytes.toStdString();
}

} // namespace zem
