/// Asks the version server which versions there are.
#pragma once

#include "app/web_fetch.h"
#include "util/result.h"

#include <QThread>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tvw::rgs::app {

class UpdateReciever;

/// One check at a time. [main thread]
class UpdateManager
{
public:
    /// A version that the server tells of. Texts come from outside: show them as plain text.
    struct Entry
    {
        std::string version;
        std::string releaseDate;
        std::string changeLog; ///< a line for each change
        std::string affects;   ///< the parts of the product that it touches
        std::string page;      ///< where it can be had; an address of the web, or empty
    };

    enum class Outcome { UpToDate, Newer, NoConnection, BadReply };

    /// server: as in `serverOf`; with an empty one nothing is ever sent.
    explicit UpdateManager(std::string server, const FetchLimits& limits = {});
    ~UpdateManager(); ///< ends a check; waits for one that connects

    /// onFinish comes in the event loop of the caller's thread, once for this check, unless the
    /// manager ends before. A check that is on goes on, and onFinish takes the place of its own.
    void check(std::function<void()> onFinish);
    [[nodiscard]] bool isChecking() const { return reciever_ != nullptr; }

    // Of the last check that ended.

    [[nodiscard]] Outcome outcome() const { return outcome_; }
    [[nodiscard]] const std::vector<Entry>& entries() const { return entries_; }

    [[nodiscard]] const std::string& server() const { return server_; }

    /// The environment variable RIGSTAGE_REPURL, else kDefaultServer, without a slash at its end.
    static std::string configuredServer();
    static constexpr const char* kDefaultServer = "";

    /// What is asked of a server.
    static std::string queryOf(const std::string& server, const std::string& version);

private:
    void onFinish();

    std::string server_;
    FetchLimits limits_;
    std::unique_ptr<UpdateReciever> reciever_; ///< null: no check is on
    std::function<void()> onFinish_;
    std::vector<Entry> entries_;
    Outcome outcome_ = Outcome::UpToDate;
};

/// Below 0, 0, above 0: a is older than b, as new, newer. Parts between dots are compared as whole
/// numbers, by the digits that they begin with; a missing part is 0.
[[nodiscard]] int compareVersions(std::string_view a, std::string_view b);

/// The entries of a reply, in its order, kMostEntries at most; those without a version are left
/// out. An empty root has none. The reason for a text that isn't a list of versions.
[[nodiscard]] Result<std::vector<UpdateManager::Entry>> readVersions(const std::string& reply);
inline constexpr std::size_t kMostEntries = 100;

/// The request, in its own thread: touches nothing but what it holds.
class UpdateReciever final : public QThread
{
public:
    UpdateReciever(std::string address, const FetchLimits& limits);

    void cancel() { fetch_.cancel(); } ///< [any thread]

    // Behind the end of the thread.

    [[nodiscard]] const std::vector<UpdateManager::Entry>& entries() const { return entries_; }
    [[nodiscard]] bool isConnected() const { return connected_; } ///< the server said something
    [[nodiscard]] bool isGood() const { return good_; }           ///< and it was a list of versions

protected:
    void run() override;

private:
    std::string address_;
    WebFetch fetch_;
    std::vector<UpdateManager::Entry> entries_;
    bool connected_ = false, good_ = false;
};

} // namespace tvw::rgs::app
