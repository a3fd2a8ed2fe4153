/// Place, turn, scale and lens of the selected node, and its user properties.
#pragma once

#include "adaptor/stage/session.h"

#include <QWidget>

#include <array>
#include <functional>

class QDoubleSpinBox;
class QFormLayout;
class QLabel;
class QTableWidget;

namespace tvw::rgs::studio {

class Properties final : public QWidget
{
public:
    explicit Properties(stage::Session& session);

    void refresh(); ///< shows the selection as it is now

    std::function<void()> changed; ///< the user changed a value

private:
    using Boxes = std::array<QDoubleSpinBox*, 3>;

    Boxes addBoxes(QFormLayout& form, const QString& label, double least, double step,
                   const QString& unit);
    void write(); ///< the pose and lens of the boxes, with a key where the node has keys
    void writeTable(int row);
    [[nodiscard]] stage::StageNode* node() const; ///< the one selected; null: none or several

    stage::Session& session_;
    QLabel* title_;
    Boxes place_, turn_, scale_;
    QDoubleSpinBox* fov_;
    QDoubleSpinBox* distance_;
    QTableWidget* table_;
    bool filling_ = false;
};

/// Turns about x, y and z [degrees] that, one after the other, give the rotation: R = Ry Rx Rz.
std::array<double, 3> anglesOf(const Matrix4& rotation);
Matrix4 rotationOf(const std::array<double, 3>& degrees);

} // namespace tvw::rgs::studio
