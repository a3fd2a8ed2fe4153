#include "studio/properties.h"

#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QTableWidget>

#include <algorithm>
#include <cmath>

namespace tvw::rgs::studio {

namespace {

constexpr double kDegree = 0.017453292519943295;
constexpr double kFar = 1e7;

QDoubleSpinBox* makeBox(double least, double most, double step, const QString& unit)
{
    auto* const box = new QDoubleSpinBox;
    box->setRange(least, most);
    box->setDecimals(3);
    box->setSingleStep(step);
    box->setSuffix(unit);
    box->setKeyboardTracking(false);
    box->setButtonSymbols(QAbstractSpinBox::NoButtons);
    box->setMinimumWidth(64);
    // Its hint is as wide as the widest number in its range.
    box->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    return box;
}

Matrix4 about(int axis, double degrees)
{
    const double c = std::cos(degrees * kDegree);
    const double s = std::sin(degrees * kDegree);
    const int a = (axis + 1) % 3;
    const int b = (axis + 2) % 3;
    Matrix4 out;
    out.at(a, a) = c;
    out.at(b, a) = s;
    out.at(a, b) = -s;
    out.at(b, b) = c;
    return out;
}

} // namespace

std::array<double, 3> anglesOf(const Matrix4& rotation)
{
    const double sx = -rotation.at(1, 2);
    const double x = std::asin(std::clamp(sx, -1.0, 1.0));
    constexpr double kPole = 0.9999999;
    if (std::abs(sx) > kPole) // the other two turn about one axis: all of it goes to y
        return {x / kDegree, std::atan2(-rotation.at(2, 0), rotation.at(0, 0)) / kDegree, 0.0};
    return {x / kDegree, std::atan2(rotation.at(0, 2), rotation.at(2, 2)) / kDegree,
            std::atan2(rotation.at(1, 0), rotation.at(1, 1)) / kDegree};
}

Matrix4 rotationOf(const std::array<double, 3>& degrees)
{
    return about(1, degrees[1]) * about(0, degrees[0]) * about(2, degrees[2]);
}

Properties::Properties(stage::Session& session) : session_(session)
{
    setObjectName("properties");
    auto* const form = new QFormLayout(this);
    title_ = new QLabel;
    form->addRow(title_);
    place_ = addBoxes(*form, "Position", -kFar, 0.1, " m");
    turn_ = addBoxes(*form, "Rotation", -36000.0, 1.0, "\u00b0");
    scale_ = addBoxes(*form, "Scale", -kFar, 0.1, "");
    fov_ = makeBox(0.01, 179.99, 1.0, "\u00b0");
    distance_ = makeBox(0.0, kFar, 0.1, " m");
    form->addRow("Field of view", fov_);
    form->addRow("Target distance", distance_);
    for (QDoubleSpinBox* const box : {fov_, distance_})
        connect(box, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
                [this] { write(); });
    table_ = new QTableWidget(0, 2);
    table_->setHorizontalHeaderLabels({"Property", "Text"});
    table_->horizontalHeader()->setStretchLastSection(true);
    table_->verticalHeader()->hide();
    table_->setToolTip("User properties: texts under keys, saved with the scene and exported.");
    connect(table_, &QTableWidget::cellChanged, this, [this](int row) { writeTable(row); });
    form->addRow(table_);
    refresh();
}

Properties::Boxes Properties::addBoxes(QFormLayout& form, const QString& label, double least,
                                       double step, const QString& unit)
{
    Boxes out{};
    auto* const row = new QHBoxLayout;
    row->setSpacing(3);
    for (QDoubleSpinBox*& box : out) {
        box = makeBox(least, kFar, step, unit);
        row->addWidget(box);
        connect(box, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
                [this] { write(); });
    }
    form.addRow(label, row);
    return out;
}

stage::StageNode* Properties::node() const
{
    const std::vector<stage::StageNode*> selection = session_.stage().selection();
    return selection.size() == 1 ? selection.front() : nullptr;
}

void Properties::refresh()
{
    if (isAncestorOf(focusWidget()) && focusWidget()->hasFocus() &&
        qobject_cast<QTableWidget*>(focusWidget()))
        return; // someone types
    filling_ = true;
    stage::StageNode* const shown = node();
    setEnabled(shown != nullptr);
    const std::size_t count = session_.stage().selection().size();
    title_->setText(shown ? "<b>" + QString::fromStdString(shown->name()).toHtmlEscaped() + "</b>"
                    : count == 0 ? QString("Nothing selected")
                                 : QString("%1 nodes selected").arg(count));
    table_->setRowCount(0);
    fov_->setEnabled(shown && shown->hasLens());
    distance_->setEnabled(shown && shown->hasLens());
    if (shown) {
        const double time = session_.stage().getTime();
        const Matrix4 local = shown->local(time);
        const Vector3d size = scaleOf(local);
        const std::array<double, 3> angles = anglesOf(orthonormalise(local));
        for (int i = 0; i < 3; ++i) {
            const auto at = static_cast<std::size_t>(i);
            place_[at]->setValue(translationOf(local)[i]);
            turn_[at]->setValue(angles[at]);
            scale_[at]->setValue(size[i]);
        }
        fov_->setValue(shown->hasLens() ? shown->fov(time) : 0.0);
        distance_->setValue(shown->hasLens() ? shown->targetDistance(time) : 0.0);
        table_->setRowCount(static_cast<int>(shown->state().properties.size()) + 1);
        int row = 0;
        for (const auto& [key, text] : shown->state().properties) {
            table_->setItem(row, 0, new QTableWidgetItem(QString::fromStdString(key)));
            table_->setItem(row++, 1, new QTableWidgetItem(QString::fromStdString(text)));
        }
    }
    filling_ = false;
}

void Properties::write()
{
    stage::StageNode* const changedNode = filling_ ? nullptr : node();
    if (!changedNode)
        return;
    stage::Stage& scene = session_.stage();
    const double time = scene.getTime();
    Matrix4 pose = rotationOf({turn_[0]->value(), turn_[1]->value(), turn_[2]->value()});
    pose = scaled(pose, {scale_[0]->value(), scale_[1]->value(), scale_[2]->value()});
    setTranslation(pose, {place_[0]->value(), place_[1]->value(), place_[2]->value()});
    scene.beginUndo("Transform");
    changedNode->setLocal(pose, time, changedNode->poseKeys().size() != 0 || scene.keyMode());
    if (changedNode->hasLens()) {
        changedNode->setFov(fov_->value(), time, changedNode->fovKeys().size() != 0);
        changedNode->setTargetDistance(distance_->value(), time,
                                       changedNode->targetDistanceKeys().size() != 0);
    }
    scene.endUndo();
    if (changed)
        changed();
}

void Properties::writeTable(int row)
{
    stage::StageNode* const changedNode = filling_ ? nullptr : node();
    const QTableWidgetItem* const key = table_->item(row, 0);
    if (!changedNode || !key || key->text().trimmed().isEmpty())
        return;
    const QTableWidgetItem* const text = table_->item(row, 1);
    session_.stage().beginUndo("User property");
    changedNode->setProperty(key->text().trimmed().toStdString(),
                             text ? text->text().toStdString() : std::string());
    session_.stage().endUndo();
    if (changed)
        changed();
}

} // namespace tvw::rgs::studio
