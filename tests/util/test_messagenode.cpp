#include "util/messagenode.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tvw {
namespace {

using testing::ElementsAre;

using Log = std::vector<std::string>;

constexpr std::uint32_t kEvent = 5;

std::string textOf(const Message& m, bool isBroadcast)
{
    const auto nameOf = [](const MessageNode* node) { return node ? node->name() : "-"; };
    const std::string id = m.id == Message::kConnected       ? "connected"
                           : m.id == Message::kDisconnected  ? "disconnected"
                           : m.id == Message::kNodeDestroyed ? "destroyed"
                                                             : std::to_string(m.id);
    return nameOf(m.receiver) + ": " + id + " of " + nameOf(m.origin) + " from " +
           nameOf(m.sender) + (isBroadcast ? " to all" : "");
}

/// Writes down what it hears and then does what the test wants.
class Ear : public MessageNode
{
public:
    Ear(const std::string& name, Log& log) : MessageNode(name), log_(log) {}

    void receive(Message& message, bool isBroadcast) override
    {
        log_.push_back(textOf(message, isBroadcast));
        if (message.id == onlyFor && reaction) {
            reaction(message);
        }
    }

    std::function<void(Message&)> reaction;
    std::uint32_t onlyFor = kEvent;

private:
    Log& log_;
};

class MessageNodes : public testing::Test
{
protected:
    std::unique_ptr<Ear> ear(const std::string& name) { return std::make_unique<Ear>(name, log); }
    void listenAll(const std::vector<Ear*>& listeners, Ear& heardNode)
    {
        for (Ear* listener : listeners) {
            listener->listenTo(&heardNode);
        }
        log.clear();
    }
    /// The names of those that heard the event, in order.
    Log heard() const
    {
        Log names;
        for (const std::string& line : log) {
            if (line.find(": 5 ") != std::string::npos) {
                names.push_back(line.substr(0, line.find(':')));
            }
        }
        return names;
    }

