#include "util/composite.h"
#include "util/dynamicobject.h"
#include "util/factory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tvw {
namespace {

using testing::ElementsAre;
using Log = std::vector<std::string>;

Log events;

class ObjectsTest : public testing::Test
{
protected:
    void SetUp() override { events.clear(); }
};

using Composites = ObjectsTest;
using Factories = ObjectsTest;

/// A node that writes down its hooks.
class Branch : public DynamicObject, public Composite_Dynamic<Branch>
{
public:
    explicit Branch(std::string name) : name_(std::move(name)) {}
    ~Branch() override { events.push_back("end " + name_); }

    Branch* self() override { return this; }
    void willAttach() override { events.push_back(name_ + " will attach"); }
    void didAttach() override { events.push_back(name_ + " did attach"); }
    void willDetach() override { events.push_back(name_ + " will detach"); }
    void didDetach() override { events.push_back(name_ + " did detach"); }
    void childAdded(Branch* child, std::size_t index) override
    {
        events.push_back(name_ + " got " + child->name_ + std::to_string(index));
    }
    void childRemoved(Branch* child, std::size_t index) override
    {
        events.push_back(name_ + " lost " + child->name_ + std::to_string(index));
    }

private:
    std::string name_;
};

TEST_F(Composites, hooksComeInOrder)
{
    Branch root("root");
    auto* const a = new Branch("a");
    auto* const b = new Branch("b");
    EXPECT_TRUE(root.addChild(a));
    EXPECT_THAT(events, ElementsAre("a will attach", "a did attach", "root got a0"));
    root.addChild(b);
    events.clear();
    a->detach();
    EXPECT_THAT(events, ElementsAre("a will detach", "a did detach", "root lost a0"));
    EXPECT_EQ(a->parent(), nullptr);
    EXPECT_THAT(root.children(), ElementsAre(b));
    EXPECT_EQ(root.childAt(1), nullptr);
    events.clear();
    a->detach(); // has no parent
    EXPECT_TRUE(events.empty());
    a->destroy();
}

TEST_F(Composites, aChildGoesToItsPlace)
{
    Branch root("root");
    auto* const a = new Branch("a");
    auto* const b = new Branch("b");
    auto* const c = new Branch("c");
    root.insertChild(c, 9); // behind the last
    root.insertChild(a, 0);
    EXPECT_TRUE(root.insertChild(b, 1));
    EXPECT_THAT(root.children(), ElementsAre(a, b, c));
    EXPECT_EQ(events.back(), "root got b1");
    root.insertChild(a, 2); // where it stands once it has left
    EXPECT_THAT(root.children(), ElementsAre(b, c, a));
}

TEST_F(Composites, anEndTakesTheChildrenFromTheFirstOn)
{
    auto* const root = new Branch("root");
    auto* const a = new Branch("a");
    root->addChild(a);
    root->addChild(new Branch("b"));
    a->addChild(new Branch("a1"));
    events.clear();
    root->destroy();
    EXPECT_THAT(events, ElementsAre("end root", "end a", "end a1", "end b"));
}

TEST_F(Composites, neverBecomeACircle)
{
    Branch root("root");
    auto* const a = new Branch("a");
    auto* const b = new Branch("b");
    root.addChild(a);
    a->addChild(b);
    EXPECT_FALSE(b->addChild(&root));
    EXPECT_FALSE(a->addChild(a));
    EXPECT_FALSE(a->addChild(nullptr));
    EXPECT_TRUE(root.addChild(b)); // moves
    EXPECT_EQ(a->childCount(), 0u);
    EXPECT_EQ(b->parent(), &root);
}

struct Tag
{
    std::string text;
    [[nodiscard]] const std::string& name() const { return text; }
};

struct Thing
{
    std::string madeBy;
};

using Things = AbstractFactory<Thing, Tag>;

class ThingFactory : public Things::Factory
{
public:
    ThingFactory(std::string tag, std::string label, bool fails = false)
        : tag_(std::move(tag)), label_(std::move(label)), fails_(fails)
    {
    }
    ~ThingFactory() override { events.push_back(label_); }

    void name(ReturnValue<std::string>& out) const override { out.assign(tag_); }
    Thing* create(const Tag&) const override { return fails_ ? nullptr : new Thing{label_}; }

private:
    std::string tag_;
    std::string label_;
    bool fails_;
};

std::string makerOf(const std::string& tag)
{
    const std::unique_ptr<Thing> thing(Things::instance().create(Tag{tag}));
    return thing ? thing->madeBy : "null";
}

TEST_F(Factories, theFirstThatCanIsTheOnlyOneAsked)
{
    Things& things = Things::instance();
    things.addFactory(new ThingFactory("border", "1"));
    things.addFactory(new ThingFactory("border", "2"));
    things.addFactory(new ThingFactory("color", "3", true));
    things.addFactory(new ThingFactory("color", "4"));
    things.addFactory(nullptr);
    EXPECT_EQ(things.factoryCount(), 4u);
    EXPECT_EQ(makerOf("border"), "1");
    EXPECT_EQ(makerOf("color"), "null"); // its failure is the answer
    EXPECT_EQ(makerOf("Border"), "null");
    EXPECT_EQ(makerOf("frame"), "null");
    things.clear();
    EXPECT_THAT(events, ElementsAre("4", "3", "2", "1"));
    EXPECT_EQ(makerOf("border"), "null");
    things.addFactory(new ThingFactory("border", "5"));
    Things::end();
    EXPECT_EQ(events.back(), "5");
    EXPECT_EQ(Things::instance().factoryCount(), 0u);
    Things::end();
}

} // namespace
} // namespace tvw
