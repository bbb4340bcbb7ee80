#include "forms/Palettes.h"

#include "forms/ColourRoles.h"

#include <QApplication>
#include <QGroupBox>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOption>

#include <algorithm>

namespace zem {

namespace {

struct ColourRow {
    QPalette::ColorRole role;
    QRgb light;
    QRgb dark;
};

constexpr ColourRow Colours[] = {
    {QPalette::Window, 0xFFF3F2EE, 0xFF23262A},      {QPalette::WindowText, 0xFF24292F, 0xFFE6E3DC},
    {QPalette::Base, 0xFFFFFEFB, 0xFF1B1D20},        {QPalette::AlternateBase, 0xFFF8F6F0, 0xFF202327},
    {QPalette::Text, 0xFF24292F, 0xFFE6E3DC},        {QPalette::PlaceholderText, 0xFF6D6A62, 0xFF9B978D},
    {QPalette::Button, 0xFFFFFEFB, 0xFF2F3338},      {QPalette::ButtonText, 0xFF24292F, 0xFFE6E3DC},
    {QPalette::BrightText, 0xFFB3261E, 0xFFF2877E},  {QPalette::Light, 0xFFFFFFFF, 0xFF4A4F55},
    {QPalette::Midlight, 0xFFFAF9F6, 0xFF3B4046},    {QPalette::Mid, 0xFF837E72, 0xFF7C8289},
    {QPalette::Dark, 0xFF8A8578, 0xFF8D929A},        {QPalette::Shadow, 0xFF5F5B52, 0xFF0C0D0E},
    {QPalette::Highlight, 0xFFD7EAF0, 0xFF21414D},   {QPalette::HighlightedText, 0xFF24292F, 0xFFE6E3DC},
    {QPalette::Link, 0xFF1F6F8B, 0xFF6CB6D0},        {QPalette::LinkVisited, 0xFF6B3FA0, 0xFFC3A1F5},
    {QPalette::ToolTipBase, 0xFFFFFEFB, 0xFF3B4046}, {QPalette::ToolTipText, 0xFF24292F, 0xFFF2F3F5},
};

/// What differs in controls that are switched off.
constexpr ColourRow DisabledColours[] = {
    {QPalette::WindowText, 0xFF7A766C, 0xFF8B887F}, {QPalette::Base, 0xFFF3F2EE, 0xFF23262A},
    {QPalette::Text, 0xFF7A766C, 0xFF8B887F},       {QPalette::PlaceholderText, 0xFF7F7B72, 0xFF807D75},
    {QPalette::ButtonText, 0xFF7A766C, 0xFF8F8C83}, {QPalette::Mid, 0xFFD9D5CA, 0xFF4A4F55},
    {QPalette::Highlight, 0xFFE4E2DA, 0xFF33383E},  {QPalette::HighlightedText, 0xFF66625A, 0xFFB4B1A9},
    {QPalette::Link, 0xFF7A766C, 0xFF8B887F},       {QPalette::LinkVisited, 0xFF7A766C, 0xFF8B887F},
};

QPalette PaletteOf(Look look) {
    const auto colour = [look](const ColourRow& row) {
        return QColor(look == Look::Dark ? row.dark : row.light);
    };
    QPalette palette;
    for (const ColourRow& row : Colours)
        palette.setColor(row.role, colour(row));
    for (const ColourRow& row : DisabledColours)
        palette.setColor(QPalette::Disabled, row.role, colour(row));
    return palette;
}

/// Fusion makes its outlines of the colour of the window, somewhat darker: nobody sees them on a dark window,
/// and few on a light one. Here they are drawn once more, in a colour that stands out.
class OutlinedStyle : public QProxyStyle {
public:
    OutlinedStyle() : QProxyStyle(QStringLiteral("fusion")) {}

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        const bool isGroupBox = element == PE_FrameGroupBox; // Fusion draws a dark image.
        if (!isGroupBox && element != PE_IndicatorToolBarSeparator)
            QProxyStyle::drawPrimitive(element, option, painter, widget);
        if (!IsHighlighted(element, *option))
            DrawOutline(element, isGroupBox ? GroupBoxFrame(*option, widget) : option->rect, option->palette,
                        *painter);
    }

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
        QProxyStyle::drawControl(element, option, painter, widget);
        const auto* item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
        if (element == CE_MenuItem && item != nullptr &&
            item->menuItemType == QStyleOptionMenuItem::Separator) {
            painter->setPen(option->palette.color(QPalette::Disabled, QPalette::Mid));
            painter->drawLine(QLine(option->rect.left() + 4, option->rect.center().y(),
                                    option->rect.right() - 4, option->rect.center().y()));
        }
    }

