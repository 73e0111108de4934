#include "Framework/UI/LookStyle.h"

#include "Framework/UI/LTrackControl.h"

#include <QAbstractItemView>
#include <QPainter>
#include <QPainterPath>
#include <QProxyStyle>
#include <QPushButton>
#include <QStyleFactory>
#include <QStyleOption>
#include <QToolButton>

#include <algorithm>

namespace {

using Look::Role;
using LookStyle::WidgetColor;

constexpr double kCorner = 4;
constexpr int kArrowStrip = 20;  ///< at the right of a popup menu
constexpr int kTextInset = 7;    ///< of the texts of fields and popup menus
constexpr int kLabelInset = 1;   ///< of which the library puts this much in itself
constexpr int kThumbDiameter = 16;
constexpr int kIndicatorSize = 16;

double FocusWidth() {
    return Look::ContrastInForce() == Look::Contrast::High ? 3 : 2;
}

bool Is(const QStyleOption& option, QStyle::StateFlag flag) {
    return (option.state & flag) != 0;
}

/// The line of a frame; what has the keyboard has a thicker one in the focus colour.
QPen FramePen(const QStyleOption& option, Role outline) {
    if (Is(option, QStyle::State_HasFocus) && Is(option, QStyle::State_Enabled)) {
        return {WidgetColor(Role::Focus), FocusWidth()};
    }
    return {WidgetColor(Is(option, QStyle::State_Enabled) ? outline : Role::FaintOutline), 1};
}

/// The area inside which a line of the pen's width stays inside `rect`.
QRectF Inside(const QRect& rect, const QPen& pen) {
    const double half = pen.widthF() / 2;
    return QRectF(rect).adjusted(half, half, -half, -half);
}

void PaintFrame(QPainter& painter, const QRect& rect, const QPen& pen, const QColor& fill, double corner) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(pen);
    painter.setBrush(fill);
    painter.drawRoundedRect(Inside(rect, pen), corner, corner);
    painter.restore();
}

Role ButtonFill(const QStyleOption& option) {
    if (!Is(option, QStyle::State_Enabled)) {
        return Role::Window;
    }
    if (Is(option, QStyle::State_Sunken) || Is(option, QStyle::State_On)) {
        return Role::ButtonPressed;
    }
    return Is(option, QStyle::State_MouseOver) ? Role::ButtonHover : Role::Button;
}

void PaintButton(QPainter& painter, const QStyleOption& option) {
    const auto* button = qstyleoption_cast<const QStyleOptionButton*>(&option);
    const bool isDefault = button != nullptr && (button->features & QStyleOptionButton::DefaultButton) != 0 &&
                           Is(option, QStyle::State_Enabled);
    QColor fill = WidgetColor(ButtonFill(option));
    if (isDefault) {
        const QColor accent = WidgetColor(Role::Accent);
        fill = Is(option, QStyle::State_Sunken)      ? accent.darker(125)
               : Is(option, QStyle::State_MouseOver) ? accent.lighter(112)
                                                     : accent;
    }
    PaintFrame(painter, option.rect, FramePen(option, Role::Outline), fill, kCorner);
}

void PaintField(QPainter& painter, const QStyleOption& option) {
    const bool isEnabled = Is(option, QStyle::State_Enabled);
    const QColor fill = isEnabled ? option.palette.color(QPalette::Base) : WidgetColor(Role::Window);
    PaintFrame(painter, option.rect, FramePen(option, Role::Outline), fill, kCorner);
}

/// The box or circle of a check box or radio button, filled with the accent when on.
QColor PaintIndicatorFrame(QPainter& painter, const QStyleOption& option, double corner) {
    const bool isEnabled = Is(option, QStyle::State_Enabled);
    const bool isFilled = isEnabled && Is(option, QStyle::State_On);
    const QColor fill = WidgetColor(isFilled ? Role::Accent : isEnabled ? Role::Field : Role::Window);
    const Role outline = Is(option, QStyle::State_MouseOver) ? Role::CaptionText : Role::Outline;
    PaintFrame(painter, option.rect, FramePen(option, outline), fill, corner);
    return WidgetColor(isFilled ? Role::OnAccent : Role::DisabledText);
}

