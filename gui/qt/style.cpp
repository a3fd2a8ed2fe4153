#include "gui/qt/style.h"

#include <QApplication>
#include <QFrame>
#include <QIcon>
#include <QPainter>
#include <QPalette>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOption>

#include <algorithm>

namespace tvw::gui {

namespace {

constexpr int kInactiveAlpha = 170; ///< of 255
constexpr int kSmallestFont = 9;    ///< [points]

/// Text on the window has a contrast of 11 to 1, greyed text one of 4 to 1.
QPalette darkPalette()
{
    const QColor window(0x2b, 0x2d, 0x31), base(0x1f, 0x21, 0x24), button(0x3c, 0x3f, 0x45);
    const QColor text(0xe2, 0xe4, 0xe8), greyed(0x86, 0x8b, 0x93), accent(0x2f, 0x7f, 0xd1);
    QPalette palette(button, window);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                            QPalette::ToolTipText, QPalette::BrightText}) {
        palette.setColor(role, text);
        palette.setColor(QPalette::Disabled, role, greyed);
    }
    palette.setColor(QPalette::PlaceholderText, greyed);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::Disabled, QPalette::Base, window);
    palette.setColor(QPalette::AlternateBase, QColor(0x25, 0x27, 0x2b));
    palette.setColor(QPalette::ToolTipBase, QColor(0x17, 0x18, 0x1a));
    palette.setColor(QPalette::Light, QColor(0x52, 0x56, 0x5d));
    palette.setColor(QPalette::Midlight, QColor(0x47, 0x4a, 0x51));
    palette.setColor(QPalette::Mid, QColor(0x26, 0x28, 0x2c));
    palette.setColor(QPalette::Dark, QColor(0x17, 0x18, 0x1a));
    palette.setColor(QPalette::Shadow, QColor(0x0e, 0x0f, 0x10));
    palette.setColor(QPalette::Highlight, accent);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, QColor(0x4a, 0x55, 0x62));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Disabled, QPalette::HighlightedText, greyed);
    palette.setColor(QPalette::Link, QColor(0x6a, 0xb0, 0xf5));
    palette.setColor(QPalette::LinkVisited, QColor(0xa9, 0x95, 0xe8));
    return palette;
}

constexpr int kIndicator = 16; ///< side of a check box [logical pixels]