    /// The buttons of questions have no pictures, as those of all other windows have none.
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returned) const override {
        return hint == SH_DialogButtonBox_ButtonsHaveIcons
                   ? 0
                   : QProxyStyle::styleHint(hint, option, widget, returned);
    }

private:
    /// Whether it has the outline of the focus or of the default button, which are seen well enough.
    static bool IsHighlighted(PrimitiveElement element, const QStyleOption& option) {
        const auto* button = qstyleoption_cast<const QStyleOptionButton*>(&option);
        const bool isDefault =
            button != nullptr && button->features.testFlag(QStyleOptionButton::DefaultButton);
        return isDefault || (option.state.testFlag(State_HasFocus) && element != PE_Frame);
    }

    /// Below the title.
    QRect GroupBoxFrame(const QStyleOption& option, const QWidget* widget) const {
        constexpr int TopMargin = 3; // This is the margin that Fusion uses.
        const auto* box = qobject_cast<const QGroupBox*>(widget);
        const int title = box == nullptr || box->title().isEmpty()
                              ? 0
                              : std::max(pixelMetric(PM_ExclusiveIndicatorHeight, &option, widget),
                                         option.fontMetrics.height());
        return option.rect.adjusted(0, title + TopMargin, 0, 0);
    }

    static void DrawOutline(PrimitiveElement element, const QRect& rect, const QPalette& palette,
                            QPainter& painter) {
        const QRect outline = rect.adjusted(0, 0, -1, -1);
        painter.save();
        painter.setPen(palette.color(QPalette::Mid));
        painter.setBrush(Qt::NoBrush);
        switch (element) {
        case PE_IndicatorToolBarSeparator:
            painter.setPen(palette.color(QPalette::Disabled, QPalette::Mid));
            painter.drawLine(rect.center().x(), rect.top() + 4, rect.center().x(), rect.bottom() - 4);
            break;
        case PE_FrameGroupBox:
        case PE_PanelMenu:
        case PE_FrameTabWidget:
            painter.setPen(ColourOf(ColourRole::Hairline, palette));
            painter.drawRect(outline);
            break;
        case PE_Frame:
        case PE_IndicatorCheckBox:
            painter.drawRect(outline);
            break;
        case PE_FrameLineEdit:
        case PE_PanelButtonCommand:
            painter.setRenderHint(QPainter::Antialiasing);
            painter.drawRoundedRect(QRectF(outline).translated(0.5, 0.5), 2, 2);
            break;
        case PE_IndicatorRadioButton:
            painter.setRenderHint(QPainter::Antialiasing);
            painter.drawEllipse(QRectF(outline).translated(0.5, 0.5));
            break;
        default:
            break;
        }
        painter.restore();
    }
};

} // namespace

void ApplyLook(Look look) {
    static const QString startedWith = QApplication::style()->name();
    static Look now = Look::Desktop;
    if (look == now)
        return;
    now = look;
    QApplication::setStyle(look == Look::Desktop ? QStyleFactory::create(startedWith) : new OutlinedStyle);
    QApplication::setPalette(look == Look::Desktop ? QPalette() : PaletteOf(look));
}

void ApplyLetterSize(int percent) {
    static const QFont ofDesktop = QApplication::font();
    static int now = 100;
    if (percent == now)
        return;
    now = percent;
    QFont font = ofDesktop;
    if (ofDesktop.pointSizeF() > 0)
        font.setPointSizeF(ofDesktop.pointSizeF() * percent / 100);
    else
        font.setPixelSize(ofDesktop.pixelSize() * percent / 100);
    QApplication::setFont(font);
}

QPalette LightPalette() {
    return PaletteOf(Look::Light);
}

} // namespace zem