void PaintCheckIndicator(QPainter& painter, const QStyleOption& option) {
    const QColor ink = PaintIndicatorFrame(painter, option, 3);
    if (!Is(option, QStyle::State_On)) {
        return;
    }
    const QRectF box(option.rect);
    const auto at = [&](double x, double y) {
        return QPointF(box.left() + box.width() * x, box.top() + box.height() * y);
    };
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(ink, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(QPolygonF({at(0.25, 0.52), at(0.43, 0.70), at(0.76, 0.32)}));
    painter.restore();
}

void PaintRadioIndicator(QPainter& painter, const QStyleOption& option) {
    const QColor ink = PaintIndicatorFrame(painter, option, option.rect.width() / 2.0);
    if (!Is(option, QStyle::State_On)) {
        return;
    }
    const double inset = option.rect.width() * 0.32;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    painter.drawEllipse(QRectF(option.rect).adjusted(inset, inset, -inset, -inset));
    painter.restore();
}

void PaintSlider(QPainter& painter, const QStyleOptionSlider& option) {
    const bool isEnabled = Is(option, QStyle::State_Enabled);
    const QRect& all = option.rect;
    const QRect groove(all.left(), all.center().y() - 2, all.width(), 5);
    PaintFrame(painter, groove, QPen(WidgetColor(isEnabled ? Role::Outline : Role::FaintOutline), 1),
               WidgetColor(Role::Track), 2.5);
    const TrackGeometry::Track track{
        .length = all.width(), .thumbLength = kThumbDiameter, .minimum = option.minimum, .maximum = option.maximum};
    const QRect thumb(all.left() + TrackGeometry::ThumbBegin(track, option.sliderPosition),
                      groove.center().y() - kThumbDiameter / 2 + 1, kThumbDiameter, kThumbDiameter);
    const bool isLit = Is(option, QStyle::State_MouseOver) || Is(option, QStyle::State_Sunken);
    const Role fill = !isEnabled ? Role::DisabledText : isLit ? Role::Text : Role::Thumb;
    PaintFrame(painter, thumb, FramePen(option, Role::Window), WidgetColor(fill), kThumbDiameter / 2.0);
}

void PaintDownArrow(QPainter& painter, const QRect& strip, const QColor& ink) {
    const QPointF middle = QRectF(strip).center();
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(ink, 1.6, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(QPolygonF({middle + QPointF(-4, -2), middle + QPointF(0, 2), middle + QPointF(4, -2)}));
    painter.restore();
}

void PaintPopupMenu(QPainter& painter, const QStyleOption& option) {
    PaintButton(painter, option);
    const QRect strip(option.rect.right() - kArrowStrip + 1, option.rect.top(), kArrowStrip, option.rect.height());
    PaintDownArrow(painter, strip,
                   WidgetColor(Is(option, QStyle::State_Enabled) ? Role::CaptionText : Role::DisabledText));
}

void PaintFocusRect(QPainter& painter, const QRect& rect) {
    PaintFrame(painter, rect, QPen(WidgetColor(Role::Focus), FocusWidth()), Qt::transparent, kCorner);
}

/// Below the title, where there is one.
void PaintGroupFrame(QPainter& painter, const QStyleOption& option) {
    const int titleHeight = std::max(option.fontMetrics.height(), kIndicatorSize) + 3;
    PaintFrame(painter, option.rect.adjusted(0, titleHeight, 0, 0), QPen(WidgetColor(Role::FaintOutline), 1),
               Qt::transparent, kCorner);
}

/// Whether a widget of this kind shows the focus in its own frame.
bool FramesItsFocus(const QWidget* widget) {
    return qobject_cast<const QAbstractButton*>(widget) != nullptr ||
           qobject_cast<const QAbstractItemView*>(widget) != nullptr;
}

class ProgramStyle final : public QProxyStyle {
public:
    ProgramStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override {
        switch (element) {
            case PE_PanelButtonCommand:
            case PE_PanelButtonTool:
                return PaintButton(*painter, *option);
            case PE_PanelLineEdit:
                return PaintField(*painter, *option);
            case PE_IndicatorCheckBox:
                return PaintCheckIndicator(*painter, *option);
            case PE_IndicatorRadioButton:
                return PaintRadioIndicator(*painter, *option);
            case PE_FrameGroupBox:
                return PaintGroupFrame(*painter, *option);
            case PE_FrameFocusRect:
                return FramesItsFocus(widget) ? void() : PaintFocusRect(*painter, option->rect);
            default:
                return QProxyStyle::drawPrimitive(element, option, painter, widget);
        }
    }

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
        const auto* popup = qstyleoption_cast<const QStyleOptionComboBox*>(option);
        if (element != CE_ComboBoxLabel || popup == nullptr) {
            QProxyStyle::drawControl(element, option, painter, widget);
            return;
        }
        QStyleOptionComboBox shortened = *popup;
        const int width = option->rect.width() - kTextInset - kArrowStrip;
        shortened.currentText = option->fontMetrics.elidedText(popup->currentText, Qt::ElideRight, width);
        QProxyStyle::drawControl(element, &shortened, painter, widget);
    }

    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override {
        if (const auto* slider = qstyleoption_cast<const QStyleOptionSlider*>(option);
            control == CC_Slider && slider != nullptr) {
            PaintSlider(*painter, *slider);
        } else if (control == CC_ComboBox) {
            PaintPopupMenu(*painter, *option);
        } else {
            QProxyStyle::drawComplexControl(control, option, painter, widget);
        }
    }

    [[nodiscard]] int pixelMetric(PixelMetric metric, const QStyleOption* option,
                                  const QWidget* widget) const override {
        switch (metric) {
            case PM_SliderLength:
            case PM_SliderThickness:
            case PM_SliderControlThickness:
                return kThumbDiameter;
            case PM_IndicatorWidth:
            case PM_IndicatorHeight:
            case PM_ExclusiveIndicatorWidth:
            case PM_ExclusiveIndicatorHeight:
                return kIndicatorSize;
            case PM_ButtonShiftHorizontal:
            case PM_ButtonShiftVertical:
                return 0;
            default:
                return QProxyStyle::pixelMetric(metric, option, widget);
        }
    }

    [[nodiscard]] QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                                       const QWidget* widget) const override {
        if (control == CC_ComboBox && part == SC_ComboBoxEditField) {
            return option->rect.adjusted(kTextInset - kLabelInset, 1, -kArrowStrip, -1);
        }
        return QProxyStyle::subControlRect(control, option, part, widget);
    }

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returnData) const override {
        if (hint == SH_DialogButtonBox_ButtonsHaveIcons || hint == SH_EtchDisabledText) {
            return 0;
        }
        return QProxyStyle::styleHint(hint, option, widget, returnData);
    }
};

}  // namespace

