/// The ground by the host's own rays: the only way that follows surfaces which move.
#pragma once

#include "plugins/common/ground_source.h"

namespace tvw::rgs {

/// The surfaces are looked up anew in each tick: one that is linked, moved or deleted in a run
/// counts from the next tick on. With no surface at all the ground is the plane y = 0.
class GroundHost final : public GroundSource
{
public:
    GroundHost(CInterface& runtime, CNode* gravityNode, CNode* ownBody)
        : runtime_(runtime), gravityNode_(gravityNode), ownBody_(ownBody)
    {
    }
    GroundHost(const GroundHost&) = delete;
    GroundHost& operator=(const GroundHost&) = delete;
    ~GroundHost() override { endTick(); }

    void beginTick(double time) override;
    void endTick() override;
    void castFan(std::size_t surface, std::span<const GroundRay> rays, double maxLength,
                 std::span<GroundHit> out) override;

private:
    CInterface& runtime_;
    CNode* gravityNode_;
    CNode* ownBody_;
    std::vector<CNode*> surfaces_;
    std::vector<CSnapshot_Mesh*> meshes_; ///< of the surfaces; null: no mesh at this time
};

} // namespace tvw::rgs
