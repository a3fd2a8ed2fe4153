#include "util/factory.h"
#include "util/xml/element.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>

namespace tvw {

namespace {

struct Shape
{
    std::string kind;
    std::string size;
};

class ShapeFactory final : public AbstractFactory<Shape>::Factory
{
public:
    explicit ShapeFactory(std::string tag) : tag_(std::move(tag)) {}
    void name(ReturnValue<std::string>& out) const override { out.assign(tag_); }
    Shape* create(const util::xml::Element& element) const override
    {
        return new Shape{tag_, element.attributeValue("size")};
    }

private:
    std::string tag_;
};

TEST(AbstractFactory, BuildsFromParsedElementsByTheirTag)
{
    auto& shapes = AbstractFactory<Shape>::instance();
    shapes.addFactory(new ShapeFactory("circle"));
    shapes.addFactory(new ShapeFactory("square"));
    util::xml::Element root;
    ASSERT_EQ(root.parse(R"(<all><square size="3"/><Circle size="1"/><circle size="2"/></all>)"),
              0);

    std::string built;
    for (const util::xml::Element& child : root.children()) {
        const std::unique_ptr<Shape> shape(shapes.create(child));
        built += shape ? shape->kind + shape->size + " " : "none ";
    }
    EXPECT_EQ(built, "square3 none circle2 ");
    EXPECT_EQ(shapes.create(util::xml::Element()), nullptr);
    AbstractFactory<Shape>::end();
}

} // namespace

} // namespace tvw