    Log log;
    std::unique_ptr<Ear> source = ear("source");
    std::unique_ptr<Ear> a = ear("a");
    std::unique_ptr<Ear> b = ear("b");
    std::unique_ptr<Ear> c = ear("c");
    Message event{kEvent, 1, 2};
};

TEST_F(MessageNodes, linksAreToldToTheSource)
{
    EXPECT_FALSE(a->listenTo(nullptr));
    EXPECT_TRUE(a->listenTo(source.get()));
    EXPECT_THAT(log, ElementsAre("source: connected of a from a"));
    EXPECT_TRUE(a->listenTo(source.get())); // adds nothing, tells nothing
    EXPECT_EQ(source->listenerCount(), 1u);
    EXPECT_EQ(source->listenerAt(0), a.get());
    EXPECT_EQ(source->listenerAt(1), nullptr);
    EXPECT_EQ(a->sourceAt(0), source.get());
    EXPECT_TRUE(a->hasSource(source.get()));
    EXPECT_TRUE(source->hasListener(a.get()));
    log.clear();

    bool stood = false;
    source->onlyFor = Message::kDisconnected;
    source->reaction = [&](Message&) { stood = source->hasListener(a.get()); };
    EXPECT_TRUE(a->stopListeningTo(source.get()));
    EXPECT_TRUE(stood);
    EXPECT_THAT(log, ElementsAre("source: disconnected of a from a"));
    EXPECT_TRUE(a->stopListeningTo(source.get()));
    EXPECT_FALSE(a->stopListeningTo(nullptr));
    EXPECT_EQ(source->listenerCount(), 0u);
    EXPECT_EQ(a->sourceCount(), 0u);
    EXPECT_EQ(log.size(), 1u);
}

TEST_F(MessageNodes, theLastAddedHearsFirst)
{
    listenAll({a.get(), b.get()}, *source);
    source->originate(event);
    EXPECT_THAT(
        log, ElementsAre("b: 5 of source from source to all", "a: 5 of source from source to all"));
    EXPECT_EQ(event.origin, nullptr);
    EXPECT_EQ(event.sender, nullptr);
    EXPECT_EQ(event.receiver, nullptr);
}

TEST_F(MessageNodes, passingOnKeepsTheOriginAndNamesTheLastSender)
{
    a->listenTo(source.get());
    b->listenTo(a.get());
    log.clear();
    a->reaction = [&](Message& m) {
        a->broadcast(m);
        a->sendTo(c.get(), m);
        log.push_back("then " + textOf(m, false));
    };
    source->originate(event);
    EXPECT_THAT(log, ElementsAre("a: 5 of source from source to all", //
                                 "b: 5 of source from a to all",      //
                                 "c: 5 of source from a",             //
                                 "then a: 5 of source from source"));
    log.clear();
    a->sendTo(nullptr, event);
    a->sendTo(c.get(), event);
    EXPECT_THAT(log, ElementsAre("c: 5 of - from a"));
}

TEST_F(MessageNodes, handlersMayChangeTheLinksDuringABroadcast)
{
    struct Case
    {
        const char* name;
        std::function<void()> change; // by b, the second to hear of c, b, a
        Log expected;
    };
    const Case cases[] = {
        {"leaves", [this] { b->stopListeningTo(source.get()); }, {"c", "b", "a"}},
        {"takes out one that has heard",
         [this] { c->stopListeningTo(source.get()); },
         {"c", "b", "a"}},
        {"takes out one that has not", [this] { a->stopListeningTo(source.get()); }, {"c", "b"}},
        {"destroys itself", [this] { b.reset(); }, {"c", "b", "a"}},
        {"destroys one that has not", [this] { a.reset(); }, {"c", "b"}},
        {"destroys one that has", [this] { c.reset(); }, {"c", "b", "a"}},
        {"destroys the source", [this] { source.reset(); }, {"c", "b"}},
        {"brings in another",
         [this] { ear("d").release()->listenTo(source.get()); },
         {"c", "b", "a"}},
        {"sets back one to the end",
         [this] {
             a->stopListeningTo(source.get());
             a->listenTo(source.get());
         },
         {"c", "b"}},
    };
    for (const Case& k : cases) {
        SCOPED_TRACE(k.name);
        source = ear("source");
        a = ear("a");
        b = ear("b");
        c = ear("c");
        listenAll({a.get(), b.get(), c.get()}, *source);
        MessageNode* const before = source.get();
        b->reaction = [&](Message&) {
            const auto change = k.change; // the reaction may end with its node
            change();
        };
        source->originate(event);
        EXPECT_EQ(heard(), k.expected);
        EXPECT_EQ(event.sender, nullptr);
        for (const auto* left : {a.get(), c.get()}) {
            if (left != nullptr && source == nullptr) {
                EXPECT_FALSE(left->hasSource(before));
            }
        }
        if (source != nullptr) {
            MessageNode* const last = source->listenerAt(source->listenerCount() - 1);
            if (last->name() == "d") {
                delete last;
            }
        }
    }
}

TEST_F(MessageNodes, anEndIsToldToListenersAndSources)
{
    listenAll({a.get(), b.get()}, *source);
    source->listenTo(c.get());
    log.clear();
    source.reset();
    EXPECT_THAT(log, ElementsAre("b: destroyed of source from source to all",
                                 "a: destroyed of source from source to all",
                                 "c: disconnected of source from source"));
    EXPECT_EQ(a->sourceCount(), 0u);
    EXPECT_EQ(c->listenerCount(), 0u);
}

TEST_F(MessageNodes, anEndingNodeTakesNoNewLinks)
{
    listenAll({a.get()}, *source);
    a->onlyFor = Message::kNodeDestroyed;
    a->reaction = [&](Message& m) {
        a->stopListeningTo(m.origin);
        EXPECT_FALSE(a->listenTo(m.origin));
        EXPECT_FALSE(m.origin->listenTo(c.get()));
    };
    source.reset();
    EXPECT_EQ(a->sourceCount(), 0u);
    EXPECT_EQ(c->listenerCount(), 0u);
}

TEST_F(MessageNodes, aSourceMayReactToADisconnect)
{
    struct Case
    {
        const char* name;
        std::function<void()> reaction;
        std::size_t told;
    };
    const Case cases[] = {
        {"by the same disconnect", [this] { a->stopListeningTo(source.get()); }, 1},
        {"by ending", [this] { source.reset(); }, 1},
        {"by ending the listener", [this] { a.reset(); }, 2}, // whose end is told as well
    };
    for (const Case& k : cases) {
        SCOPED_TRACE(k.name);
        source = ear("source");
        a = ear("a");
        listenAll({a.get()}, *source);
        source->onlyFor = Message::kDisconnected;
        int depth = 0;
        source->reaction = [&](Message&) {
            if (depth++ == 0) {
                const auto reaction = k.reaction;
                reaction();
            }
        };
        EXPECT_TRUE(a->stopListeningTo(source.get()));
        std::size_t told = 0;
        for (const std::string& line : log) {
            told += line.find("source: disconnected") == 0 ? 1 : 0;
        }
        EXPECT_EQ(told, k.told);
        EXPECT_TRUE(a == nullptr || a->sourceCount() == 0);
        EXPECT_TRUE(source == nullptr || source->listenerCount() == 0);
    }
}

TEST_F(MessageNodes, replaceLinksTakesThoseOfTheOther)
{
    const auto d = ear("d");
    a->listenTo(source.get()); // source's own, cut
    source->listenTo(b.get());
    c->listenTo(d.get()); // d's, taken over
    d->listenTo(b.get());
    source->replaceLinks(nullptr);
    source->replaceLinks(source.get());
    EXPECT_TRUE(source->hasListener(a.get()));
    source->replaceLinks(d.get());
    EXPECT_FALSE(source->hasListener(a.get()));
    EXPECT_TRUE(source->hasListener(c.get()));
    EXPECT_TRUE(source->hasSource(b.get()));
    EXPECT_EQ(source->sourceCount(), 1u);
    EXPECT_TRUE(d->hasListener(c.get())); // and stay d's
    EXPECT_EQ(a->sourceCount(), 0u);
}

} // namespace
} // namespace tvw
