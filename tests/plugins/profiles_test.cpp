// Every profile that is built into the program fits the tool in whose folder it lies.
#include "core/library_manager.h"
#include "core/tool.h"
#include "plugins/tool_table.h"
#include "tests/runs/run_fixture.h"
#include "tests/support/session_test.h"
#include "unidevice/device_hub.h"
#include "unidevice/keyboard_device.h"
#include "util/base64.h"

#include <QDirIterator>

#include <algorithm>
#include <charconv>
#include <cstring>
#include <optional>
#include <set>

namespace tvw::rgs::tests {
namespace {

using core::configadaptor::NodeKind;
using util::xml::Element;

constexpr std::string_view kData = ":/rigstage/data/";

std::vector<std::string> embeddedFiles()
{
    std::vector<std::string> files;
    QDirIterator all(QString::fromUtf8(kData.data()), QDir::Files, QDirIterator::Subdirectories);
    while (all.hasNext())
        files.push_back(all.next().toStdString());
    std::sort(files.begin(), files.end());
    return files;
}

bool isConfiguration(std::string_view path)
{
    return path.ends_with(".tvc") || path.ends_with("/configprofile.xml");
}

bool isInput(std::string_view path)
{
    return path.ends_with(".tvi") || path.ends_with("/inputprofile.xml");
}

/// The id of the tool of the table whose data folder holds the file; empty: none.
std::string ownerOf(std::string_view path)
{
    std::string id;
    for (const MakePlugin make : toolTable()) {
        CCameraPlugin* const plugin = make();
        if (path.starts_with(std::string(kData) + plugin->getDataFolder() + "/"))
            id = plugin->getId();
        plugin->destroy();
    }
    return id;
}

std::optional<double> numberIn(const Element& item)
{
    const std::string_view text = item.text();
    double number = 0.0;
    if (item.attributeValue("type") != "blob") {
        const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
        return read.ec == std::errc{} && read.ptr == text.data() + text.size()
                   ? std::optional(number)
                   : std::nullopt;
    }
    const auto bytes = base64Decode(text);
    if (bytes.size() != sizeof(number))
        return {};
    std::memcpy(&number, bytes.data(), sizeof(number));
    return number;
}

/// All items below an element, whatever groups they stand in.
void collectItems(const Element& element, std::vector<const Element*>& items)
{
    for (const Element& child : element.children()) {
        if (child.name() == "item")
            items.push_back(&child);
        collectItems(child, items);
    }
}

class ShippedProfiles : public RunTest
{
protected:
    void SetUp() override { open(); }

    /// Calls check(tool, path) for each file of a kind, with a fresh tool of the file's type.
    template <class Check>
    void forFiles(bool (*isOfKind)(std::string_view), Check&& check)
    {
        int count = 0;
        for (const std::string& path : embeddedFiles()) {
            if (!isOfKind(path))
                continue;
            SCOPED_TRACE(path);
            const std::string owner = ownerOf(path);
            ASSERT_FALSE(owner.empty()) << "lies in no tool's folder";
            core::Instance& tool = create(owner);
            check(tool, path);
            core::InstanceManager::deleteReference(tool.reference(), true);
            ++count;
        }
        EXPECT_GT(count, 0);
    }

    static void checkConfiguration(core::Instance& tool, const Element& profile)
    {
        std::vector<const Element*> items;
        collectItems(profile, items);
        tool.loadConfigProfile(profile);
        std::set<std::uint32_t> seen;
        for (const Element* item : items) {
            const std::string label(item->attributeValue("label"));
            const auto id =
                static_cast<std::uint32_t>(std::stoul(std::string(item->attributeValue("id"))));
            core::configadaptor::Node* const node = tool.configuration()->findNode(id);
            ASSERT_TRUE(node) << label;
            EXPECT_EQ(node->label(), label);
            EXPECT_TRUE(seen.insert(id).second) << label << " stands twice";
            if (item->attributeValue("type") == "text") {
                EXPECT_EQ(node->text(), item->text()) << label;
                continue;
            }
            const auto number = numberIn(*item);
            ASSERT_TRUE(number) << label << ": " << item->text();
            EXPECT_EQ(node->value(), *number) << label << ", within its bounds";
        }
        for (const stage::ToolItem& item : stage::toolItems(tool)) {
            if (item.node->kind() != NodeKind::Button && item.node->kind() != NodeKind::Label) {
                EXPECT_TRUE(seen.contains(item.node->id()))
                    << item.label() << " is missing, and keeps what an earlier profile set";
            }
        }
    }

