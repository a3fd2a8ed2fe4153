#include "app/update_manager.h"

#include "core/version.h"
#include "util/xml/element.h"

#include <QCoreApplication>

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <utility>

namespace tvw::rgs::app {

using util::xml::Element;

namespace {

/// The number that the text begins with, or 0; beyond 64 bits the largest.
std::uint64_t leadingNumber(std::string_view text)
{
    std::uint64_t number = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    return read.ec == std::errc::result_out_of_range ? UINT64_MAX : number;
}

std::string_view takePart(std::string_view& version)
{
    const std::size_t dot = std::min(version.find('.'), version.size());
    const std::string_view part = version.substr(0, dot);
    version.remove_prefix(std::min(dot + 1, version.size()));
    return part;
}

bool isEntry(const Element& element)
{
    return element.name() == "entry" || element.name() == "updateentry";
}

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view kBlank = " \t\r\n";
    const std::size_t first = std::min(text.find_first_not_of(kBlank), text.size());
    return text.substr(first, text.find_last_not_of(kBlank) + 1 - first);
}

/// The server writes general XML, whose five named characters our files do without.
std::string decoded(std::string_view text)
{
    constexpr std::pair<std::string_view, char> kNamed[] = {
        {"&lt;", '<'}, {"&gt;", '>'}, {"&amp;", '&'}, {"&quot;", '"'}, {"&apos;", '\''}};
    std::string out;
    while (!text.empty()) {
        const auto* const named = std::ranges::find_if(
            kNamed, [&](const auto& name) { return text.starts_with(name.first); });
        const bool isNamed = named != std::end(kNamed);
        out += isNamed ? named->second : text.front();
        text.remove_prefix(isNamed ? named->first.size() : 1);
    }
    return out;
}

/// The texts of an element and of those in it, a line each.
void addLines(const Element& element, std::string& lines)
{
    for (const Element& child : element.children()) {
        if (child.kind() == util::xml::Kind::Tag) {
            addLines(child, lines);
        } else if (child.kind() == util::xml::Kind::Text) {
            const std::string_view line = trimmed(child.name());
            lines += lines.empty() || line.empty() ? "" : "\n";
            lines += line;
        }
    }
}

std::string field(const Element& entry, std::string_view name)
{
    std::string lines;
    addLines(entry.child(name), lines);
    return decoded(lines);
}

UpdateManager::Entry readEntry(const Element& element)
{
    UpdateManager::Entry entry{field(element, "version"), field(element, "releasedate"),
                               field(element, "changelog"), field(element, "affects"),
                               field(element, "download")};
    if (!entry.page.starts_with("https://") && !entry.page.starts_with("http://"))
        entry.page.clear(); // the desktop would start a program for another kind of address
    return entry;
}

} // namespace

int compareVersions(std::string_view a, std::string_view b)
{
    while (!a.empty() || !b.empty()) {
        const std::uint64_t left = leadingNumber(takePart(a));
        const std::uint64_t right = leadingNumber(takePart(b));
        if (left != right)
            return left < right ? -1 : 1;
    }
    return 0;
}

Result<std::vector<UpdateManager::Entry>> readVersions(const std::string& reply)
{
    using Answer = Result<std::vector<UpdateManager::Entry>>;
    Element root;
    if (root.parse(reply) != util::xml::code::ok)
        return Answer::failure("the version server's reply is no XML");
    std::vector<UpdateManager::Entry> entries;
    bool isList = root.childCount() == 0;
    for (const Element& child : root.children()) {
        if (!isEntry(child) || entries.size() == kMostEntries)
            continue;
        isList = true;
        if (UpdateManager::Entry entry = readEntry(child); !entry.version.empty())
            entries.push_back(std::move(entry));
    }
    if (!isList) // such as the page of a network that asks for a login
        return Answer::failure("the version server's reply is no list of versions");
    return entries;
}

UpdateReciever::UpdateReciever(std::string address, const FetchLimits& limits)
    : address_(std::move(address)), fetch_(limits)
{
}

void UpdateReciever::run()
{
    entries_.clear();
    const std::string reply = fetch_.get(address_);
    connected_ = !reply.empty();
    if (!connected_ || reply == "error")
        return;
    if (auto read = readVersions(reply)) {
        entries_ = *std::move(read);
        good_ = true;
    }
}

UpdateManager::UpdateManager(std::string server, const FetchLimits& limits)
    : server_(std::move(server)), limits_(limits)
{
}

UpdateManager::~UpdateManager()
{
    if (!reciever_)
        return;
    reciever_->cancel();
    reciever_->wait();
}

std::string UpdateManager::configuredServer()
{
    const char* const set = std::getenv("RIGSTAGE_REPURL");
    std::string server = set ? set : kDefaultServer;
    while (server.ends_with('/'))
        server.pop_back();
    return server;
}

std::string UpdateManager::queryOf(const std::string& server, const std::string& version)
{
    return server + "/cgi-bin/rgsversion?platform=win&currentversion=" + version;
}

void UpdateManager::check(std::function<void()> onFinish)
{
    onFinish_ = std::move(onFinish);
    if (reciever_)
        return;
    const std::string address = server_.empty() ? std::string() : queryOf(server_, kVersion);
    reciever_ = std::make_unique<UpdateReciever>(address, limits_);
    // The thread object lives in this thread: so the slot runs in this thread's event loop.
    QObject::connect(reciever_.get(), &QThread::finished, reciever_.get(),
                     [this] { this->onFinish(); });
    reciever_->start();
}

void UpdateManager::onFinish()
{
    UpdateReciever* const ended = reciever_.release();
    ended->wait();
    ended->deleteLater(); // its signal is being delivered
    entries_ = ended->entries();
    const auto isNewer = [](const Entry& entry) {
        return compareVersions(entry.version, kVersion) > 0;
    };
    if (!ended->isConnected())
        outcome_ = Outcome::NoConnection;
    else if (!ended->isGood())
        outcome_ = Outcome::BadReply;
    else
        outcome_ = std::ranges::any_of(entries_, isNewer) ? Outcome::Newer : Outcome::UpToDate;
    if (const std::function<void()> tell = std::exchange(onFinish_, {}))
        tell();
}

} // namespace tvw::rgs::app
