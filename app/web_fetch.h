/// Reads a page of the web. Free of Qt: it runs in a thread of its own.
#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <memory>
#include <mutex>
#include <string>

namespace httplib {
class Client;
}

namespace tvw::rgs::app {

struct FetchLimits
{
    std::chrono::milliseconds connect{5000};
    std::chrono::milliseconds read{5000}; ///< between two pieces
    std::chrono::milliseconds total{
        15000};                  ///< until the last one; a piece can come as late as `read`
    std::size_t bytes = 1 << 20; ///< of the reply
};

/// One request at a time.
class WebFetch
{
public:
    explicit WebFetch(const FetchLimits& limits = {}) : limits_(limits) {}

    /// The reply to a GET of an address that begins with "http://" or "https://"; redirections are
    /// followed. Empty on any failure: address, name, connection, certificate, a status other than
    /// 200, a limit, or `cancel`. Nothing is thrown.
    std::string get(const std::string& address);

    /// Ends the present request and all later ones. An attempt to connect ends by its own limit.
    /// [any thread]
    void cancel();

private:
    std::string request(const std::string& server, const std::string& path);

    const FetchLimits limits_;
    std::atomic<bool> cancelled_ = false;
    std::mutex mutex_; ///< guards the pointer
    httplib::Client* client_ = nullptr;
};

} // namespace tvw::rgs::app
