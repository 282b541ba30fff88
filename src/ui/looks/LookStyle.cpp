#include "ui/looks/LookStyle.h"

#include "platform/Icons.h"
#include "ui/looks/LookPainting.h"

#include <QApplication>
#include <QFontMetrics>
#include <QHash>
#include <QPainter>
#include <QStyleFactory>
#include <QStyleOption>
#include <QWidget>
#include <algorithm>

namespace wendmark {

namespace {

using Painting = void (*)(const QStyleOption&, QPainter&, const QWidget*);

// Pixels.
constexpr int grid = 8;
constexpr int usualIcon = 16;
constexpr int besideText = 4;
constexpr int aroundText = 12; // Above and below that of a button or a field, together.

const QHash<int, Painting>& primitives() {
    static const QHash<int, Painting> table = {{QStyle::PE_PanelButtonCommand, paintButton},
                                               {QStyle::PE_PanelButtonBevel, paintButton},
                                               {QStyle::PE_PanelButtonTool, paintToolButton},
                                               {QStyle::PE_FrameFocusRect, paintFocus},
                                               {QStyle::PE_FrameDefaultButton, paintNothing},
                                               {QStyle::PE_PanelLineEdit, paintField},
                                               {QStyle::PE_FrameLineEdit, paintFieldFrame},
                                               {QStyle::PE_Frame, paintFrame},
                                               {QStyle::PE_FrameTabWidget, paintFrame},
                                               {QStyle::PE_FrameMenu, paintMenuFrame},
                                               {QStyle::PE_FrameGroupBox, paintGroup},
                                               {QStyle::PE_FrameStatusBarItem, paintNothing},
                                               {QStyle::PE_FrameTabBarBase, paintTabBarBase},
                                               {QStyle::PE_IndicatorCheckBox, paintCheckBox},
                                               {QStyle::PE_IndicatorItemViewItemCheck, paintCheckBox},
                                               {QStyle::PE_IndicatorRadioButton, paintRadioButton},
                                               {QStyle::PE_IndicatorArrowUp, paintArrowUp},
                                               {QStyle::PE_IndicatorArrowDown, paintArrowDown},
                                               {QStyle::PE_IndicatorArrowLeft, paintArrowLeft},
                                               {QStyle::PE_IndicatorArrowRight, paintArrowRight}};
    return table;
}

int textHeight(const QStyleOption* option) {
    return option == nullptr ? QFontMetrics(QApplication::font()).height() : option->fontMetrics.height();
}

/// Icons beside text grow with it.
int iconBeside(const QStyleOption* option) {
    constexpr int step = 4;
    return std::max(usualIcon, textHeight(option) / step * step);
}

/// Height of what stands in rows: buttons, fields, lists to choose from.
int rowHeight(const QStyleOption* option) {
    constexpr int step = 2;
    return std::max(4 * grid, (textHeight(option) + aroundText) / step * step);
}

const char* nameOfIcon(QStyle::StandardPixmap icon) {
    switch (icon) {
    case QStyle::SP_MessageBoxInformation:
        return "messageInformation";
    case QStyle::SP_MessageBoxQuestion:
        return "messageQuestion";
    case QStyle::SP_MessageBoxWarning:
        return "messageWarning";
    case QStyle::SP_MessageBoxCritical:
        return "messageCritical";
    default:
        return nullptr;
    }
}

bool isDark(const QPalette& palette) {
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

QColor colourOfIcon(QStyle::StandardPixmap icon) {
    const QPalette palette = QApplication::palette();
    if (icon == QStyle::SP_MessageBoxWarning)
        return isDark(palette) ? QColor(0xf2, 0xb8, 0x4b) : QColor(0x96, 0x5d, 0x00);
    if (icon == QStyle::SP_MessageBoxCritical)
        return isDark(palette) ? QColor(0xf2, 0x8b, 0x82) : QColor(0xb3, 0x26, 0x1e);
    return palette.color(isDark(palette) ? QPalette::Link : QPalette::Highlight);
}

} // namespace

LookStyle::LookStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {
    setObjectName(QStringLiteral("wendmark"));
}

void LookStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                              const QWidget* widget) const {
    if (const Painting paint = primitives().value(element))
        paint(*option, *painter, widget);
    else
        QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void LookStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const {
    const auto* const tab = qstyleoption_cast<const QStyleOptionTab*>(option);
    const auto* const button = qstyleoption_cast<const QStyleOptionButton*>(option);
    if (element == CE_TabBarTabShape && tab != nullptr && tab->shape == QTabBar::RoundedNorth) {
        paintTab(*option, *painter, widget);
    } else if (element == CE_HeaderSection || element == CE_HeaderEmptyArea) {
        paintHeader(*option, *painter, widget);
    } else if (element == CE_PushButtonLabel && button != nullptr && isPrimary(*option, widget)) {
        QStyleOptionButton label(*button);
        label.palette.setColor(QPalette::ButtonText, option->palette.color(QPalette::HighlightedText));
        QProxyStyle::drawControl(element, &label, painter, widget);
    } else if (element == CE_MenuItem && option->state.testFlag(State_Selected)) {
        drawChosenMenuItem(*option, *painter, widget);
    } else if (element == CE_ToolButtonLabel && isPrimary(*option, widget)) {
        drawToolButtonLabel(*option, *painter, widget);
    } else {
        QProxyStyle::drawControl(element, option, painter, widget);
    }
}

void LookStyle::drawToolButtonLabel(const QStyleOption& option, QPainter& painter,
                                    const QWidget* widget) const {
    const auto* const button = qstyleoption_cast<const QStyleOptionToolButton*>(&option);
    if (button == nullptr)
        return;
    QStyleOptionToolButton label(*button);
    label.palette.setColor(QPalette::ButtonText, option.palette.color(QPalette::HighlightedText));
    const qreal scale = painter.device()->devicePixelRatioF();
    label.icon = QIcon(button->icon.pixmap(button->iconSize, scale, QIcon::Selected));
    QProxyStyle::drawControl(CE_ToolButtonLabel, &label, &painter, widget);
}

/// With its icon in the colour of its text.
void LookStyle::drawChosenMenuItem(const QStyleOption& option, QPainter& painter,
                                   const QWidget* widget) const {
    const auto* const item = qstyleoption_cast<const QStyleOptionMenuItem*>(&option);
    if (item == nullptr)
        return;
    QStyleOptionMenuItem chosen(*item);
    const int side = pixelMetric(PM_SmallIconSize, &option, widget);
    const bool usable = option.state.testFlag(State_Enabled);
    if (usable && !item->icon.isNull())
        chosen.icon = QIcon(
            item->icon.pixmap(QSize(side, side), painter.device()->devicePixelRatioF(), QIcon::Selected));
    QProxyStyle::drawControl(CE_MenuItem, &chosen, &painter, widget);
}

void LookStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                   QPainter* painter, const QWidget* widget) const {
    if (control == CC_ComboBox)
        paintComboBox(*option, *painter, subControlRect(CC_ComboBox, option, SC_ComboBoxArrow, widget));
    else if (control == CC_ScrollBar)
        paintScrollBar(*option, *painter, subControlRect(CC_ScrollBar, option, SC_ScrollBarSlider, widget));
    else
        QProxyStyle::drawComplexControl(control, option, painter, widget);
}

QRect LookStyle::subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const {
    const QRect place = QProxyStyle::subElementRect(element, option, widget);
    const auto* const frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
    if (element == SE_LineEditContents && frame != nullptr && frame->lineWidth > 0)
        return place.adjusted(besideText, 0, -besideText, 0);
    return place;
}

QRect LookStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                const QWidget* widget) const {
    if (control == CC_ScrollBar)
        return scrollBarPart(*option, part, widget);
    return QProxyStyle::subControlRect(control, option, part, widget);
}

