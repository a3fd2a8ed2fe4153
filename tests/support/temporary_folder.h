/// Where a test writes.
#pragma once

#include "util/file.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

namespace tvw::rgs::tests {

/// A folder that goes with the object.
class TemporaryFolder
{
public:
    TemporaryFolder()
    {
        const std::string unique(6, 'X'); // mkdtemp makes a name of it that is free
        path_ = (std::filesystem::temp_directory_path() / ("rigstage_" + unique)).string();
        EXPECT_NE(mkdtemp(path_.data()), nullptr);
    }
    ~TemporaryFolder()
    {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::string& path() const { return path_; }

    /// Writes a file below the folder, with the folders it lies in; its path.
    std::string write(const std::string& name, const std::string& bytes) const
    {
        const std::filesystem::path path = std::filesystem::path(path_) / name;
        std::filesystem::create_directories(path.parent_path());
        EXPECT_TRUE(writeFileAtomically(path.string(), bytes));
        return path.string();
    }

private:
    std::string path_;
};

} // namespace tvw::rgs::tests
