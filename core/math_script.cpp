#include "core/math_script.h"

#include "util/xml/number.h"

#include <charconv>
#include <cmath>
#include <functional>
#include <memory>
#include <string_view>

namespace tvw::rgs::core {

using util::xml::Element;

Element MathScript::save() const
{
    Element element = util::xml::Tag(kind_);
    if (const std::string text = content(); !text.empty())
        element.addChild(util::xml::Text(text));
    for (const MathScript* const child : children())
        element.addChild(child->save());
    return element;
}

double MathScript::operand(std::size_t i) const
{
    const MathScript* const child = childAt(i);
    return child ? child->evaluate() : 0.0;
}

const MathScript& MathScript::root() const
{
    const MathScript* node = this;
    while (node->parent())
        node = node->parent();
    return *node;
}

namespace {

/// The shortest text that reads back as the same number.
std::string exactText(double value)
{
    char text[32];
    const auto end = std::to_chars(text, text + sizeof(text), value).ptr;
    return std::string(text, end);
}

class Zero final : public MathScript
{
public:
    using MathScript::MathScript;
    double evaluate() const override { return 0.0; }
};

class Constant final : public MathScript
{
public:
    Constant(std::string kind, double value) : MathScript(std::move(kind)), value_(value) {}
    double evaluate() const override { return value_; }
    std::string content() const override { return exactText(value_); }

private:
    double value_;
};

class Parameter final : public MathScript
{
public:
    Parameter(std::string kind, long index) : MathScript(std::move(kind)), index_(index) {}

    double evaluate() const override
    {
        const std::vector<double>& values = root().parameters();
        const bool inRange = index_ >= 0 && static_cast<std::size_t>(index_) < values.size();
        return inRange ? values[static_cast<std::size_t>(index_)] : 0.0;
    }
    std::string content() const override { return std::to_string(index_); }

private:
    long index_;
};

template <class Function>
class BinaryFunction final : public MathScript
{
public:
    using MathScript::MathScript;
    double evaluate() const override { return static_cast<double>(Function()(operand(0), operand(1))); }
};

template <class Function>
class UnaryFunction final : public MathScript
{
public:
    using MathScript::MathScript;
    double evaluate() const override { return Function()(operand(0)); }
};

class Sum final : public MathScript
{
public:
    using MathScript::MathScript;
    double evaluate() const override
    {
        double sum = 0.0;
        for (const MathScript* const child : children())
            sum += child->evaluate();
        return sum;
    }
};

struct Fmod
{
    double operator()(double a, double b) const { return std::fmod(a, b); }
};
struct Pow
{
    double operator()(double a, double b) const { return std::pow(a, b); }
};
struct Atan2
{
    double operator()(double a, double b) const { return std::atan2(a, b); }
};
struct Atan
{
    double operator()(double a) const { return std::atan(a); }
};
struct Tan
{
    double operator()(double a) const { return std::tan(a); }
};
struct Sin
{
    double operator()(double a) const { return std::sin(a); }
};
struct Cos
{
    double operator()(double a) const { return std::cos(a); }
};
struct Invert
{
    double operator()(double a) const { return 1.0 / a; }
};

constexpr std::size_t kAllOperands = static_cast<std::size_t>(-1);

/// Makes a node of class N with the first `operands` children of the element.
template <class N>
MathScript* makeFunction(const std::string& kind, const Element& element, std::size_t operands)
{
    auto* const node = new N(kind);
    for (std::size_t i = 0; i < element.childCount() && i < operands; ++i) {
        if (MathScript* const operand = createMathScript(element.childAt(i)))
            node->addChild(operand);
    }
    return node;
}

template <class N, std::size_t Operands>
MathScript* make(const std::string& kind, const Element& element)
{
    return makeFunction<N>(kind, element, Operands);
}

MathScript* makeConstant(const std::string& kind, const Element& element)
{
    return new Constant(kind, util::xml::number(element.text()).value_or(0.0));
}

MathScript* makeParameter(const std::string& kind, const Element& element)
{
    return new Parameter(kind, util::xml::integer(element.text()).value_or(0));
}

struct Row
{
    std::string_view kind;
    MathScript* (*make)(const std::string& kind, const Element& element);
};

constexpr Row kKinds[] = {
    {"zero", &make<Zero, 0>},
    {"constant", &makeConstant},
    {"add", &make<BinaryFunction<std::plus<>>, 2>},
    {"sub", &make<BinaryFunction<std::minus<>>, 2>},
    {"mul", &make<BinaryFunction<std::multiplies<>>, 2>},
    {"div", &make<BinaryFunction<std::divides<>>, 2>},
    {"greater", &make<BinaryFunction<std::greater<>>, 2>},
    {"greater_equal", &make<BinaryFunction<std::greater_equal<>>, 2>},
    {"less", &make<BinaryFunction<std::less<>>, 2>},
    {"less_equal", &make<BinaryFunction<std::less_equal<>>, 2>},
    {"equals", &make<BinaryFunction<std::equal_to<>>, 2>},
    {"notequals", &make<BinaryFunction<std::not_equal_to<>>, 2>},
    {"mod", &make<BinaryFunction<Fmod>, 2>},
    {"pow", &make<BinaryFunction<Pow>, 2>},
    {"atan2", &make<BinaryFunction<Atan2>, 2>},
    {"atan", &make<UnaryFunction<Atan>, 1>},
    {"tan", &make<UnaryFunction<Tan>, 1>},
    {"sin", &make<UnaryFunction<Sin>, 1>},
    {"cos", &make<UnaryFunction<Cos>, 1>},
    {"inv", &make<UnaryFunction<Invert>, 1>},
    {"neg", &make<UnaryFunction<std::negate<>>, 1>},
    {"sum", &make<Sum, kAllOperands>},
    {"parameter", &makeParameter},
};

class RowFactory final : public MathScript::Factory
{
public:
    explicit RowFactory(const Row& row) : row_(&row) {}
    std::string getName() const override { return std::string(row_->kind); }
    MathScript* create(const Element& element) const override
    {
        return row_->make(std::string(row_->kind), element);
    }

private:
    const Row* row_;
};

std::vector<std::unique_ptr<MathScript::Factory>>& factories()
{
    static std::vector<std::unique_ptr<MathScript::Factory>> all;
    return all;
}

} // namespace

void registerMathScriptFactories()
{
    if (!factories().empty())
        return;
    for (const Row& row : kKinds)
        factories().push_back(std::make_unique<RowFactory>(row));
}

void clearMathScriptFactories() { factories().clear(); }

MathScript* createMathScript(const Element& element)
{
    for (const auto& factory : factories()) {
        if (factory->getName() == element.name())
            return factory->create(element);
    }
    return nullptr;
}

} // namespace tvw::rgs::core
