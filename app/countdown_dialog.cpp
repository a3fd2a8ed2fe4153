#include "app/countdown_dialog.h"

#include <QApplication>
#include <QPainter>
#include <QScreen>

#include <cmath>

namespace tvw::rgs::app {

namespace {

constexpr int kEdge = 64;

} // namespace

CountdownDialog::CountdownDialog()
    : QWidget(nullptr, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint)
{
    setAttribute(Qt::WA_ShowWithoutActivating); // the keys stay where the hands are
    setFocusPolicy(Qt::NoFocus);
    setObjectName("countdown");
    resize(kEdge, kEdge);
}

void CountdownDialog::show(int seconds, double fraction)
{
    seconds_ = seconds;
    fraction_ = fraction;
    if (!isVisible()) {
        const QWidget* const active = QApplication::activeWindow();
        const QScreen* const screen = active ? active->screen() : QApplication::primaryScreen();
        const QRect over = active ? active->frameGeometry() : screen->availableGeometry();
        move(over.center() - QPoint(kEdge / 2, kEdge / 2));
        QWidget::show();
    }
    update();
}

void CountdownDialog::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillRect(rect(), QColor(200, 200, 200, 255));
    const int side = std::min(width(), height());
    const QRect square((width() - side) / 2, (height() - side) / 2, side, side);
    constexpr int kTwelve = 90 * 16; // sixteenths of a degree
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(150, 150, 150, 255));
    painter.drawPie(square, kTwelve, static_cast<int>(std::lround(fraction_ * 360.0 * 16.0)));
    QFont font("Helvetica");
    font.setPixelSize(side);
    painter.setFont(font);
    painter.setPen(Qt::black);
    painter.drawText(rect(), Qt::AlignCenter, QString::number(seconds_));
}

} // namespace tvw::rgs::app
