/// The 3D view: turn, shift and zoom with the mouse, select by a click, look through a camera.
#pragma once

#include "adaptor/stage/session.h"
#include "view/orbit_camera.h"
#include "view/renderer.h"

#include <QElapsedTimer>
#include <QOpenGLWidget>
#include <QPoint>

#include <functional>
#include <memory>

namespace tvw::rgs::studio {

/// Alt or the right or middle button turns and shifts as in other 3D programs: Alt + left or right
/// turns, middle or Shift + right shifts, the wheel zooms. Redraws on demand: `scheduleRedraw`.
class ViewWidget final : public QOpenGLWidget, private stage::StageListener
{
public:
    explicit ViewWidget(stage::Session& session);
    ~ViewWidget() override;

    void scheduleRedraw(); ///< once for any number of calls before the next picture
    void frameSelection(); ///< all, with nothing selected

    /// A camera to look through; null: the view's own eye, which stays where the camera was.
    void lookThrough(stage::StageNode* camera);
    [[nodiscard]] stage::StageNode* camera() const { return camera_; }
    [[nodiscard]] view::Lens lens() const;

    view::Options options;   ///< time and focus are the widget's own
    bool showsPath = true;   ///< of the selected node
    bool showsTimes = false; ///< the readout of frame times
    QString hint;            ///< what to do next, below in the picture; empty: nothing

    std::function<void()> cameraChanged; ///< the view left or took a camera
    std::function<QString()> readout;    ///< more lines for the readout

    /// What a picture takes, until the screen has it, over the last few [ms].
    [[nodiscard]] double pictureMs() const { return pictureMs_; }
    /// Since the screen had the last one [ms]; much before the first.
    [[nodiscard]] double msSincePicture() const;
    [[nodiscard]] const std::string& problem() const { return problem_; }

protected:
    void initializeGL() override;
    void paintGL() override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void sceneClosing() override { leaveCamera(); } ///< its node is about to end

    [[nodiscard]] view::Viewport viewport() const;
    void prepare(view::Options& what) const;
    void pickAt(const QPoint& place, bool add);
    void leaveCamera();
    void drawReadout(QPainter& painter) const;
    void drawHint(QPainter& painter) const;
    void pictureShown();

    stage::Session& session_;
    std::unique_ptr<view::Renderer> renderer_;
    view::OrbitCamera eye_;
    stage::StageNode* camera_ = nullptr;
    QPoint pressed_, last_;
    bool dragged_ = false;
    std::string problem_;
    double pictureMs_ = 0.0;
    QElapsedTimer pictureClock_, sincePicture_;
    double betweenMs_ = 0.0;
};

} // namespace tvw::rgs::studio
