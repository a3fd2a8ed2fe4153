/// What the core and the tools hold of a stage's node.
#pragma once

#include "core/core_node.h"

namespace tvw::rgs::stage {

class Stage;
class StageNode;

/// Kept by the stage. A listed handle belongs to a tool or to the core; a loose one was given out
/// by `getParent` and `getChild`, and goes back to a pool.
class alignas(64) NodeHandle final : public core::CoreNode
{
public:
    NodeHandle(StageNode& node, CInterface* owner, std::string shortName, core::CoreNode* parent,
               std::int64_t userValue);
    NodeHandle(const NodeHandle&) = delete;
    NodeHandle& operator=(const NodeHandle&) = delete;
    ~NodeHandle() override;

    [[nodiscard]] StageNode& node() const noexcept { return *node_; }
    [[nodiscard]] bool isListed() const noexcept { return listed_; }

    std::intptr_t call(std::int32_t code, void* argument) override;
    std::vector<std::int32_t> supportedCodes() override;

    void show() override;
    void hide() override;
    bool isVisible() override;
    void select() override;
    bool isDeleted() override;
    CNode* getParent() override;
    int childCount() override;
    CNode* getChild(int index) override;
    void release(CNode* handle) override;

    void destroy() override;
    core::CoreNode* clone(CInterface* owner, std::string shortName) override;
    void markDeleted() override;
    CSnapshot* getSnapshot(double time) override;
    CSnapshot_Helper* getHelperSnapshot() override;
    CSnapshot_Mesh* getMeshSnapshot(double time) override;
    CSnapshot_Lens* getLensSnapshot(double time) override;
    CSnapshot_Shape* getShapeSnapshot(double time) override;
    void releaseShapeSnapshot(CSnapshot_Shape* snapshot) override;
    void releaseHelperSnapshot(CSnapshot_Helper* snapshot) override;
    void releaseMeshSnapshot(CSnapshot_Mesh* snapshot) override;
    void releaseLensSnapshot(CSnapshot_Lens* snapshot) override;
    void releaseSnapshot(CSnapshot* snapshot) override;
    bool isSameNode(core::CoreNode* other) override;
    void setParent(core::CoreNode* parent) override;
    void deleteKeysFrom(double time) override;
    void setName(std::string name) override;
    std::string getName() override;
    void deleteNode(bool really) override;
    core::CoreNode* cloneNode(bool withChildren) override;

private:
    friend class NodeInstanceRestoreObj;
    friend class Stage;

    void rename(const std::string& name);

    StageNode* node_; // with the base and the flags in one line of the caches
    bool listed_ = false;
    bool loose_ = false;
    bool free_ = false;             ///< a loose handle that waits in the pool
    bool ended_ = false;            ///< destroyed while undo records still point at it
    int records_ = 0;               ///< undo records that point at this
    const CInterface* const maker_; ///< the owner at first; it may be gone
};

} // namespace tvw::rgs::stage
