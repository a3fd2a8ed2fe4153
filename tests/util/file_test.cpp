#include "tests/support/temporary_folder.h"
#include "util/file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <sys/stat.h>
#include <unistd.h>

namespace tvw {
namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;
using testing::HasSubstr;

class FileTest : public testing::Test
{
protected:
    [[nodiscard]] std::string path(const std::string& name) const
    {
        return (folder_ / name).string();
    }
    [[nodiscard]] std::ptrdiff_t entries() const
    {
        return std::distance(fs::directory_iterator(folder_), fs::directory_iterator());
    }
    void make(const std::string& name, const std::string& text) const
    {
        std::ofstream(path(name), std::ios::binary) << text;
    }
    [[nodiscard]] std::string contentOf(const std::string& name) const
    {
        std::ifstream in(path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(in), {}};
    }

    const rgs::tests::TemporaryFolder temporary_;
    const fs::path folder_ = temporary_.path();
};

TEST_F(FileTest, ReadsEveryByte)
{
    for (const std::string& text : {""s, "a\r\nb\0c\xff"s, std::string(100000, 'x')}) {
        make("f", text);
        const Result<std::string> bytes = readFile(path("f"));
        ASSERT_TRUE(bytes) << bytes.reason();
        EXPECT_EQ(*bytes, text);
        std::vector<std::byte> out(3);
        ASSERT_TRUE(readFile(path("f"), out));
        EXPECT_EQ(std::string(reinterpret_cast<const char*>(out.data()), out.size()), text);
    }
}

/// The system says 0 as the size of such files.
TEST_F(FileTest, ReadsFilesThatDoNotSayTheirSize)
{
    const Result<std::string> bytes = readFile("/proc/self/status");
    ASSERT_TRUE(bytes) << bytes.reason();
    EXPECT_THAT(*bytes, HasSubstr("Pid:"));
}

TEST_F(FileTest, SaysWhatItCannotRead)
{
    for (const std::string& bad : {path("missing"), folder_.string()}) {
        const Result<std::string> bytes = readFile(bad);
        ASSERT_FALSE(bytes);
        EXPECT_THAT(bytes.reason(), HasSubstr(bad + ": "));
        std::vector<std::byte> out(3);
        EXPECT_FALSE(readFile(bad, out));
        EXPECT_EQ(out.size(), 3u);
    }
    EXPECT_THAT(readFile(path("missing")).reason(), HasSubstr("No such file or directory"));
}

TEST_F(FileTest, ReplacesTheWholeFile)
{
    make("f", "old and longer");
    ASSERT_EQ(::chmod(path("f").c_str(), 0640), 0);
    const Status status = writeFileAtomically(path("f"), "new\0!"s);
    ASSERT_TRUE(status) << status.reason();
    EXPECT_EQ(contentOf("f"), "new\0!"s);
    EXPECT_EQ(fs::status(path("f")).permissions(), fs::perms{0640});
    EXPECT_EQ(entries(), 1);
}

TEST_F(FileTest, MakesANewFileWithUsualPermissions)
{
    ASSERT_TRUE(writeFileAtomically(path("f"), "x"));
    make("other", "x");
    EXPECT_EQ(fs::status(path("f")).permissions(), fs::status(path("other")).permissions());
}

TEST_F(FileTest, WritesThroughALink)
{
    make("target", "old");
    fs::create_symlink("target", path("link"));
    ASSERT_TRUE(writeFileAtomically(path("link"), "new"));
    EXPECT_TRUE(fs::is_symlink(path("link")));
    EXPECT_EQ(contentOf("target"), "new");
}

/// Whoever has the old file open goes on reading the old bytes: nothing is written in place.
TEST_F(FileTest, LeavesTheOldFileToItsReaders)
{
    make("f", "old");
    std::ifstream reader(path("f"));
    ASSERT_TRUE(writeFileAtomically(path("f"), "new"));
    std::string seen;
    reader >> seen;
    EXPECT_EQ(seen, "old");
}

TEST_F(FileTest, AFailureLeavesNothingBehind)
{
    fs::create_directory(path("folder"));
    make("folder/inside", "x");
    const Status onFolder = writeFileAtomically(path("folder"), "x");
    ASSERT_FALSE(onFolder);
    EXPECT_THAT(onFolder.reason(), HasSubstr(path("folder") + ": "));
    EXPECT_EQ(entries(), 1) << "the neighbour is gone";

    const Status nowhere = writeFileAtomically(path("no/such/f"), "x");
    ASSERT_FALSE(nowhere);
    EXPECT_THAT(nowhere.reason(), HasSubstr("No such file or directory"));
}

} // namespace
} // namespace tvw
