#include "plugins/release/angularplay/angularplay_CAngularPlayObject.h"

#include "plugins/common/custom_data.h"

#include <cmath>

namespace tvw::rgs::addon {

using namespace angularplay;

namespace {

constexpr std::string_view kPositionNames[3] = {"positionx", "positiony", "positionz"};
constexpr std::string_view kDirectionNames[3] = {"directionx", "directiony", "directionz"};

/// The shortest turn between two directions of unit length.
Quatd turnBetween(const Vector3d& from, const Vector3d& to)
{
    const Vector3d axis = cross(from, to);
    return fromRotationVector(normalise(axis) * std::atan2(length(axis), dot(from, to)));
}

} // namespace

CAngularPlayObject::CAngularPlayObject(const CreateParam& param)
    : Tool(param, kSpec, kItems, "AngularPlayDataChunk")
{
    StateStore& saved = state();
    saved.packed("sDataChunkSaveStruct", 2)
        .field(settings.hideHelpers)
        .field(settings.hideDuringRecording);
    saved.stored("bInitialized", initialized_);
    saved.stored("cInnerSliderNode.relativePosition", position_);
    saved.stored("cInnerSliderNode.relativeDirection", direction_);
}

void CAngularPlayObject::runStarts(double time)
{
    if (!initialized_)
        initialize(time);
}

void CAngularPlayObject::initialize(double time)
{
    const Matrix4 toOuter = inverse(node(play::kOuter).global(time));
    const Matrix4 slider = node(play::kSlider).global(time);
    position_ = transformPoint(toOuter, translationOf(slider));
    direction_ = normalise(transformDirection(toOuter, -slider.axis(2)));
    initialized_ = true;
}

/// The cone is one in the outer node's own coordinates: its scale along X and Y opens it.
void CAngularPlayObject::step(double time)
{
    Matrix4 outer;
    Matrix4 place;
    if (!node(play::kOuter).readGlobal(time, outer) ||
        !node(play::kSlider).readGlobal(time - stepLength(), place))
        return;
    PoseParts slider = splitPose(place);
    const Vector3d present = normalise(-place.axis(2));
    const Vector3d wanted = normalise(transformDirection(inverse(outer), present));
    const Vector3d kept = heldInCone(wanted, direction_, kPlayCone);
    if (!(kept == wanted)) {
        const Vector3d direction = normalise(transformDirection(outer, kept));
        Quatd& rotation = slider.transform.rotation;
        rotation = normalise(rotation * turnBetween(present, direction));
    }
    slider.transform.translation = transformPoint(outer, position_);
    node(play::kSlider).setGlobal(time, joinPose(slider));
}

void CAngularPlayObject::itemActed(std::string_view label)
{
    if (label != kInitialize)
        return;
    state().pushUndo(runtime());
    initialize(runtime().getTime());
}

std::vector<std::int32_t> CAngularPlayObject::supportedCodes()
{
    return {code::writeCustomData, code::readCustomData};
}

std::intptr_t CAngularPlayObject::call(std::int32_t code, void* argument)
{
    if (code == code::readCustomData)
        return readCustom(*static_cast<const util::xml::Element*>(argument)) ? 1 : 0;
    if (code != code::writeCustomData)
        return Tool::call(code, argument);
    writeCustom(*static_cast<util::xml::Element*>(argument));
    return 1;
}

void CAngularPlayObject::writeCustom(util::xml::Element& custom) const
{
    if (!initialized_)
        return;
    for (int i = 0; i < 3; ++i) {
        writeCustomNumber(custom, kPositionNames[i], position_[i]);
        writeCustomNumber(custom, kDirectionNames[i], direction_[i]);
    }
}

/// All six numbers, or none.
bool CAngularPlayObject::readCustom(const util::xml::Element& custom)
{
    Vector3d position;
    Vector3d direction;
    for (int i = 0; i < 3; ++i) {
        if (!readCustomNumber(custom, kPositionNames[i], position[i]) ||
            !readCustomNumber(custom, kDirectionNames[i], direction[i]))
            return false;
    }
    position_ = position;
    direction_ = normalise(direction);
    initialized_ = true;
    return true;
}

} // namespace tvw::rgs::addon
