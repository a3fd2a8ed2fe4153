#include "studio/view_widget.h"

#include "core/core_implementation.h"

#include <QMouseEvent>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <stdexcept>

namespace tvw::rgs::studio {

namespace {

constexpr double kAhead = 9.0;     // [m], where a scene's camera usually has its subject
constexpr int kClickTolerance = 4; // [pixels]
const QColor kTextColor(220, 224, 230);
constexpr double kSmooth = 0.1; // share of the newest time in the readout

} // namespace

ViewWidget::ViewWidget(stage::Session& session) : session_(session)
{
    session_.stage().addListener(*this);
    setObjectName("view");
    setMinimumSize(320, 200);
    setFocusPolicy(Qt::StrongFocus);
    connect(this, &QOpenGLWidget::frameSwapped, this, [this] { pictureShown(); });
    setToolTip("Alt + left or right button: turn.  Middle button: shift.  Wheel: zoom.  Click: "
               "select.  F: frame.");
}

ViewWidget::~ViewWidget()
{
    session_.stage().removeListener(*this);
    makeCurrent();
    renderer_.reset();
    doneCurrent();
}

void ViewWidget::scheduleRedraw()
{
    update();
}

void ViewWidget::initializeGL()
{
    try {
        renderer_ = std::make_unique<view::Renderer>();
    } catch (const std::runtime_error& error) {
        problem_ = error.what();
    }
}

view::Lens ViewWidget::lens() const
{
    return camera_ ? view::lensOf(*camera_, session_.stage().getTime()) : eye_.lens();
}

view::Viewport ViewWidget::viewport() const
{
    const double ratio = devicePixelRatioF();
    return {0, 0, std::max(1, static_cast<int>(std::lround(width() * ratio))),
            std::max(1, static_cast<int>(std::lround(height() * ratio)))};
}

void ViewWidget::prepare(view::Options& what) const
{
    what.time = session_.stage().getTime();
    what.eye = camera_;
    const view::Lens seen = lens();
    if (camera_) {
        what.focusDistance = kAhead;
        what.focus = translationOf(seen.world) - orthonormalise(seen.world).axis(2) * kAhead;
    } else {
        what.focusDistance = eye_.distance();
        what.focus = eye_.target();
    }
    const std::vector<stage::StageNode*> selection = session_.stage().selection();
    const bool moves = selection.size() == 1 && !selection.front()->poseKeyTimes().empty();
    what.pathOf = showsPath && moves && !session_.core().isRunning() ? selection.front() : nullptr;
}

double ViewWidget::msSincePicture() const
{
    constexpr double kLong = 1e9;
    return sincePicture_.isValid() ? static_cast<double>(sincePicture_.nsecsElapsed()) / 1e6
                                   : kLong;
}

void ViewWidget::paintGL()
{
    pictureClock_.start();
    if (camera_ && !camera_->isPresent())
        leaveCamera(); // it was deleted: the view stays where it was
    if (renderer_) {
        view::Options what = options;
        prepare(what);
        renderer_->draw(session_.stage(), lens(), viewport(), what);
    }
    QPainter painter(this);
    drawReadout(painter);
    drawHint(painter);
}

void ViewWidget::pictureShown()
{
    if (!pictureClock_.isValid())
        return; // another part of the window was painted
    const double taken = static_cast<double>(pictureClock_.nsecsElapsed()) / 1e6;
    pictureClock_.invalidate();
    pictureMs_ += kSmooth * (taken - pictureMs_);
    if (sincePicture_.isValid())
        betweenMs_ += kSmooth * (msSincePicture() - betweenMs_);
    sincePicture_.start();
}

void ViewWidget::drawReadout(QPainter& painter) const
{
    QString text;
    if (!problem_.empty())
        text = QString::fromStdString(problem_);
    else if (camera_)
        text = QString::fromStdString(camera_->name());
    if (showsTimes) {
        text += QString("\nview %1 ms, every %2 ms")
                    .arg(pictureMs_, 0, 'f', 1)
                    .arg(betweenMs_, 0, 'f', 1);
        if (readout)
            text += "\n" + readout();
    }
    painter.setPen(kTextColor);
    painter.drawText(rect().adjusted(10, 8, -10, -8), Qt::AlignLeft | Qt::AlignTop, text.trimmed());
}

void ViewWidget::drawHint(QPainter& painter) const
{
    if (hint.isEmpty())
        return;
    constexpr int kAir = 10; // [pixels]
    const QRect room = rect().adjusted(3 * kAir, 3 * kAir, -3 * kAir, -2 * kAir);
    constexpr int kPlace = Qt::AlignHCenter | Qt::AlignBottom | Qt::TextWordWrap;
    const QRect text = painter.boundingRect(room, kPlace, hint);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x17, 0x18, 0x1a, 200));
    painter.drawRoundedRect(text.adjusted(-kAir, -kAir / 2, kAir, kAir / 2), 4.0, 4.0);
    painter.setPen(kTextColor);
    painter.drawText(room, kPlace, hint);
}

