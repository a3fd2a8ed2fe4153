#include "app/update_manager.h"
#include "tests/app/updates/fixture.h"

namespace tvw::rgs::app {

namespace {

using tests::VersionServer;
using Outcome = UpdateManager::Outcome;

class Updates : public tests::WindowTest
{
};

TEST(Versions, compareByNumbers)
{
    struct Case
    {
        const char *a, *b;
        int expected;
    };
    const Case cases[] = {
        {"1.9", "1.10", -1},
        {"1.0", "1", 0},
        {"2", "1.99.99", 1},
        {"1.2.3", "1.2.3", 0},
        {"1.2b", "1.2", 0},
        {"", "0.0", 0},
        {"beta", "0.1", -1},
        {"1..3", "1.0.2", 1},
        {"99999999999999999999999", "18446744073709551614", 1},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(compareVersions(c.a, c.b), c.expected) << c.a << " and " << c.b;
        EXPECT_EQ(compareVersions(c.b, c.a), -c.expected) << c.b << " and " << c.a;
    }
}

TEST(Versions, aReplyIsReadWholeOrRefused)
{
    const std::pair<const char*, int> cases[] = {
        {"<versions/>", 0},
        {"<v><entry><version> 1.0 </version></entry></v>", 1},
        {"<v><entry><changelog>no version</changelog></entry></v>", 0},
        {"<v><note/><updateentry><version>1</version></updateentry></v>", 1},
        {"<html><head/><body>Please log in</body></html>", -1},
        {"<v><entry><version>1</version>", -1},
        {"rubbish", -1},
        {"", -1},
    };
    for (const auto& [reply, entries] : cases) {
        const auto read = readVersions(reply);
        EXPECT_EQ(read ? static_cast<int>(read->size()) : -1, entries) << reply;
        EXPECT_NE(static_cast<bool>(read), !read.reason().empty()) << reply;
    }
}

TEST(Versions, onlyPagesOfTheWebAreOpened)
{
    const auto local = readVersions(
        "<v><entry><version>2</version><download>file:///bin/sh</download></entry></v>");
    ASSERT_TRUE(local);
    EXPECT_EQ(local->front().page, "");
}

TEST(Versions, aLongListIsCut)
{
    std::string reply = "<v>";
    for (std::size_t i = 0; i < 3 * kMostEntries; ++i)
        reply += "<entry><version>1</version></entry>";
    EXPECT_EQ(readVersions(reply + "</v>")->size(), kMostEntries);
}

constexpr FetchLimits kHasty{std::chrono::milliseconds(500), std::chrono::milliseconds(150),
                             std::chrono::milliseconds(300), 1 << 20};

Outcome outcomeOf(const std::string& server)
{
    UpdateManager manager(server, kHasty);
    bool isDone = false;
    manager.check([&] { isDone = true; });
    EXPECT_TRUE(QTest::qWaitFor([&] { return isDone; }, 5000)) << server;
    return manager.outcome();
}

TEST_F(Updates, whatAServerSaysDecides)
{
    const std::string entry = "<v><entry><version>";
    const std::string end = "</version></entry></v>";
    const std::string huge = "<v>" + std::string((1 << 20) + 1, ' ') + "</v>";
    const auto slow = [](const httplib::Request&, httplib::Response& response) {
        std::this_thread::sleep_for(std::chrono::milliseconds(400));
        response.set_content("<v/>", "text/xml");
    };
    const auto drip = [](const httplib::Request&, httplib::Response& response) {
        response.set_chunked_content_provider("text/xml", [](std::size_t, httplib::DataSink& sink) {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            return sink.write("<v/>", 4);
        });
    };
    const auto missing = [](const httplib::Request&, httplib::Response& response) {
        response.status = 404;
        response.set_content("<v/>", "text/xml");
    };
    struct Case
    {
        const char* name;
        VersionServer server;
        Outcome expected;
    };
    Case cases[] = {
        {"newer", VersionServer(entry + "999.0" + end), Outcome::Newer},
        {"same", VersionServer(entry + "0.1.0" + end), Outcome::UpToDate},
        {"older", VersionServer(entry + "0.0.9" + end), Outcome::UpToDate},
        {"none", VersionServer("<v/>"), Outcome::UpToDate},
        {"error", VersionServer("error"), Outcome::BadReply},
        {"garbage", VersionServer("\x01\xff<<<"), Outcome::BadReply},
        {"empty", VersionServer(""), Outcome::NoConnection},
        {"huge", VersionServer(huge), Outcome::NoConnection},
        {"slow", VersionServer(slow), Outcome::NoConnection},
        {"never ending", VersionServer(drip), Outcome::NoConnection},
        {"missing", VersionServer(missing), Outcome::NoConnection},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(outcomeOf(c.server.address()), c.expected) << c.name;
        EXPECT_EQ(c.server.requests, 1) << c.name;
        EXPECT_EQ(c.server.question, "/cgi-bin/rgsversion?platform=win&currentversion=0.1.0");
    }
}

TEST_F(Updates, addressesThatLeadNowhere)
{
    std::string closed;
    {
        const VersionServer gone("<v/>");
        closed = gone.address();
    }
    for (const std::string& server :
         {std::string(), closed, std::string("http://127.0.0.1:99999999999"),
          std::string("http://"), std::string("http://no.such.host.invalid"),
          std::string("file:///etc"), std::string("127.0.0.1")})
        EXPECT_EQ(outcomeOf(server), Outcome::NoConnection) << server;
}

TEST_F(Updates, theEndDoesNotWaitForASlowServer)
{
    std::atomic<bool> isOver = false;
    const VersionServer server([&](const httplib::Request&, httplib::Response&) {
        while (!isOver)
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
    });
    const auto begin = std::chrono::steady_clock::now();
    {
        UpdateManager manager(server.address());
        manager.check([] { FAIL() << "told of a check that was dropped"; });
        ASSERT_TRUE(QTest::qWaitFor([&] { return server.requests == 1; }, 5000));
    }
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(3));
    QApplication::processEvents();
    isOver = true;
}

} // namespace

} // namespace tvw::rgs::app
