#include "app/web_fetch.h"

#include <exception>
#include <httplib.h>

namespace tvw::rgs::app {

namespace {

bool isWebAddress(const std::string& address)
{
    return address.starts_with("http://") || address.starts_with("https://");
}

} // namespace

std::string WebFetch::get(const std::string& address)
{
    if (!isWebAddress(address) || cancelled_)
        return {};
    const std::size_t path = address.find('/', address.find("://") + 3);
    try {
        return request(address.substr(0, path),
                       path == std::string::npos ? "/" : address.substr(path));
    } catch (const std::exception&) { // a port that is no number
        return {};
    }
}

std::string WebFetch::request(const std::string& server, const std::string& path)
{
    httplib::Client client(server);
    if (!client.is_valid())
        return {};
    client.set_connection_timeout(limits_.connect);
    client.set_read_timeout(limits_.read);
    client.set_follow_location(true);

    struct Registration
    {
        WebFetch& fetch;
        Registration(WebFetch& owner, httplib::Client& present) : fetch(owner)
        {
            const std::lock_guard lock(fetch.mutex_);
            fetch.client_ = &present;
        }
        ~Registration()
        {
            const std::lock_guard lock(fetch.mutex_);
            fetch.client_ = nullptr;
        }
    } const registration(*this, client);

    std::string reply;
    const auto deadline = std::chrono::steady_clock::now() + limits_.total;
    const auto take = [&](const char* data, std::size_t size) {
        if (cancelled_ || size > limits_.bytes - reply.size() ||
            std::chrono::steady_clock::now() > deadline)
            return false;
        reply.append(data, size);
        return true;
    };
    const httplib::Result result = client.Get(path, take);
    return result && result->status == 200 && !cancelled_ ? reply : std::string();
}

void WebFetch::cancel()
{
    cancelled_ = true;
    const std::lock_guard lock(mutex_);
    if (client_)
        client_->stop();
}

} // namespace tvw::rgs::app
