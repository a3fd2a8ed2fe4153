#include "plugins/release/lookatcam/lookatcam_CLookAtCamObject.h"

#include "plugins/common/aim.h"
#include "plugins/common/lens.h"
#include "plugins/common/pose.h"

namespace tvw::rgs::addon {

using namespace lookatcam;

CLookAtCamObject::CLookAtCamObject(const CreateParam& param)
    : Tool(param, kSpec, kItems, "LookAtCamDataChunk")
{
}

void CLookAtCamObject::look(double time)
{
    if (!node(kTargetMesh).exists())
        return;
    SceneNode& camera = node(kTargetCamera);
    const Matrix4 present = camera.global(time);
    const Vector3d way = translationOf(node(kTargetMesh).global(time)) - translationOf(present);
    const double distance = length(way);
    withLens(runtime(), camera, time,
             [&](CSnapshot_Lens& lens) { lens.setTargetDistance(distance); });
    if (distance == 0.0)
        return;
    Matrix4 pose =
        scaled(lookAlong(way / distance, normalise(present.axis(0))), keptScale(present));
    setTranslation(pose, translationOf(present));
    camera.setGlobal(time, pose);
}

void CLookAtCamObject::itemActed(std::string_view label)
{
    if (label == kInitialize) {
        look(runtime().getTime());
        runtime().redrawViews();
    }
}

} // namespace tvw::rgs::addon
