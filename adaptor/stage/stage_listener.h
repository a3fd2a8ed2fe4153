/// What the stage tells those who work on its scene.
#pragma once

#include <vector>

namespace tvw::rgs::stage {

class StageNode;

/// Every operation is called on the main thread, between two ticks. Register with
/// Stage::addListener.
class StageListener
{
public:
    virtual void timeChanged(double) {} ///< [s]; the stage's time has moved

    /// All nodes are about to go: a run is stopped, every tool is deleted.
    virtual void sceneClosing() {}

    /// A scene was opened or merged: the tools that its tags hold are to be gathered.
    virtual void sceneOpened() {}

    virtual void beforeSave() {} ///< the tools' tags are to be written
    virtual void afterSave() {}  ///< the tags are about to be cleared again

    /// The user deletes these nodes, which still stand: a run is stopped.
    virtual void nodesAboutToBeDeleted(const std::vector<StageNode*>&) {}

    virtual void stageClosing() {} ///< the program ends: a run is stopped, the core shuts down

protected:
    ~StageListener() = default;
};

} // namespace tvw::rgs::stage
