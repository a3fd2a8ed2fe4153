/// "Low poly on record": during a run the tools' own shapes stand for the models that hang on them.
#pragma once

#include <vector>

namespace tvw::rgs::core {

class CoreNode;
class InstanceReference;

class LowPolyView
{
public:
    void note();                          ///< the visibility of all nodes and their children
    void setUp(InstanceReference& root);  ///< shows the tools' nodes, hides what hangs on them
    void putBack();                       ///< as it was noted

private:
    struct Noted
    {
        CoreNode* node;
        bool visible;
        std::vector<bool> children;
    };
    std::vector<Noted> noted_;
};

} // namespace tvw::rgs::core
