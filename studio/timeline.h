/// The time line: scrub, the range, the keys of what is selected (pose above, lens below), a take
/// in progress in red.
#pragma once

#include "adaptor/stage/session.h"

#include <QWidget>

#include <functional>
#include <optional>

namespace tvw::rgs::studio {

class Timeline final : public QWidget
{
public:
    explicit Timeline(stage::Session& session);

    std::function<void(double time)> scrubbed; ///< to a whole frame [s]

    /// The time at which a take in progress began [s].
    void setTakeStart(std::optional<double> time);

    QSize sizeHint() const override { return {600, 56}; }

protected:
    void paintEvent(QPaintEvent*) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    [[nodiscard]] double timeAt(int x) const;
    [[nodiscard]] double xOf(double time) const;
    [[nodiscard]] int frameStep() const; ///< frames between labels
    void scrubTo(int x);
    void paintRuler(QPainter& painter);
    void paintKeys(QPainter& painter);
    template <class T>
    void paintMarks(QPainter& painter, const stage::KeyTrack<T>& keys, int top, int bottom);

    stage::Session& session_;
    std::optional<double> takeStart_;
};

} // namespace tvw::rgs::studio
