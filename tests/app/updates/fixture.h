/// Windows on the offscreen platform, and a version server of the test's own.
#pragma once

#include "tests/support/offscreen_test.h"
#include "tests/support/session_test.h"

#include <QApplication>
#include <QTest>
#include <gtest/gtest.h>

#include <chrono>
#include <httplib.h>
#include <string>
#include <thread>

namespace tvw::rgs::tests {

class WindowTest : public gui::OffscreenTest
{
protected:
    void SetUp() override
    {
        auto started = stage::Session::start({.userFolder = user.path()});
        ASSERT_TRUE(started) << started.reason();
        session = *std::move(started);
    }

    TemporaryFolder user;
    std::unique_ptr<stage::Session> session;
};

/// The shown window of that name, or null.
inline QWidget* shownWindow(const char* name)
{
    for (QWidget* const widget : QApplication::topLevelWidgets()) {
        if (widget->objectName() == name && widget->isVisible())
            return widget;
    }
    return nullptr;
}

/// Answers the question for versions on a loopback port; counts the requests.
class VersionServer
{
public:
    explicit VersionServer(httplib::Server::Handler answer)
    {
        server_.Get("/cgi-bin/rgsversion",
                    [this, answer](const httplib::Request& request, httplib::Response& response) {
                        ++requests;
                        question = request.target;
                        answer(request, response);
                    });
        port_ = server_.bind_to_any_port("127.0.0.1");
        thread_ = std::thread([this] { server_.listen_after_bind(); });
        while (!server_.is_running())
            std::this_thread::yield();
    }
    explicit VersionServer(const std::string& text)
        : VersionServer([text](const httplib::Request&, httplib::Response& response) {
              response.set_content(text, "text/xml");
          })
    {
    }
    ~VersionServer()
    {
        server_.stop();
        thread_.join();
    }

    std::string address() const { return "http://127.0.0.1:" + std::to_string(port_); }

    std::atomic<int> requests = 0;
    std::string question; ///< of the last request

private:
    httplib::Server server_;
    int port_ = 0;
    std::thread thread_;
};

inline const char* const kNewerReply =
    "<versions>"
    "<updateentry><version>999.1</version><releasedate>1 May 2031</releasedate>"
    "<changelog><change>Faster &lt;b&gt;cars&lt;/b&gt;</change><change>Two "
    "mends</change></changelog>"
    "<affects>cameras</affects><download>https://example.org/999</download></updateentry>"
    "<entry><version>0.0.1</version></entry>"
    "</versions>";

} // namespace tvw::rgs::tests