/// Without arrows: the handle has all of the bar.
QRect LookStyle::scrollBarPart(const QStyleOptionComplex& option, SubControl part,
                               const QWidget* widget) const {
    const auto* const bar = qstyleoption_cast<const QStyleOptionSlider*>(&option);
    if (bar == nullptr || part == SC_ScrollBarAddLine || part == SC_ScrollBarSubLine)
        return {};
    const QRect& all = option.rect;
    if (part == SC_ScrollBarGroove)
        return all;
    const bool lies = bar->orientation == Qt::Horizontal;
    const int length = lies ? all.width() : all.height();
    const int smallest = std::min(length, pixelMetric(PM_ScrollBarSliderMin, bar, widget));
    const qint64 range = qint64(bar->maximum) - bar->minimum;
    const qint64 shown = range > 0 ? qint64(length) * bar->pageStep / (range + bar->pageStep) : length;
    const int handle = static_cast<int>(std::clamp<qint64>(shown, smallest, length));
    const int start = sliderPositionFromValue(bar->minimum, bar->maximum, bar->sliderPosition,
                                              length - handle, bar->upsideDown);
    int from = start;
    int to = start + handle;
    if (part == SC_ScrollBarSubPage) {
        from = 0;
        to = start;
    } else if (part == SC_ScrollBarAddPage) {
        from = start + handle;
        to = length;
    }
    const QRect place = lies ? QRect(all.left() + from, all.top(), to - from, all.height())
                             : QRect(all.left(), all.top() + from, all.width(), to - from);
    return visualRect(lies ? option.direction : Qt::LeftToRight, all, place);
}

