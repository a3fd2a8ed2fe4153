#include "studio/timeline.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace tvw::rgs::studio {

namespace {

constexpr int kMargin = 14;      // [pixels], left and right
constexpr int kRulerHeight = 24; // [pixels]
constexpr int kLabelSpace = 56;  // [pixels] a label needs

const QColor kBack(0x1e, 0x20, 0x25), kTrack(0x2b, 0x2e, 0x35), kTick(0x5a, 0x5f, 0x6a),
    kText(0xb8, 0xbd, 0xc6), kKey(0xf2, 0xa3, 0x3a), kTake(0xd8, 0x3a, 0x34),
    kLens(0x6f, 0xc9, 0x8a), kNow(0x5a, 0xb0, 0xf2);

} // namespace

Timeline::Timeline(stage::Session& session) : session_(session)
{
    setObjectName("timeline");
    setMinimumHeight(56);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setFocusPolicy(Qt::ClickFocus);
    setToolTip("Drag to scrub. The wheel steps by frames. "
               "Marks are the keys of what is selected: orange of its pose, green of its lens.");
}

void Timeline::setTakeStart(std::optional<double> time)
{
    takeStart_ = time;
    update();
}

double Timeline::xOf(double time) const
{
    const core::TimeRange range = session_.stage().range();
    const double span = std::max(range.end - range.start, 1e-9);
    return kMargin + (time - range.start) / span * (width() - 2 * kMargin);
}

double Timeline::timeAt(int x) const
{
    const core::TimeRange range = session_.stage().range();
    const double share =
        std::clamp((x - kMargin) / std::max(1.0, width() - 2.0 * kMargin), 0.0, 1.0);
    const double rate = session_.stage().getFramesPerSecond();
    return std::round((range.start + share * (range.end - range.start)) * rate) / rate;
}

int Timeline::frameStep() const
{
    const core::TimeRange range = session_.stage().range();
    const double frames =
        std::max(1.0, (range.end - range.start) * session_.stage().getFramesPerSecond());
    const double room = std::max(1.0, (width() - 2.0 * kMargin) / kLabelSpace);
    for (const int step : {1, 2, 5, 10, 20, 25, 50, 100, 200, 250, 500, 1000, 2000, 5000, 10000}) {
        if (frames / step <= room)
            return step;
    }
    return 20000;
}

void Timeline::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), kBack);
    painter.fillRect(
        QRectF(kMargin, kRulerHeight, width() - 2 * kMargin, height() - kRulerHeight - 6), kTrack);
    if (takeStart_) {
        const double from = xOf(*takeStart_);
        painter.fillRect(QRectF(from, kRulerHeight, xOf(session_.stage().getTime()) - from,
                                height() - kRulerHeight - 6),
                         kTake);
    }
    paintRuler(painter);
    paintKeys(painter);
    const double now = xOf(session_.stage().getTime());
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(kNow, 1.5));
    painter.drawLine(QPointF(now, 2), QPointF(now, height() - 4));
    painter.setBrush(kNow);
    painter.drawPolygon(QPolygonF({{now - 5, 2}, {now + 5, 2}, {now, 9}}));
    if (hasFocus()) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(kNow, 1));
        painter.drawRect(rect().adjusted(0, 0, -1, -1));
    }
}

void Timeline::paintRuler(QPainter& painter)
{
    const core::TimeRange range = session_.stage().range();
    const double rate = session_.stage().getFramesPerSecond();
    const int step = frameStep();
    const int first = static_cast<int>(std::ceil(range.start * rate / step - 1e-9)) * step;
    for (int frame = first; frame <= range.end * rate + 1e-9; frame += step) {
        const double x = xOf(frame / rate);
        painter.setPen(kTick);
        painter.drawLine(QPointF(x, kRulerHeight - 6), QPointF(x, kRulerHeight));
        painter.setPen(kText);
        painter.drawText(QRectF(x - 30, 0, 60, kRulerHeight - 6), Qt::AlignCenter,
                         QString::number(frame));
    }
}

template <class T>
void Timeline::paintMarks(QPainter& painter, const stage::KeyTrack<T>& keys, int top, int bottom)
{
    int lastPixel = -1;
    keys.forEach([&](const stage::TrackKey<T>& key) {
        const int pixel = static_cast<int>(std::lround(xOf(stage::toSeconds(key.time))));
        if (pixel != lastPixel)
            painter.drawLine(pixel, top, pixel, bottom);
        lastPixel = pixel;
    });
}

void Timeline::paintKeys(QPainter& painter)
{
    constexpr int kLane = 8; // [pixels]
    const int pose = kRulerHeight + 4;
    const int lens = pose + kLane + 2;
    for (const stage::StageNode* const node : session_.stage().selection()) {
        painter.setPen(QPen(kKey, 1));
        paintMarks(painter, node->poseKeys(), pose, pose + kLane);
        painter.setPen(QPen(kLens, 1));
        paintMarks(painter, node->fovKeys(), lens, lens + kLane);
        paintMarks(painter, node->targetDistanceKeys(), lens, lens + kLane);
    }
}

void Timeline::scrubTo(int x)
{
    const double time = timeAt(x);
    if (scrubbed && time != session_.stage().getTime())
        scrubbed(time);
    update();
}

void Timeline::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        scrubTo(event->x());
}

void Timeline::mouseMoveEvent(QMouseEvent* event)
{
    if (event->buttons().testFlag(Qt::LeftButton))
        scrubTo(event->x());
}

void Timeline::wheelEvent(QWheelEvent* event)
{
    const double rate = session_.stage().getFramesPerSecond();
    const double frame =
        std::round(session_.stage().getTime() * rate) + (event->angleDelta().y() > 0 ? -1 : 1);
    const core::TimeRange range = session_.stage().range();
    if (scrubbed)
        scrubbed(std::clamp(frame / rate, range.start, range.end));
    update();
}

} // namespace tvw::rgs::studio