/// A check box whose outline can be seen when it is empty.
void drawCheckBox(QPainter& painter, const QStyleOption& option)
{
    const bool isEnabled = option.state & QStyle::State_Enabled;
    const QPalette::ColorGroup group = isEnabled ? QPalette::Active : QPalette::Disabled;
    const QColor text = option.palette.color(group, QPalette::Text);
    const bool isUnderMouse = isEnabled && option.state & QStyle::State_MouseOver;
    const QRectF box = QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(option.palette.color(group, isUnderMouse ? QPalette::Link : QPalette::Mid)
                       .lighter(isUnderMouse ? 100 : 260));
    painter.setBrush(option.palette.color(group, QPalette::Base));
    painter.drawRoundedRect(box, 2.0, 2.0);
    const double unit = box.width() / 15.0;
    const auto at = [&](double x, double y) { return box.topLeft() + QPointF(x, y) * unit; };
    if (option.state & QStyle::State_NoChange) {
        painter.fillRect(QRectF(at(4.0, 6.0), at(11.0, 9.0)), text);
    } else if (option.state & QStyle::State_On) {
        painter.setPen(QPen(text, 2.0 * unit, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        const QPointF mark[] = {at(3.5, 7.5), at(6.5, 10.5), at(11.5, 4.5)};
        painter.drawPolyline(mark, 3);
    }
    painter.restore();
}

/// A button that is on: red where it means that something is being recorded.
void drawHeldButton(QPainter& painter, const QStyleOption& option, bool records)
{
    const QColor accent = option.palette.color(QPalette::Highlight);
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(option.palette.color(QPalette::Shadow));
    painter.setBrush(records ? QColor(0xc4, 0x32, 0x32) : accent.darker(120));
    painter.drawRoundedRect(QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5), 2.0, 2.0);
    painter.restore();
}

/// A disc with a letter, for message boxes.
QIcon sign(const QColor& color, QChar letter)
{
    constexpr int kSide = 96; // enough for 48 logical pixels on a dense screen
    QPixmap pixmap(kSide, kSide);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(pixmap.rect().adjusted(4, 4, -4, -4));
    QFont font = QApplication::font();
    font.setPixelSize(kSide * 5 / 8);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(pixmap.rect(), Qt::AlignCenter, letter);
    return pixmap;
}

/// Fusion with a focus rectangle that can be seen on dark ground and thin frames that are not
/// louder than what they hold.
class Look : public QProxyStyle
{
public:
    Look() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion"))) {}

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override
    {
        if (element == PE_PanelMenu) { // with an outline, else it runs into the window under it
            painter->setPen(option->palette.color(QPalette::Light));
            painter->setBrush(option->palette.color(QPalette::AlternateBase));
            painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
            return;
        }
        if ((element == PE_PanelButtonCommand || element == PE_PanelButtonTool) &&
            option->state & State_On) {
            drawHeldButton(*painter, *option, widget && widget->property(kRecords).toBool());
            return;
        }
        if (element == PE_IndicatorCheckBox || element == PE_IndicatorItemViewItemCheck) {
            drawCheckBox(*painter, *option);
            return;
        }
        if (element != PE_FrameFocusRect) {
            QProxyStyle::drawPrimitive(element, option, painter, widget);
            return;
        }
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(QPen(option->palette.color(QPalette::Link), 1.0));
        painter->setBrush(Qt::NoBrush);
        painter->drawRoundedRect(QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5), 2.0, 2.0);
        painter->restore();
    }

    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override
    {
        const auto* const frame = qstyleoption_cast<const QStyleOptionFrame*>(option);
        if (element != CE_ShapedFrame || !frame || frame->frameShape != QFrame::Box) {
            QProxyStyle::drawControl(element, option, painter, widget);
            return;
        }
        QStyleOptionFrame quiet = *frame;
        quiet.palette.setColor(QPalette::WindowText, quiet.palette.color(QPalette::Light));
        QProxyStyle::drawControl(element, &quiet, painter, widget);
    }

    QIcon standardIcon(StandardPixmap which, const QStyleOption* option,
                       const QWidget* widget) const override
    {
        switch (which) {
        case SP_MessageBoxQuestion:
            return sign(QColor(0x2f, 0x7f, 0xd1), QLatin1Char('?'));
        case SP_MessageBoxInformation:
            return sign(QColor(0x2f, 0x7f, 0xd1), QLatin1Char('i'));
        case SP_MessageBoxWarning:
            return sign(QColor(0xc9, 0x8a, 0x1b), QLatin1Char('!'));
        case SP_MessageBoxCritical:
            return sign(QColor(0xc9, 0x3c, 0x37), QLatin1Char('!'));
        default:
            return QProxyStyle::standardIcon(which, option, widget);
        }
    }

    int pixelMetric(PixelMetric metric, const QStyleOption* option,
                    const QWidget* widget) const override
    {
        const bool isIndicator = metric == PM_IndicatorWidth || metric == PM_IndicatorHeight;
        return isIndicator ? kIndicator : QProxyStyle::pixelMetric(metric, option, widget);
    }
};

const char* const kStyleSheet =
    "QToolTip { color: #e2e4e8; background: #17181a; border: 1px solid #52565d; padding: 3px; }"
    "QMenuBar { background: #232529; }"
    "QMenuBar::item { padding: 4px 8px; background: transparent; }"
    "QMenuBar::item:selected { background: #2f7fd1; color: white; }";

} // namespace

void applyStyle(QApplication& application)
{
    QApplication::setStyle(new Look);
    QApplication::setPalette(darkPalette());
    QFont font = QApplication::font();
    font.setPointSize(std::max(font.pointSize(), kSmallestFont));
    QApplication::setFont(font);
    application.setStyleSheet(QString::fromLatin1(kStyleSheet));
}

void softenInactiveHighlight()
{
    QPalette palette = QApplication::palette();
    QColor color = palette.color(QPalette::Active, QPalette::Highlight);
    color.setAlpha(kInactiveAlpha);
    palette.setColor(QPalette::Inactive, QPalette::Highlight, color);
    QApplication::setPalette(palette);
}

} // namespace tvw::gui