QSize LookStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                  const QWidget* widget) const {
    QSize whole = QProxyStyle::sizeFromContents(type, option, size, widget);
    if (type == CT_LineEdit)
        whole.rwidth() += 2 * besideText;
    if (type == CT_PushButton)
        whole = whole.expandedTo(QSize(whole.width() + grid, rowHeight(option)));
    else if (type == CT_LineEdit || type == CT_ComboBox)
        whole.setHeight(std::max(whole.height(), rowHeight(option)));
    else if (type == CT_ItemViewItem || type == CT_MenuItem)
        whole.rheight() += whole.height() < 3 * grid && whole.height() > grid ? grid / 2 : 0;
    return whole;
}

int LookStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const {
    switch (metric) {
    case PM_LayoutLeftMargin:
    case PM_LayoutTopMargin:
    case PM_LayoutRightMargin:
    case PM_LayoutBottomMargin:
    case PM_LayoutHorizontalSpacing:
    case PM_LayoutVerticalSpacing:
    case PM_CheckBoxLabelSpacing:
    case PM_RadioButtonLabelSpacing:
        return grid;
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
    case PM_SmallIconSize:
    case PM_ListViewIconSize:
    case PM_ButtonIconSize:
    case PM_TabBarIconSize:
        return iconBeside(option);
    case PM_MessageBoxIconSize:
        return std::max(5 * grid, 2 * textHeight(option));
    case PM_ScrollBarExtent:
        return 3 * grid / 2;
    case PM_ScrollBarSliderMin:
        return 4 * grid;
    case PM_TabBarTabVSpace:
        return 3 * grid / 2;
    case PM_TabBarTabHSpace:
        return 3 * grid;
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
    case PM_TabBarTabShiftVertical:
        return 0;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int LookStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* data) const {
    if (hint == SH_DialogButtonBox_ButtonsHaveIcons || hint == SH_EtchDisabledText)
        return 0;
    return QProxyStyle::styleHint(hint, option, widget, data);
}

QIcon LookStyle::standardIcon(StandardPixmap icon, const QStyleOption* option, const QWidget* widget) const {
    if (const char* const name = nameOfIcon(icon))
        return colouredIcon(QLatin1String(name), colourOfIcon(icon));
    if (icon == SP_DockWidgetCloseButton || icon == SP_TitleBarCloseButton)
        return themedIcon(QStringLiteral("mnuNavigateStop"));
    return QProxyStyle::standardIcon(icon, option, widget);
}

} // namespace wendmark