QColor LookStyle::WidgetColor(Look::Role role) {
    const RGBColor color = Look::ColorOf(role);
    return QColor::fromRgba64(color.red, color.green, color.blue);
}

QPalette LookStyle::Palette() {
    QPalette palette(WidgetColor(Role::Text), WidgetColor(Role::Button), WidgetColor(Role::ButtonHover),
                     WidgetColor(Role::Field), WidgetColor(Role::Outline), WidgetColor(Role::Text),
                     WidgetColor(Role::OnAccent), WidgetColor(Role::Field), WidgetColor(Role::Window));
    palette.setColor(QPalette::AlternateBase, WidgetColor(Role::Window));
    palette.setColor(QPalette::ToolTipBase, WidgetColor(Role::Button));
    palette.setColor(QPalette::ToolTipText, WidgetColor(Role::Text));
    palette.setColor(QPalette::PlaceholderText, WidgetColor(Role::QuietText));
    palette.setColor(QPalette::Highlight, WidgetColor(Role::Accent));
    palette.setColor(QPalette::HighlightedText, WidgetColor(Role::OnAccent));
    palette.setColor(QPalette::Link, WidgetColor(Role::Focus));
    palette.setColor(QPalette::LinkVisited, WidgetColor(Role::Focus));
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::HighlightedText}) {
        palette.setColor(QPalette::Disabled, role, WidgetColor(Role::DisabledText));
    }
    palette.setColor(QPalette::Disabled, QPalette::Base, WidgetColor(Role::Window));
    palette.setColor(QPalette::Disabled, QPalette::Highlight, WidgetColor(Role::Button));
    return palette;
}

std::unique_ptr<QStyle> LookStyle::Make() {
    return std::make_unique<ProgramStyle>();
}

void LookStyle::PaintScrollBar(QPainter& painter, const QWidget& bar, const QRect& thumb) {
    const QPen frame(WidgetColor(bar.isEnabled() ? Role::Outline : Role::FaintOutline), 1);
    PaintFrame(painter, bar.rect(), bar.hasFocus() ? QPen(WidgetColor(Role::Focus), FocusWidth()) : frame,
               WidgetColor(Role::Track), kCorner);
    if (!thumb.isEmpty()) {
        const QRect body = thumb.adjusted(3, 3, -3, -3);
        PaintFrame(painter, body, Qt::NoPen, WidgetColor(bar.underMouse() ? Role::Text : Role::Thumb), kCorner - 1);
    }
}