void ViewWidget::frameSelection()
{
    leaveCamera();
    const double time = session_.stage().getTime();
    std::vector<stage::StageNode*> nodes = session_.stage().selection();
    if (nodes.empty())
        nodes = session_.stage().nodes();
    view::Box box;
    for (const stage::StageNode* const node : nodes) {
        if (node->state().visible)
            view::addNode(box, *node, time);
    }
    eye_.frame(box);
    scheduleRedraw();
}

void ViewWidget::lookThrough(stage::StageNode* camera)
{
    if (!camera)
        leaveCamera();
    camera_ = camera;
    if (cameraChanged)
        cameraChanged();
    scheduleRedraw();
}

void ViewWidget::leaveCamera()
{
    if (!camera_)
        return;
    eye_.takeOver(lens(), kAhead);
    camera_ = nullptr;
    if (cameraChanged)
        cameraChanged();
}

void ViewWidget::mousePressEvent(QMouseEvent* event)
{
    pressed_ = last_ = event->pos();
    dragged_ = false;
}

void ViewWidget::mouseMoveEvent(QMouseEvent* event)
{
    const QPoint moved = event->pos() - last_;
    last_ = event->pos();
    if ((event->pos() - pressed_).manhattanLength() > kClickTolerance)
        dragged_ = true;
    const Qt::MouseButtons held = event->buttons();
    const Qt::KeyboardModifiers keys = event->modifiers();
    const double right = static_cast<double>(moved.x()) / std::max(height(), 1);
    const double up = static_cast<double>(-moved.y()) / std::max(height(), 1);
    const bool shifts = held.testFlag(Qt::MiddleButton) ||
                        (held.testFlag(Qt::RightButton) && keys.testFlag(Qt::ShiftModifier));
    const bool turns = held.testFlag(Qt::RightButton) ||
                       (held.testFlag(Qt::LeftButton) && keys.testFlag(Qt::AltModifier));
    if (!dragged_ || (!shifts && !turns))
        return;
    leaveCamera();
    if (shifts)
        eye_.pan(right, up);
    else
        eye_.orbit(right, -up);
    scheduleRedraw();
}

void ViewWidget::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton && !dragged_ &&
        !event->modifiers().testFlag(Qt::AltModifier))
        pickAt(event->pos(), event->modifiers().testFlag(Qt::ControlModifier));
}

void ViewWidget::wheelEvent(QWheelEvent* event)
{
    leaveCamera();
    constexpr double kNotch = 120.0;
    eye_.zoom(event->angleDelta().y() / kNotch);
    scheduleRedraw();
}

void ViewWidget::pickAt(const QPoint& place, bool add)
{
    if (!renderer_)
        return;
    makeCurrent();
    view::Options what = options;
    prepare(what);
    const double ratio = devicePixelRatioF();
    const view::Viewport all = viewport();
    const int x = std::clamp(static_cast<int>(place.x() * ratio), 0, all.width - 1);
    const int y =
        std::clamp(all.height - 1 - static_cast<int>(place.y() * ratio), 0, all.height - 1);
    stage::StageNode* const node = renderer_->pick(session_.stage(), lens(), all, what, x, y);
    doneCurrent();
    if (node)
        session_.stage().select(*node, add);
    else if (!add)
        session_.stage().clearSelection();
    scheduleRedraw();
}

} // namespace tvw::rgs::studio
