#include "adaptor/stage/undo_stack.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tvw::rgs::stage {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Events = std::vector<std::string>;

/// Writes down what happens to it.
class Spy final : public CUndo
{
public:
    Spy(Events& events, std::string name) : events_(events), name_(std::move(name)) {}
    void restore(bool isUndo) override
    {
        events_.push_back((isUndo ? "undo " : "cancel ") + name_);
    }
    void redo() override { events_.push_back("redo " + name_); }
    void destroy() override
    {
        events_.push_back("destroy " + name_);
        delete this;
    }

private:
    Events& events_;
    std::string name_;
};

class UndoStackTest : public testing::Test
{
protected:
    void push(const std::string& name) { stack.push(new Spy(events, name)); }
    void step(const std::string& name, std::initializer_list<const char*> records)
    {
        stack.begin(name);
        for (const char* record : records)
            push(record);
        stack.end();
    }
    Events taken() { return std::exchange(events, {}); }

    Events events;
    UndoStack stack;
};

TEST_F(UndoStackTest, ARecordWithNoBracketIsDestroyedAtOnce)
{
    EXPECT_FALSE(stack.push(new Spy(events, "a")));
    EXPECT_THAT(taken(), ElementsAre("destroy a"));
    EXPECT_FALSE(stack.undo());
}

TEST_F(UndoStackTest, OnlyTheOutermostBracketMakesAStepUnderItsName)
{
    stack.begin("Outer");
    push("a");
    step("Inner", {"b"});
    stack.begin("Empty");
    stack.end();
    EXPECT_TRUE(stack.isOpen());
    EXPECT_FALSE(stack.undo()) << "not while a bracket is open";
    stack.end();
    EXPECT_THAT(stack.undoNames(), ElementsAre("Outer"));
    EXPECT_TRUE(stack.undo());
    EXPECT_THAT(taken(), ElementsAre("undo b", "undo a"));
    EXPECT_THAT(stack.undoNames(), IsEmpty());
    EXPECT_TRUE(stack.redo());
    EXPECT_THAT(taken(), ElementsAre("redo a", "redo b"));
}

TEST_F(UndoStackTest, EmptyBracketsLeaveNothingAndKeepWhatCanBeRedone)
{
    step("Step", {"a"});
    stack.undo();
    step("Nothing", {});
    stack.end(); // one too many
    EXPECT_THAT(stack.undoNames(), IsEmpty());
    EXPECT_THAT(stack.redoNames(), ElementsAre("Step"));
}

TEST_F(UndoStackTest, CancellingAnInnerBracketTakesBackTheWholeStep)
{
    step("Kept", {"k"});
    stack.begin("Outer");
    push("a");
    stack.begin("Inner");
    push("b");
    stack.cancel();
    EXPECT_THAT(taken(), IsEmpty()) << "only when the outermost closes";
    push("c");
    stack.end();
    EXPECT_THAT(taken(), ElementsAre("cancel c", "cancel b", "cancel a", "destroy c", "destroy b",
                                     "destroy a"));
    EXPECT_THAT(stack.undoNames(), ElementsAre("Kept"));
    step("Next", {"n"});
    EXPECT_THAT(stack.undoNames(), ElementsAre("Kept", "Next")) << "the cancelling does not last";
}

TEST_F(UndoStackTest, DoneStepsAreDroppedOldestFirst)
{
    step("1", {"a", "b"});
    step("2", {"c"});
    stack.clear();
    EXPECT_THAT(taken(), ElementsAre("destroy a", "destroy b", "destroy c"));
}

TEST_F(UndoStackTest, ANewStepDropsUndoneOnesNewestFirst)
{
    step("1", {"a", "b"});
    step("2", {"c", "d"});
    stack.undo();
    stack.undo();
    taken();
    stack.begin("New");
    EXPECT_THAT(taken(), IsEmpty());
    push("n");
    EXPECT_THAT(taken(), ElementsAre("destroy d", "destroy c", "destroy b", "destroy a"));
    stack.end();
    EXPECT_FALSE(stack.redo());
}

TEST_F(UndoStackTest, TheLimitDropsTheOldest)
{
    stack.setLimit(2);
    step("1", {"a"});
    step("2", {"b"});
    step("3", {"c"});
    EXPECT_THAT(taken(), ElementsAre("destroy a"));
    EXPECT_THAT(stack.undoNames(), ElementsAre("2", "3"));
}

TEST_F(UndoStackTest, TheMemoryLimitDropsTheOldestButNeverTheNewest)
{
    static std::size_t inUse;
    inUse = 500;
    stack.setMemoryLimit(100, [] { return inUse; });
    const auto grow = [&](const char* name, std::size_t bytes) {
        stack.begin(name);
        push(name);
        inUse += bytes;
        stack.end();
    };
    grow("a", 60);
    grow("b", 40);
    EXPECT_THAT(stack.undoNames(), ElementsAre("a", "b"));
    grow("c", 30);
    EXPECT_THAT(stack.undoNames(), ElementsAre("b", "c"));
    grow("d", 400);
    EXPECT_THAT(stack.undoNames(), ElementsAre("d"));
    EXPECT_TRUE(stack.undo());
}

/// Does to the stack what a tool does that changes something when it hears of an undo.
class Meddler final : public CUndo
{
public:
    Meddler(UndoStack& stack, Events& events) : stack_(stack), events_(events) {}
    void restore(bool) override { meddle(); }
    void redo() override { meddle(); }

private:
    void meddle()
    {
        EXPECT_FALSE(stack_.isOpen());
        EXPECT_EQ(stack_.bracket(), 0U);
        stack_.begin("From a restore");
        EXPECT_FALSE(stack_.push(new Spy(events_, "pushed in a restore")));
        stack_.end();
        EXPECT_FALSE(stack_.undo());
        EXPECT_FALSE(stack_.redo());
    }

    UndoStack& stack_;
    Events& events_;
};

TEST_F(UndoStackTest, NothingIsRecordedWhileRestoring)
{
    stack.begin("Step");
    stack.push(new Meddler(stack, events));
    stack.end();
    EXPECT_TRUE(stack.undo());
    EXPECT_TRUE(stack.redo());
    EXPECT_THAT(taken(), ElementsAre("destroy pushed in a restore", "destroy pushed in a restore"));
    EXPECT_THAT(stack.undoNames(), ElementsAre("Step"));
    stack.begin("Cancelled");
    stack.push(new Meddler(stack, events));
    stack.cancel();
    EXPECT_FALSE(stack.isOpen());
    EXPECT_THAT(stack.undoNames(), ElementsAre("Step"));
}

} // namespace
} // namespace tvw::rgs::stage
