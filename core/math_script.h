/// Small expression trees that saved tools carry.
#pragma once

#include "util/composite.h"
#include "util/dynamicobject.h"
#include "util/xml/element.h"

#include <string>
#include <vector>

namespace tvw::rgs::core {

/// One node of an expression; owns its operands. Evaluates by plain recursion, allocates nothing.
class MathScript : public DynamicObject, public Composite_Dynamic<MathScript>
{
public:
    /// Makes the nodes of one kind.
    class Factory
    {
    public:
        virtual ~Factory() = default;
        virtual std::string getName() const = 0;
        virtual MathScript* create(const util::xml::Element& element) const = 0;
    };

    explicit MathScript(std::string kind) : kind_(std::move(kind)) {}

    MathScript* self() override { return this; }

    /// The element of this node and all below it.
    virtual util::xml::Element save() const;
    virtual double evaluate() const = 0;

    /// Of a root: the values that "parameter" nodes anywhere below it read.
    std::vector<double>& parameters() { return parameters_; }
    const std::vector<double>& parameters() const { return parameters_; }

protected:
    /// The value of operand i; a missing one counts as 0.
    double operand(std::size_t i) const;
    const MathScript& root() const;
    virtual std::string content() const { return {}; } ///< the text of the element

private:
    std::string kind_;
    std::vector<double> parameters_;
};

/// Registers all kinds; nothing when they are. `clear` ends them.
void registerMathScriptFactories();
void clearMathScriptFactories();

/// The tree of an element; null when its kind is unknown. A child of an unknown kind is left out.
MathScript* createMathScript(const util::xml::Element& element);

} // namespace tvw::rgs::core
