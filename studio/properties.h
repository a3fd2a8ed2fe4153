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

    enum class Part { Place, Turn, Scale };

    Boxes addBoxes(QFormLayout& form, const QString& label, Part part, double step,
                   const QString& unit);
    void writePose(Part part, int axis); ///< one box; with a key where the node has keys
    void writeLens(bool isFov);
    void writeTable(int row, int column);
    void showTable(const stage::StageNode* shown);
    [[nodiscard]] stage::StageNode* node() const; ///< the one selected; null: none or several

    stage::Session& session_;
    QLabel* title_;
    Boxes place_, turn_, scale_;
    QDoubleSpinBox* fov_;
    QDoubleSpinBox* distance_;
    QTableWidget* table_;
    const stage::StageNode* waiting_ = nullptr; ///< for the text of a key that was typed
    bool filling_ = false;
};

/// Turns about x, y and z [degrees] that, one after the other, give the rotation: R = Ry Rx Rz.
std::array<double, 3> anglesOf(const Matrix4& rotation);
Matrix4 rotationOf(const std::array<double, 3>& degrees);

} // namespace tvw::rgs::studio
