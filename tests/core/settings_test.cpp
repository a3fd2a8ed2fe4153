#include "core/settings.h"
#include "tests/support/session_test.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace tvw::rgs::core {

namespace {

using tests::TemporaryFolder;

Settings with(std::int32_t countdown, bool silent)
{
    Settings settings;
    settings.startCountdown = countdown;
    settings.silentMode = silent;
    return settings;
}

} // namespace

TEST(SettingsFile, GivesDefaultsForWhatItLacks)
{
    struct Case
    {
        const char* name;
        const char* text; ///< null: no file
        Settings expected;
    };
    const Case cases[] = {
        {"no file", nullptr, {}},
        {"empty", "", {}},
        {"no JSON", "{startcountdown", {}},
        {"null", "null", {}},
        {"no object", "[1, 2]", {}},
        {"no version", R"({"startcountdown": 5})", {}},
        {"another version", R"({"version": 2, "startcountdown": 5})", {}},
        {"version of another type", R"({"version": "1", "startcountdown": 5})", {}},
        {"some keys", R"({"version": 1, "startcountdown": 5, "silentmode": true})", with(5, true)},
        {"unknown key", R"({"version": 1, "pear": {"a": 1}, "startcountdown": 5})", with(5, false)},
        {"wrong types", R"({"version": 1, "startcountdown": "5", "silentmode": 1})", {}},
        {"a part of a number", R"({"version": 1, "startcountdown": 2.5})", {}},
        {"past 32 bits", R"({"version": 1, "startcountdown": 4294967301})", {}},
        {"a bad key beside a good one", R"({"version": 1, "alwaysontop": 3, "silentmode": true})",
         with(2, true)},
    };
    for (const Case& row : cases) {
        const TemporaryFolder folder;
        const std::string path = folder.path() + "/settings.json";
        if (row.text)
            folder.write("settings.json", row.text);
        EXPECT_EQ(SettingsStore(path).get(), row.expected) << row.name;
    }
}

TEST(SettingsFile, IsWrittenWholeWhenAValueDiffers)
{
    const TemporaryFolder folder;
    const std::string path = folder.path() + "/deep/settings.json";
    folder.write("deep/settings.json", R"({"version": 2, "startcountdown": 7, "pear": 1})");
    SettingsStore store(path);
    ASSERT_TRUE(store.set(Settings{}));
    EXPECT_THAT(*readFile(path), testing::HasSubstr("pear")) << "nothing differed";

    ASSERT_TRUE(store.set(with(9, true)));
    EXPECT_EQ(*readFile(path), "{\n"
                               "  \"alwaysontop\": true,\n"
                               "  \"checkforupdates\": true,\n"
                               "  \"dynamicmeshes\": false,\n"
                               "  \"optimizedtransform\": true,\n"
                               "  \"showpromotional\": true,\n"
                               "  \"silentmode\": true,\n"
                               "  \"startcountdown\": 9,\n"
                               "  \"updateviewport\": false,\n"
                               "  \"version\": 1\n"
                               "}");
    EXPECT_EQ(SettingsStore(path).get(), with(9, true));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path() + "/deep"), {}), 1)
        << "no half-written file is left beside it";
}

TEST(SettingsFile, ThatCannotBeWrittenGivesTheReasonAndTheValuesHold)
{
    const TemporaryFolder folder;
    folder.write("file", "");
    SettingsStore store(folder.path() + "/file/settings.json");
    const Status done = store.set(with(4, false));
    EXPECT_FALSE(done);
    EXPECT_NE(done.reason(), "");
    EXPECT_EQ(store.get().startCountdown, 4);
}

TEST(SettingsFile, TakesOneKeyAsText)
{
    struct Case
    {
        const char *key, *text;
        bool taken;
        const char* after;
    };
    constexpr Case kCases[] = {
        {"startcountdown", "3", true, "3"},     {"startcountdown", "true", false, "3"},
        {"startcountdown", "1e99", false, "3"}, {"startcountdown", "99999999999", false, "3"},
        {"silentmode", "true", true, "true"},   {"silentmode", "yes", false, "true"},
        {"silentmode", "", false, "true"},      {"pear", "1", false, ""},
    };
    SettingsStore store("");
    for (const Case& row : kCases) {
        const Status done = store.setValue(row.key, row.text);
        EXPECT_EQ(static_cast<bool>(done), row.taken) << row.key << " " << row.text;
        EXPECT_EQ(done.reason().empty(), row.taken) << row.key << " " << row.text;
        EXPECT_EQ(store.value(row.key), row.after) << row.key << " " << row.text;
    }
    EXPECT_EQ(SettingsStore::keys().size(), 8U);
}

} // namespace tvw::rgs::core
