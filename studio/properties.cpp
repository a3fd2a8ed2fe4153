#include "studio/properties.h"

#include "core/core_implementation.h"
#include "studio/undo_keys.h"

#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QTableWidget>
#include <QTimer>

#include <algorithm>
#include <cmath>

namespace tvw::rgs::studio {

namespace {

constexpr const char* kDegrees = "\u00b0";
constexpr const char* kMetres = " m";

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
    letUndoPass(*box);
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

/// A mirrored pose counts as one whose first axis is turned about.
Vector3d signedScaleOf(const Matrix4& pose)
{
    Vector3d size = scaleOf(pose);
    if (dot(cross(pose.axis(0), pose.axis(1)), pose.axis(2)) < 0.0)
        size[0] = -size[0];
    return size;
}

Matrix4 turnOf(const Matrix4& pose)
{
    Matrix4 turn = orthonormalise(pose);
    if (signedScaleOf(pose)[0] < 0.0)
        turn.setAxis(0, turn.axis(0) * -1.0);
    return turn;
}

void fill(QDoubleSpinBox& box, double value, const char* unit)
{
    if (box.suffix() != unit) // setting it anew would write over what is being typed
        box.setSuffix(unit);
    box.setValue(value);
}

/// No number, and no unit of one either.
void blank(QDoubleSpinBox& box)
{
    box.setSuffix({});
    box.clear();
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
    place_ = addBoxes(*form, "Position [m]", Part::Place, 0.1, "");
    turn_ = addBoxes(*form, "Rotation", Part::Turn, 1.0, kDegrees);
    scale_ = addBoxes(*form, "Scale", Part::Scale, 0.1, "");
    fov_ = makeBox(0.01, 179.99, 1.0, kDegrees);
    distance_ = makeBox(0.0, kFar, 0.1, kMetres);
    form->addRow("Field of view", fov_);
    form->addRow("Target distance", distance_);
    for (QDoubleSpinBox* const box : {fov_, distance_})
        connect(box, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
                [this, isFov = box == fov_] { writeLens(isFov); });
    table_ = new QTableWidget(0, 2);
    table_->setHorizontalHeaderLabels({"Property", "Text"});
    table_->horizontalHeader()->setStretchLastSection(true);
    table_->verticalHeader()->hide();
    table_->setTabKeyNavigation(false); // Tab would never leave it
    table_->setToolTip("User properties: texts under keys, saved with the scene and exported.");
    connect(table_, &QTableWidget::cellChanged, this,
            [this](int row, int column) { writeTable(row, column); });
    form->addRow(table_);
    refresh();
}

Properties::Boxes Properties::addBoxes(QFormLayout& form, const QString& label, Part part,
                                       double step, const QString& unit)
{
    Boxes out{};
    int axis = 0;
    auto* const row = new QHBoxLayout;
    row->setSpacing(3);
    for (QDoubleSpinBox*& box : out) {
        box = makeBox(-kFar, kFar, step, unit);
        row->addWidget(box);
        connect(box, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
                [this, part, axis] { writePose(part, axis); });
        ++axis;
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
    filling_ = true;
    stage::StageNode* const shown = node();
    setEnabled(shown != nullptr && !session_.core().isRunning());
    const std::size_t count = session_.stage().selection().size();
    title_->setText(shown ? "<b>" + QString::fromStdString(shown->name()).toHtmlEscaped() + "</b>"
                    : count == 0 ? QString("Nothing selected")
                                 : QString("%1 nodes selected").arg(count));
    fov_->setEnabled(shown && shown->hasLens());
    distance_->setEnabled(shown && shown->hasLens());
    const double time = session_.stage().getTime();
    if (shown) {
        const Matrix4 local = shown->local(time);
        const Vector3d size = signedScaleOf(local);
        const std::array<double, 3> angles = anglesOf(turnOf(local));
        for (int i = 0; i < 3; ++i) {
            const auto at = static_cast<std::size_t>(i);
            place_[at]->setValue(translationOf(local)[i]);
            fill(*turn_[at], angles[at], kDegrees);
            scale_[at]->setValue(size[i]);
        }
    } else {
        for (const Boxes& boxes : {place_, turn_, scale_})
            for (QDoubleSpinBox* const box : boxes)
                blank(*box);
    }
    if (shown && shown->hasLens()) {
        fill(*fov_, shown->fov(time), kDegrees);
        fill(*distance_, shown->targetDistance(time), kMetres);
    } else {
        blank(*fov_);
        blank(*distance_);
    }
    showTable(shown);
    filling_ = false;
}

/// The rows that are right stay: someone may be typing in one. Behind them is one for a new key.
void Properties::showTable(const stage::StageNode* shown)
{
    const int rows = shown ? static_cast<int>(shown->state().properties.size()) + 1 : 0;
    if (table_->rowCount() != rows)
        table_->setRowCount(rows);
    const auto show = [this](int row, int column, const std::string& text) {
        QTableWidgetItem* const present = table_->item(row, column);
        if (!present)
            table_->setItem(row, column, new QTableWidgetItem(QString::fromStdString(text)));
        else if (present->text().toStdString() != text)
            present->setText(QString::fromStdString(text));
        table_->item(row, column)->setData(Qt::UserRole, QString::fromStdString(text));
    };
    if (!shown)
        return;
    int row = 0;
    for (const auto& [key, text] : shown->state().properties) {
        show(row, 0, key);
        show(row++, 1, text);
    }
    // A key that was typed there waits for its text, as long as its node is the one shown.
    const QTableWidgetItem* const typed = table_->item(row, 0);
    const bool waits = typed && typed->text() != typed->data(Qt::UserRole).toString() &&
                       waiting_ == shown &&
                       !shown->state().properties.contains(typed->text().trimmed().toStdString());
    waiting_ = waits ? shown : nullptr;
    if (!waits) {
        show(row, 0, {});
        show(row, 1, {});
    }
}

/// The parts that were not touched stay as they are, to the last bit: a box shows three decimals.
void Properties::writePose(Part part, int axis)
{
    stage::StageNode* const changedNode = filling_ ? nullptr : node();
    if (!changedNode)
        return;
    stage::Stage& scene = session_.stage();
    const double time = scene.getTime();
    const auto at = static_cast<std::size_t>(axis);
    Matrix4 pose = changedNode->local(time);
    const Vector3d place = translationOf(pose);
    const Vector3d size = signedScaleOf(pose);
    if (part == Part::Place) {
        Vector3d moved = place;
        moved[axis] = place_[at]->value();
        setTranslation(pose, moved);
    } else if (part == Part::Scale) {
        constexpr double kLeast = 0.001; // an axis without length has lost its direction
        const double wanted = scale_[at]->value();
        const double length = std::abs(wanted) < kLeast ? kLeast : wanted;
        pose.setAxis(axis, pose.axis(axis) * (length / size[axis]));
    } else {
        std::array<double, 3> angles = anglesOf(turnOf(pose));
        angles[at] = turn_[at]->value();
        pose = scaled(rotationOf(angles), size);
        setTranslation(pose, place);
    }
    scene.beginUndo("Transform");
    changedNode->setLocal(pose, time, changedNode->poseKeys().size() != 0 || scene.keyMode());
    scene.endUndo();
    if (changed)
        changed();
}

void Properties::writeLens(bool isFov)
{
    stage::StageNode* const camera = filling_ ? nullptr : node();
    if (!camera || !camera->hasLens())
        return;
    stage::Stage& scene = session_.stage();
    const double time = scene.getTime();
    scene.beginUndo("Lens");
    if (isFov)
        camera->setFov(fov_->value(), time, camera->fovKeys().size() != 0 || scene.keyMode());
    else
        camera->setTargetDistance(distance_->value(), time,
                                  camera->targetDistanceKeys().size() != 0 || scene.keyMode());
    scene.endUndo();
    if (changed)
        changed();
}

/// Another key takes its text along; without a key, or without a text, the property goes.
void Properties::writeTable(int row, int column)
{
    stage::StageNode* const changedNode = filling_ ? nullptr : node();
    if (!changedNode)
        return;
    const auto textAt = [&](int where, int role) {
        const QTableWidgetItem* const item = table_->item(row, where);
        return item ? item->data(role).toString().trimmed().toStdString() : std::string();
    };
    const std::string before = textAt(0, Qt::UserRole);
    const std::string key = textAt(0, Qt::DisplayRole);
    const std::string text = textAt(1, Qt::DisplayRole);
    if (before.empty() && text.empty())
        waiting_ = changedNode;
    session_.stage().beginUndo("User property");
    if (column == 0 && !before.empty() && before != key)
        changedNode->setProperty(before, {});
    if (!key.empty())
        changedNode->setProperty(key, text);
    session_.stage().endUndo();
    // The table is filled anew when its editor has let go of the cell.
    QTimer::singleShot(0, this, [this] {
        if (changed)
            changed();
    });
}

} // namespace tvw::rgs::studio