    /// Every binding finds a control, and one of a kind that the input takes.
    static void checkInputs(core::Instance& tool, const Element& profile)
    {
        std::set<std::string> seen;
        for (const Element& row : profile.children()) {
            const std::string name(row.attributeValue("name"));
            EXPECT_TRUE(tool.findProperty(name)) << name << " is no input";
            EXPECT_TRUE(seen.insert(name).second) << name << " stands twice";
        }
        const int missing = tool.loadInputProfile(profile);
        EXPECT_EQ(missing, 0) << " controls are missing";
        int bound = 0;
        for (int i = 0; i < tool.properties().count(); ++i) {
            const Property& input = *tool.properties().propertyAt(i);
            if (!input.control())
                continue;
            ++bound;
            EXPECT_NE(input.kindMask() & input.control()->kindMask, 0u) << input.name();
        }
        EXPECT_GT(bound, 0);
    }
};

TEST_F(ShippedProfiles, SetEveryItemToWhatTheySay)
{
    forFiles(&isConfiguration, [](core::Instance& tool, const std::string& path) {
        core::ConfigProfileManager& store = tool.type()->configProfiles();
        for (const Element& profile : store.loadFromFile(path)) {
            const std::string name = store.profileName(profile);
            SCOPED_TRACE(name);
            EXPECT_FALSE(store.profile(name).name().empty()) << "is not offered";
            checkConfiguration(tool, profile);
        }
    });
}

/// Without a pad at hand, what a new tool starts with and what is meant for the keyboard work
/// whole.
TEST_F(ShippedProfiles, BindWhatTheyName)
{
    session->removeDevice(*pad);
    for (const bool withPad : {false, true}) {
        if (withPad)
            session->addDevice("A pad", {.axes = 8, .sliders = 2, .hats = 2, .buttons = 16});
        forFiles(&isInput, [&](core::Instance& tool, const std::string& path) {
            auto& store = tool.type()->inputProfiles();
            for (const Element& profile : store.loadFromFile(path)) {
                const std::string name = store.profileName(profile);
                SCOPED_TRACE(name);
                EXPECT_FALSE(store.profile(name).name().empty()) << "is not offered";
                const bool isStart = name == "Start Profile";
                if (withPad || isStart || name.find("Keyboard") != std::string::npos)
                    checkInputs(tool, profile);
            }
        });
    }
}

/// A take ends by these keys, whatever they are bound to.
TEST_F(ShippedProfiles, BindNoKeyThatEndsATake)
{
    forFiles(&isInput, [](core::Instance& tool, const std::string& path) {
        for (const Element& profile : tool.type()->inputProfiles().loadFromFile(path)) {
            for (const char* const key : {"type=\"Space\"", "type=\"Escape\""})
                EXPECT_EQ(profile.fragment().find(key), std::string::npos) << key;
        }
    });
}

TEST(StartProfile, ThatTheUserSavedStaysAheadOfTheShippedOne)
{
    const TemporaryFolder folder;
    const auto open = [&] { return *stage::Session::start({.userFolder = folder.path()}); };
    const auto gasOf = [](stage::Session& session) {
        return (*session.create("4WheelerExt"))->instance().findProperty("Gas Pedal (Forw/Backw)");
    };
    {
        const auto session = open();
        core::Instance& car = (*session->create("4WheelerExt"))->instance();
        EXPECT_NE(car.findProperty("Gas Pedal (Forw/Backw)")->control(), nullptr) << "shipped";
        car.findProperty("Gas Pedal (Forw/Backw)")->multiplier = 0.25;
        Element mine;
        car.writeInputProfile(mine, core::kStartProfile);
        auto& store = car.type()->inputProfiles();
        ASSERT_EQ(store.store(mine, true, true), 0);
        store.rescan();
        EXPECT_EQ(gasOf(*session)->multiplier, 0.25);
    }
    const auto session = open();
    EXPECT_EQ(gasOf(*session)->multiplier, 0.25);
}

/// The keys of every node after a second in which a hand is all over the keys and the pad;
/// strength: 1, or 0 for a hand that rests. Nothing of it stays.
class ShippedInputs : public ShippedProfiles
{
protected:
    std::map<std::string, Keys> struck(double strength)
    {
        session->stage().setTime(0.0);
        record(1.0, [&](double time) { strike(strength, time); });
        std::map<std::string, Keys> keys = allKeys();
        session->stage().hostUndo();
        return keys;
    }

    unidevice::KeyboardDevice* keyboard = nullptr;
    unidevice::ScriptedDevice* struckPad = nullptr;

private:
    void strike(double strength, double time)
    {
        const auto isDown = [&](int key) {
            return strength > 0.0 && (37 * key + static_cast<int>(5.0 * time)) % 7 < 3;
        };
        for (int key = 0; keyboard && key < 256; ++key)
            keyboard->keyEvent(key, isDown(key));
        for (int i = 0; struckPad && i < 16; ++i) {
            for (unidevice::ScriptedDevice* const each : {pad, struckPad}) { // profiles take any
                each->set("Button", i, isDown(i) ? 1.0 : 0.0);
                each->set("Axis", i, strength * std::sin((1.0 + 0.3 * i) * time));
            }
        }
    }
};

TEST_F(ShippedInputs, MoveTheirToolByTheKeysAloneAndByAPadAlone)
{
    for (const bool byPad : {false, true}) {
        keyboard = byPad ? nullptr
                         : dynamic_cast<unidevice::KeyboardDevice*>(
                               unidevice::DeviceHub::instance().findDevice("Keyboard", 0));
        struckPad =
            byPad ? &session->addDevice("A pad", {.axes = 8, .hats = 2, .buttons = 16}) : nullptr;
        ASSERT_TRUE(keyboard || struckPad);
        forFiles(&isInput, [&](core::Instance& tool, const std::string& path) {
            auto& store = tool.type()->inputProfiles();
            for (const Element& profile : store.loadFromFile(path)) {
                const std::string name = store.profileName(profile);
                SCOPED_TRACE(name);
                const bool isForKeys =
                    name == "Start Profile" || name.find("Keyboard") != std::string::npos;
                if (isForKeys == byPad)
                    continue;
                tool.loadInputProfile(profile);
                EXPECT_NE(struck(1.0), struck(0.0));
            }
        });
    }
}

} // namespace
} // namespace tvw::rgs::tests
